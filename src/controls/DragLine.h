#pragma once

#include <QWidget>

namespace quillmere {

// A line between two controls that can be dragged; a double click puts it back where it was at first. Whoever
// lays the controls out also moves the line.
class DragLine : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kThick = 8; // pixels across, most of them not seen

    // `orientation` is that of the line itself.
    DragLine(Qt::Orientation orientation, const char *name, const QString &tip, QWidget *parent);

signals:
    // Where the middle of the line is wanted; pixels of the parent.
    void dragged(int to);
    void dropped();
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    bool isUpright() const { return m_orientation == Qt::Vertical; }

    Qt::Orientation m_orientation;
    bool m_isDragged = false;
    int m_grip = 0; // of the pointer, from the middle
};

} // namespace quillmere
