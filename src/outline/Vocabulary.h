#pragma once

#include <QList>
#include <QStringList>
#include <QStringView>

namespace quillmere {

// The elements of which windows are made. Letter case does not matter.
enum class Kind : quint8 {
    Other, // one that is not in the vocabulary
    Interface,
    Widget,
    Style, // a block like a widget
    Children,
    Property,
    Signal,
    Imgs,
    // From here on: the content is a value.
    State,
    String,
    Rect,
    BackColor,
    ForeColor,
    Mode,
    Img,
    TopImg,
    BottomImg,
    LeftImg,
    RightImg,
    LeftTopImg,
    RightTopImg,
    LeftBottomImg,
    RightBottomImg,
    UnfocusImg,
    Font,
    Alignment,
};
constexpr int kKinds = int(Kind::Alignment) + 1;

inline bool isValue(Kind kind)
{
    return kind >= Kind::State;
}

// Other for a name that is not in the vocabulary.
Kind kindOf(QStringView name);
// As it is written; empty for Other.
QStringView nameOf(Kind kind);

// Whether an element may stand directly in another. Windows are written by hand and by many programs, so
// this is lenient: what is certain to belong further out is refused, everything else is not.
bool mayHold(Kind outer, Kind inner);
// What a careful hand would write there, in the order of the vocabulary.
QList<Kind> elementsFor(Kind outer);

// The words that a value of this kind is made of; none where it is made of names, numbers or free text.
QStringList wordsFor(Kind kind);
// The classes of blocks that every receiver knows.
QStringList knownClasses();

} // namespace quillmere
