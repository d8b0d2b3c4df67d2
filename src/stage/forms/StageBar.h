#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;

namespace quillmere {

class PreviewFrame;
class Swatch;

// The line below the picture: its scale, where the pointer is, and the colour there.
class StageBar : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kHeight = 20; // pixels; what the layout leaves below the frame

    // `nameOf` knows the name that a colour's code, "#rrggbb", has; empty for none. The switches stand at the
    // end of the line, since their menu is not open to the mouse on every tab.
    StageBar(PreviewFrame &frame, std::function<QString(const QString &code)> nameOf,
             const QList<QAction *> &switches);

protected:
    // Keeps its place below the frame; a click on the colour copies its code.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void choose(int index);
    void showZoom();
    void showPointer(QPointF point);
    void showPixel();

    PreviewFrame &m_frame;
    std::function<QString(const QString &)> m_nameOf;
    QComboBox *cboZoom;
    QLabel *lblPointer;
    Swatch *m_chip;
    QLabel *lblPixel;
    QWidget *m_pointed, *m_switches;
    QTimer m_soon;  // the colour is looked for when the pointer comes to rest
    QPoint m_point; // of the browser
    QString m_code;
};

} // namespace quillmere
