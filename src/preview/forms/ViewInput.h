#pragma once

#include <QObject>
#include <QPointF>

#include <optional>

class QMouseEvent;
class QWheelEvent;

namespace quillmere {

class PreviewArea;
class WebBrowser;

// What the wheel, the middle button, and the space bar held do to the picture, and where the pointer is on
// it. Comes before all others who take what happens on the browser or a child of it.
class ViewInput : public QObject
{
    Q_OBJECT

public:
    ViewInput(WebBrowser &browser, PreviewArea &area, QObject *parent = nullptr);

    // A point of the browser, while the pointer is over what is seen of it.
    std::optional<QPointF> pointer() const { return m_pointer; }

signals:
    // A point of the browser; (-1, -1) once the pointer has left.
    void pointerMoved(QPointF point);
    // Ctrl and the wheel, by whole notches: positive for closer.
    void zoomTurned(int by);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const QWidget *partOfBrowser(const QObject *watched) const;
    bool turn(const QWidget &on, QWheelEvent &event);
    bool mouse(const QWidget &on, QMouseEvent &event);
    void setPointer(std::optional<QPointF> point);
    void setHand(bool space, bool drags);

    WebBrowser &m_browser;
    PreviewArea &m_area;
    std::optional<QPointF> m_pointer;
    int m_turned = 0;     // eighths of a degree that make no notch yet
    bool m_space = false; // is held
    bool m_drags = false;
    QPointF m_last; // place of the pointer on the screen
};

} // namespace quillmere
