#pragma once

#include "controls/CaptionBox.h"
#include "preview/PreviewPage.h"

namespace quillmere {

class Commands;
class PreviewArea;
class ViewInput;
class WebBrowser;

// The frame at the right with the browser in it. Its caption is the path of the open document. What of the
// page is larger than the frame is scrolled to, or scaled to fit.
class PreviewFrame : public CaptionBox
{
    Q_OBJECT

public:
    explicit PreviewFrame(QWidget *parent = nullptr);
    ~PreviewFrame() override;

    void addCommands(Commands &menu);
    // The size of the frame and of the browser in it, twips.
    void setFrameSize(int width, int height);
    // A screen at 100 %, and the browser just as large.
    void showScreen(Screen screen);
    // The same where the screen fits the frame; otherwise all of it, scaled.
    void startWith(Screen screen);

    // Between pixels of the browser and those of the page as it is laid out, however it is scaled and
    // scrolled.
    QPointF toPage(QPointF point) const;
    QPointF fromPage(QPointF point) const;
    // Pixels of the browser that one of the page takes, 0.1 to 8.
    double zoom() const;
    bool isFitted() const;
    // Around the pointer where that is over the picture, otherwise around the middle of what is seen.
    void setZoom(double zoom);
    void fit();
    // Moves what is seen by pixels of the browser; to the right and down where they are positive.
    void pan(QPoint by);
    // Where the browser stands, and what goes around it.
    PreviewArea &area() const { return *m_area; }
    QSize screenSize() const; // pixels

    WebBrowser *wb;

signals:
    void fixedChanged(bool fixed);
    // It is about to go, and its browser with it: neither may be asked for anything any more.
    void goes();
    // toPage() and fromPage() say something else than before.
    void viewChanged();
    // A point of the browser; outside of it once the pointer has left.
    void pointerMoved(QPointF point);

private:
    void stepZoom(int by);
    void askExtent();
    QSize pageSize() const;

    bool m_fixed = true;
    Screen m_screen = Screen::S1024x576; // the one chosen last
    PreviewArea *m_area;
    ViewInput *m_input;
};

} // namespace quillmere
