#pragma once

#include "outline/Range.h"
#include "outline/Vocabulary.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace quillmere {

// How an element comes to its end.
enum class End : quint8 {
    Tag,     // at its own closing tag
    Self,    // it closes itself: <img/>
    Missing, // without one, and the closing tag of an element around it came
    Open,    // without one, up to where the text ends, or as far as that is known
};

struct Element
{
    Range tag;          // from its "<" to behind the ">"; to before the next "<" where the ">" is missing
    Range closing;      // the closing tag; empty where there is none, at the place where the element ends
    qint32 parent = -1; // the element it stands in
    qint32 next = 0;    // the first element behind it and all that it holds
    qint32 block = -1;  // its row in the block list, counted from 0; -1 for what is no block
    quint16 nameLength = 0;
    Kind kind = Kind::Other;
    End end = End::Open;
    bool inComment = false;
    bool inSignal = false;

    Range range() const { return {tag.start, closing.end}; }
    Range name() const { return {tag.start + 1, tag.start + 1 + nameLength}; }
    // What stands between the two tags.
    Range content() const { return {tag.end, closing.start}; }
};

struct Comment
{
    Range range; // with "<!--" and "-->"
    bool closed = true;
};

struct Attribute
{
    Range name;
    Range value;        // without quotes; empty behind the name where there is none
    bool closed = true; // false where the closing quote is missing
};

struct OutlineParts
{
    std::vector<Element> elements;
    std::vector<qint32> blocks;
    std::vector<Comment> comments;
    std::vector<Range> strayTags;
};

// What a careful reader would say stands in the text of a window: the tree of its elements, with the ranges
// of everything in the text as it stands. Made in one pass over any text, however broken: it never fails, and
// what is cut off or half typed gives what can be known. Elements are numbered in the order of their opening
// tags; an element's children follow it.
//
// Blocks have the numbers of the block list, which cuts the text at every "<widget " and "<style ", in
// comments too. There, and only there, an element is a block's opening tag alone and reaches to the next one
// or to the end of the comment.
//
// An element whose closing tag is missing ends before the first one that cannot stand in it; see mayHold.
class Outline
{
public:
    Outline();
    // `revision` tells what is of one text from what is of another; it is only kept.
    explicit Outline(const QString &text, qint64 revision = 0);

    const QString &text() const { return m_text; }
    qint64 revision() const { return m_revision; }

    const std::vector<Element> &elements() const { return m_parts->elements; }
    const Element &element(qint32 index) const { return m_parts->elements[size_t(index)]; }
    // The element of each block.
    const std::vector<qint32> &blocks() const { return m_parts->blocks; }
    const std::vector<Comment> &comments() const { return m_parts->comments; }
    // Closing tags to which there is no opening one.
    const std::vector<Range> &strayTags() const { return m_parts->strayTags; }

    // The innermost element that holds the unit at `offset`, or, where the text ends before the element does,
    // stands before it; -1 where there is none.
    qint32 elementAt(qsizetype offset) const;
    // The innermost block that an element belongs to, itself included; an element, not a row.
    qint32 blockOf(qint32 element) const;

    // The text of the range; of a value, without the blanks around it.
    QStringView at(Range range) const { return range.in(m_text); }
    QStringView valueOf(qint32 element) const;

    // The attributes of an element, in order; read again each time.
    QList<Attribute> attributesOf(qint32 element) const;
    // The first of the name, ignoring letter case.
    std::optional<Attribute> attribute(qint32 element, QStringView name) const;
    // The value of `name` or `id`, whichever is first; empty where there is neither.
    std::optional<Attribute> nameAttribute(qint32 element) const;

    // The elements that say something about a block itself, in order: all that it holds but what its children
    // hold.
    QList<qint32> propertiesOf(qint32 block) const;
    // The first one of a kind, or -1.
    qint32 property(qint32 block, Kind kind) const;

private:
    // Calls `use` with each of the elements that propertiesOf gives, until it returns true.
    template <typename Use>
    void eachProperty(qint32 block, Use use) const;

    QString m_text;
    qint64 m_revision = 0;
    std::shared_ptr<const OutlineParts> m_parts; // copies have the same
};

} // namespace quillmere
