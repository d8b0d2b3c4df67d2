#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace quillmere {

// Work that follows what is typed. It is done at once where it is expected to take no longer than a key may
// wait; begun at once where it is done elsewhere and follows typing soon enough; and otherwise when typing
// pauses. What it took before tells how long it will take; one long time is
// not believed at once, since the machine may have been busy with something else.
//
// Colouring the source and handing a long page to the browser do not wait for a pause: what a person sees
// next comes first there, in portions between the other events, and each portion goes on from the one before.
class LateWork : public QObject
{
    Q_OBJECT

public:
    // `most` is how long a key may wait for the work, in ms. `now` does it and returns when it is done.
    // `elsewhere` begins it where no key waits for it, and may be called while it is under way; who does it
    // tells by measured() what it took. Without one, `now` does it when typing pauses.
    LateWork(double most, std::function<void()> now, std::function<void()> elsewhere = {},
             QObject *parent = nullptr);

    enum class Wait { Never, IfLong, Always };
    // Something has changed that the work goes by; `units` is the size of the text. False where the work
    // is done.
    bool changed(qsizetype units, Wait wait);
    // Does the work at once, whatever it takes.
    void doNow(qsizetype units);
    // Forgets work that waits.
    void forget() { m_pause.stop(); }
    // For a pause.
    bool isWaiting() const { return m_pause.isActive(); }
    void measured(double milliseconds, qsizetype units);

private:
    double expected(qsizetype units) const; // milliseconds

    double m_most;
    std::function<void()> m_now, m_elsewhere;
    QTimer m_pause;
    qsizetype m_units = 0;
    double m_last = 0, m_before = 0; // milliseconds a unit of text; 0 where nothing has been measured
};

} // namespace quillmere
