#pragma once

#include <QHash>
#include <QObject>
#include <QPointF>

#include <array>

namespace quillmere {

class Commands;
class PreviewFrame;
class Ruler;
class RulerGuide;

// The rulers above and to the left of the picture, in pixels of the page, and the guides that are dragged out
// of them. Every window keeps its guides for as long as the program runs.
class Rulers : public QObject
{
    Q_OBJECT

public:
    explicit Rulers(PreviewFrame &frame, QObject *parent = nullptr);

    // The item of the menu that shows and hides the rulers, and their guides with them.
    void addCommands(Commands &menu, QWidget &window);
    // Where the guides stand, pixels of the page; nothing while they are hidden.
    QList<qint64> columns() const { return placesOf(Qt::Vertical); }
    QList<qint64> rows() const { return placesOf(Qt::Horizontal); }

private:
    friend class Ruler;
    friend class RulerGuide;

    void show(bool on);
    void layOut();
    void changeWindow();
    QList<qint64> placesOf(Qt::Orientation orientation) const;
    RulerGuide *addGuide(Qt::Orientation orientation, qint64 at);
    // Moves the guide to the pointer; `isDone` where it is let go, which over a ruler takes it away.
    void dragGuide(RulerGuide &guide, QPointF pointer, bool isDone);
    // From a coordinate of the page to one of the rulers, and back.
    double toRuler(Qt::Orientation orientation, double at) const;
    double toPage(Qt::Orientation orientation, double at) const;

    struct Guide
    {
        Qt::Orientation orientation; // of the line
        qint64 at;
    };

    PreviewFrame &m_frame;
    bool m_isOn = false;
    std::array<Ruler *, 2> m_rulers; // that above the picture, that beside it
    QList<RulerGuide *> m_guides;
    QString m_path; // of the window whose guides they are
    QHash<QString, QList<Guide>> m_others;
};

} // namespace quillmere
