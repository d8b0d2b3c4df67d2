#pragma once

#include "stage/ElementChanges.h"

#include <QCoreApplication>
#include <QPointer>
#include <QRectF>
#include <QWidget>

#include <optional>

namespace quillmere {

class PreviewFrame;
class Stage;
class Talk;

// A new block that waits for its place: that is drawn with the mouse, or Enter puts it into the middle of the
// block around it.
class Insertion
{
    Q_DECLARE_TR_FUNCTIONS(quillmere::Insertion)

public:
    Insertion(Stage &stage, PreviewFrame &frame, Talk &talk) : m_stage(stage), m_frame(frame), m_talk(talk) {}

    // The picture has the keyboard while a block waits.
    void begin(NewBlock kind);
    bool isWaiting() const { return m_kind.has_value(); }
    // False where none waits. The keyboard goes back to where it was.
    bool giveUp();
    // The rect that a block drawn there gets, as putAt() writes it.
    Box boxAt(const QRectF &drawn) const;
    // `drawn` in pixels of the page. Nothing is written into a text of another revision.
    void putAt(const QRectF &drawn, qint64 revision);
    void putInMiddle();

private:
    bool hasKeyboard() const;
    void put(int parent, const Box &box, qint64 revision);

    Stage &m_stage;
    PreviewFrame &m_frame;
    Talk &m_talk;
    std::optional<NewBlock> m_kind;
    QPointer<QWidget> m_keyboard; // where it was
};

} // namespace quillmere
