#pragma once

#include <QList>

#include <vector>

namespace quillmere {

// Whose turn it is to be drawn, where many things have a picture each, of which a few are seen and only so
// many are kept. A picture may have become another one at any time: it is then looked at again when it is
// seen next. Things are known by their numbers, from 0.
class PictureTurns
{
public:
    // `room` is how many pictures are kept, where no more than that are seen at once.
    explicit PictureTurns(int room) : m_room(room) {}

    // The things are others. `before` gives for each the number it had, -1 where it is new; none is being
    // drawn.
    void renumber(const QList<int> &before);
    void setRoom(int room) { m_room = room; }
    // In the order in which they are to be drawn: those that are seen, then those about to be.
    void setSeen(const QList<int> &seen);
    // From now on every picture may be out of date.
    void allChanged() { ++m_now; }

    // The next one, which is being drawn until done(); -1 where all that are seen are up to date or in hand.
    int next();
    // Gives those whose pictures are to go for want of room, the one that was seen longest ago first.
    QList<int> done(int number);
    // None is being drawn any more; the turns come again.
    void nothingInHand();

private:
    struct Turn
    {
        qint64 drawn = 0;  // m_now when that began; 0 where there is no picture
        qint64 inHand = 0; // the same of the one under way
        qint64 seen = 0;
    };

    QList<int> overRoom();

    std::vector<Turn> m_turns;
    QList<int> m_seen;
    qint64 m_now = 1;
    qint64 m_looks = 0; // counts setSeen()
    int m_room;
};

} // namespace quillmere
