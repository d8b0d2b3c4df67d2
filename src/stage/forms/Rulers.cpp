#include "stage/forms/Rulers.h"

#include "browser/forms/WebBrowser.h"
#include "controls/Commands.h"
#include "controls/Named.h"
#include "preview/forms/PreviewArea.h"
#include "preview/forms/PreviewFrame.h"

#include <QAction>
#include <QMouseEvent>
#include <QPainter>
#include <QSettings>
#include <QToolTip>

#include <cmath>
#include <utility>

namespace quillmere {

namespace {

constexpr int kBreadth = 18;                   // pixels, of a ruler
constexpr int kGrip = 5;                       // pixels at which a guide can be taken hold of
constexpr double kApart = 50, kTicksApart = 5; // pixels, at least, of the numbers and of the ticks
const QString kSetting = QStringLiteral("view/rulers");
const QColor kGuide(0x00, 0x78, 0xb4), kBesideGuide(0xff, 0xff, 0xff); // so that it is seen on any ground

// The smallest of 1, 2, 5, 10, 20, 50 and so on that is as far apart as that.
qint64 stepOf(double zoom, double apart)
{
    qint64 power = 1;
    for (;; power *= 10) {
        for (const int digit : {1, 2, 5}) {
            if (double(digit * power) * zoom >= apart)
                return digit * power;
        }
    }
}

} // namespace

// One of the two.
class Ruler : public QWidget
{
public:
    Ruler(Rulers &rulers, PreviewFrame &frame, Qt::Orientation orientation)
        : QWidget(&frame.area()), m_rulers(rulers), m_frame(frame), m_orientation(orientation)
    {
        setAutoFillBackground(true);
        setCursor(isAbove() ? Qt::SplitVCursor : Qt::SplitHCursor);
        hide();
    }

    void setPointer(double at)
    {
        if (std::exchange(m_pointer, at) != at)
            update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QFont small = font();
        small.setPixelSize(9);
        painter.setFont(small);
        painter.setPen(palette().color(QPalette::WindowText));
        const double zoom = m_frame.zoom();
        const qint64 step = stepOf(zoom, kApart), tick = stepOf(zoom, kTicksApart);
        const int length = isAbove() ? width() : height();
        const qint64 last = qint64(m_rulers.toPage(m_orientation, length));
        for (qint64 at = qint64(std::floor(m_rulers.toPage(m_orientation, 0) / double(step))) * step;
             at <= last; at += tick) {
            const int place = int(std::lround(m_rulers.toRuler(m_orientation, double(at))));
            const bool isNumbered = at % step == 0;
            drawTick(painter, place, isNumbered ? kBreadth : kBreadth / 4);
            if (isNumbered)
                drawNumber(painter, place, at);
        }
        painter.setPen(palette().color(QPalette::Link));
        if (m_pointer >= 0)
            drawTick(painter, int(m_pointer), kBreadth);
    }

    // A guide is there from where the pointer leaves the ruler.
    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton)
            m_guide = m_rulers.addGuide(m_orientation, 0);
        mouseMoveEvent(event);
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (m_guide)
            m_rulers.dragGuide(*m_guide, event->globalPosition(), false);
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (m_guide)
            m_rulers.dragGuide(*std::exchange(m_guide, nullptr), event->globalPosition(), true);
    }

private:
    bool isAbove() const { return m_orientation == Qt::Horizontal; }

    void drawTick(QPainter &painter, int at, int length) const
    {
        if (isAbove())
            painter.drawLine(at, kBreadth - length, at, kBreadth - 1);
        else
            painter.drawLine(kBreadth - length, at, kBreadth - 1, at);
    }

    void drawNumber(QPainter &painter, int at, qint64 number) const
    {
        painter.save();
        painter.translate(isAbove() ? QPoint(at + 2, 9) : QPoint(9, at - 2));
        if (!isAbove())
            painter.rotate(-90);
        painter.drawText(0, 0, QString::number(number));
        painter.restore();
    }

    Rulers &m_rulers;
    PreviewFrame &m_frame;
    Qt::Orientation m_orientation;
    double m_pointer = -1;
    RulerGuide *m_guide = nullptr; // being dragged out
};

// Lies over the browser, beside which it stands, so that it gets the mouse before the picture does.
class RulerGuide : public QWidget
{
public:
    RulerGuide(Rulers &rulers, PreviewFrame &frame, Qt::Orientation line, qint64 place)
        : QWidget(frame.area().viewport()), orientation(line), at(place), m_rulers(rulers)
    {
        named(this, "rulerGuide", QObject::tr("Guide"));
        setCursor(line == Qt::Vertical ? Qt::SplitHCursor : Qt::SplitVCursor);
        show();
    }

    const Qt::Orientation orientation;
    qint64 at; // pixel of the page

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        for (const QPen &pen : {QPen(kBesideGuide, 3), QPen(kGuide, 1)}) {
            painter.setPen(pen);
            if (orientation == Qt::Vertical)
                painter.drawLine(kGrip / 2, 0, kGrip / 2, height());
            else
                painter.drawLine(0, kGrip / 2, width(), kGrip / 2);
        }
    }
    void mousePressEvent(QMouseEvent *) override {}
    void mouseMoveEvent(QMouseEvent *event) override
    {
        m_rulers.dragGuide(*this, event->globalPosition(), false);
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        m_rulers.dragGuide(*this, event->globalPosition(), true);
    }

private:
    Rulers &m_rulers;
};

Rulers::Rulers(PreviewFrame &frame, QObject *parent)
    : QObject(parent), m_frame(frame), m_rulers{named(new Ruler(*this, frame, Qt::Horizontal), "ruler(0)",
                                                      tr("Ruler above the picture")),
                                                named(new Ruler(*this, frame, Qt::Vertical), "ruler(1)",
                                                      tr("Ruler beside the picture"))}
{
    setObjectName(QStringLiteral("rulers"));
    connect(&frame, &PreviewFrame::viewChanged, this, &Rulers::layOut);
    connect(frame.wb, &WebBrowser::written, this, &Rulers::changeWindow);
    connect(&frame, &PreviewFrame::pointerMoved, this, [this](QPointF point) {
        const QPointF place = point + m_frame.wb->pos();
        const bool isHere = m_frame.wb->rect().contains(point.toPoint());
        m_rulers[0]->setPointer(isHere ? place.x() : -1);
        m_rulers[1]->setPointer(isHere ? place.y() : -1);
    });
}

void Rulers::addCommands(Commands &menu, QWidget &window)
{
    QAction *item = menu.action("mnuRulers");
    window.addAction(item);
    menu.on("mnuRulers", [this, item] {
        QSettings().setValue(kSetting, item->isChecked());
        show(item->isChecked());
    });
    item->setChecked(QSettings().value(kSetting, false).toBool());
    if (item->isChecked())
        show(true);
}

void Rulers::show(bool on)
{
    m_isOn = on;
    for (Ruler *ruler : m_rulers)
        ruler->setVisible(on);
    for (RulerGuide *guide : std::as_const(m_guides))
        guide->setVisible(on);
    m_frame.area().setMargin(on ? kBreadth : 0);
}

void Rulers::layOut()
{
    if (!m_isOn)
        return;
    const QSize all = m_frame.area().size();
    m_rulers[0]->setGeometry(kBreadth, 0, all.width() - kBreadth, kBreadth);
    m_rulers[1]->setGeometry(0, kBreadth, kBreadth, all.height() - kBreadth);
    for (Ruler *ruler : m_rulers)
        ruler->update();
    const QSize room = m_frame.area().viewport()->size();
    for (RulerGuide *guide : std::as_const(m_guides)) {
        const bool stands = guide->orientation == Qt::Vertical;
        const int place =
            int(std::lround(toRuler(stands ? Qt::Horizontal : Qt::Vertical, double(guide->at)))) - kGrip / 2;
        guide->setGeometry(stands ? QRect(place, 0, kGrip, room.height())
                                  : QRect(0, place, room.width(), kGrip));
        guide->raise();
    }
}

void Rulers::changeWindow()
{
    if (m_path == m_frame.title())
        return;
    QList<Guide> left;
    for (const RulerGuide *guide : std::as_const(m_guides))
        left.append({guide->orientation, guide->at});
    m_others.insert(m_path, left);
    qDeleteAll(std::exchange(m_guides, {}));
    m_path = m_frame.title();
    for (const Guide &guide : m_others.take(m_path))
        m_guides.append(new RulerGuide(*this, m_frame, guide.orientation, guide.at));
    for (RulerGuide *guide : std::as_const(m_guides))
        guide->setVisible(m_isOn);
    layOut();
}

QList<qint64> Rulers::placesOf(Qt::Orientation orientation) const
{
    QList<qint64> places;
    for (const RulerGuide *guide : m_guides) {
        if (m_isOn && guide->orientation == orientation)
            places.append(guide->at);
    }
    return places;
}

RulerGuide *Rulers::addGuide(Qt::Orientation orientation, qint64 at)
{
    m_guides.append(new RulerGuide(*this, m_frame, orientation, at));
    return m_guides.last();
}

void Rulers::dragGuide(RulerGuide &guide, QPointF pointer, bool isDone)
{
    const QPointF place = m_frame.area().viewport()->mapFromGlobal(pointer);
    const bool stands = guide.orientation == Qt::Vertical;
    const double along = stands ? place.x() : place.y();
    if (isDone || along < 0)
        QToolTip::hideText();
    if (along < 0 && isDone) {
        m_guides.removeOne(&guide);
        guide.deleteLater(); // it is its own event that ends it
        guide.hide();
        return;
    }
    guide.at = std::lround(toPage(stands ? Qt::Horizontal : Qt::Vertical, along));
    if (!isDone && along >= 0)
        QToolTip::showText(pointer.toPoint(), QString::number(guide.at));
    layOut();
}

double Rulers::toRuler(Qt::Orientation orientation, double at) const
{
    const QPointF place = m_frame.fromPage({at, at}) + m_frame.wb->pos();
    return orientation == Qt::Horizontal ? place.x() : place.y();
}

double Rulers::toPage(Qt::Orientation orientation, double at) const
{
    const QPointF place = m_frame.toPage(QPointF(at, at) - m_frame.wb->pos());
    return orientation == Qt::Horizontal ? place.x() : place.y();
}

} // namespace quillmere
