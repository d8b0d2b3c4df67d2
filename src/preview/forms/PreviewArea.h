#pragma once

#include <QAbstractScrollArea>

namespace quillmere {

class WebBrowser;

// The room in which the browser stands, with the scroll bars. At 100 % a browser that is larger than the room
// is moved in it. At any other scale the browser is as large as the room, and the page is scaled and moved in
// the browser.
class PreviewArea : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit PreviewArea(WebBrowser &browser, QWidget *parent = nullptr);

    // Shows a page of this size at 100 %, in a browser of just this size.
    void showWhole(QSize page);
    // The same where that fits the room; otherwise fits the page to it.
    void showFitting(QSize page);
    // The browser gets the room. The page is fitted to it where it was, or where it does not fit at 100 %; a
    // scale that was chosen stays.
    void setRoom(const QRect &room);
    // How far the page reaches beyond its own size.
    void setExtent(QSize extent);
    // Pixels left free above and to the left of the browser.
    void setMargin(int pixels);

    void fit();
    // What is seen at `anchor`, a point of the browser, stays there.
    void zoomTo(double zoom, QPointF anchor);
    double zoom() const { return m_zoom; }
    bool isFitted() const { return m_isFitted; }
    // The middle of what is seen, a point of the browser.
    QPointF middle() const;
    // Moves what is seen, pixels of the browser. False where there is nothing more to be seen.
    bool pan(QPoint by);

    // Between pixels of the browser and those of the page as it is laid out.
    QPointF toPage(QPointF point) const;
    QPointF fromPage(QPointF point) const;

signals:
    // What is seen at a point of the browser is another point of the page now, or the browser stands
    // elsewhere.
    void viewChanged();
    void zoomChanged();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void takeColours();
    enum class Choice { Size, Room, Fit, Zoom };

    bool movesBrowser() const;
    void setBrowserSize(QSize size);
    void fitToRoom();
    QSize room() const; // without scroll bars
    QSize contents() const;
    QPoint offset() const;
    void setBars();
    void scrollTo(QPoint offset);
    void settle();

    WebBrowser &m_browser;
    QSize m_page, m_extent;
    Choice m_choice = Choice::Room;
    bool m_isFitted = false;
    double m_zoom = 1;
    double m_told = 1; // the zoom of the last zoomChanged()
    QPoint m_pan;
    bool m_isSettling = false;
};

} // namespace quillmere
