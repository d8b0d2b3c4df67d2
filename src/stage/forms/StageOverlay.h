#pragma once

#include "stage/Snapping.h"

#include <QWidget>

#include <optional>

namespace quillmere {

class PreviewFrame;

// What is drawn over the picture. In pixels of the page.
struct Sketch
{
    QList<QRectF> selected; // outlines; the one selected first comes first
    bool hasHandles = false;
    std::optional<QRectF> hovered;
    std::optional<QRectF> band;
    QList<Guide> guides;
    QString label; // beside this box
    QRectF labelled;

    bool operator==(const Sketch &) const = default;
};

// The glass over the picture: draws a sketch, and lets the mouse through.
class StageOverlay : public QWidget
{
    Q_OBJECT

public:
    // A child of the browser, which it covers.
    explicit StageOverlay(PreviewFrame &frame);

    void draw(const Sketch &sketch);
    // Frames this part of the screen, around its middle.
    void showFrame(double part, bool shown);
    const Sketch &sketch() const { return m_sketch; }
    // A box of the page on the glass.
    QRectF onGlass(const QRectF &box) const;

public slots:
    // The page has been scrolled or zoomed.
    void drawAgain();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect touched(const Sketch &sketch) const;
    QRectF labelBox(const Sketch &sketch) const;
    void drawAround(QPainter &painter, const QRegion &region) const;
    void drawFrames(QPainter &painter) const;
    void drawGuides(QPainter &painter) const;
    void drawLabel(QPainter &painter, const QString &text, const QRectF &box) const;
    void drawFocus(QPainter &painter) const;

    PreviewFrame &m_frame;
    Sketch m_sketch;
    QList<double> m_frames; // parts of the screen
    QRect m_drawn;          // what the sketch covers
    bool m_hasFocus = false;
};

} // namespace quillmere
