#pragma once

#include "outline/Outline.h"
#include "source/TextChanges.h"

namespace quillmere {

// Lines of a text, whatever they end in: CR LF, LF or CR.
class TextLines
{
public:
    explicit TextLines(QStringView text) : m_text(text) {}

    // The blanks before a position, up to the beginning of the line; nothing where something else stands
    // before it there.
    std::optional<QString> indentAt(qsizetype position) const;
    // Where the next line begins, or the text ends; -1 where something stands between.
    qsizetype behindLine(qsizetype position) const;
    // What the first line ends in; CR LF where there is one only.
    QString lineBreak() const;

private:
    QStringView m_text;
};

// How a window is written. Opened windows are flat: five blanks stand before some elements and none before
// others, however deep they are (see FormatXML). In a nested one, elements stand further in than the one
// around them.
class TextLayout
{
public:
    // A text that says nothing about it is taken for flat. `base` stands before every line of it.
    explicit TextLayout(const Outline &outline, QStringView base = {});

    bool isKnown() const { return m_isKnown; }
    bool isFlat() const { return m_isFlat; }
    // The indentation of an element's opening tag, `depth` steps further in than `base`, where one that is
    // not in another begins.
    QString indent(QStringView tag, const QString &base, qsizetype depth) const;

private:
    bool m_isKnown = false;
    bool m_isFlat = true;
    QString m_step = QStringLiteral("    ");
};

// A stretch of an outline's text, to stand elsewhere: the lines that begin with a tag are indented for there.
// `from` stood before its first line and comes off the others; where one has not got it, all stay as they
// are.
QString movedLines(QStringView text, const QString &from, const QString &to);
// The same, with every line that begins with a tag laid out anew. `range` is that of an element.
QString laidOut(const Outline &outline, qint32 element, const TextLayout &layout, const QString &base);
// The text with other line ends.
QString withLineBreaks(const QString &text, const QString &lineBreak);

// Changes of a text that are made from its beginning to its end. What touches becomes one.
class ChangeList
{
public:
    void add(qsizetype start, qsizetype length, const QString &text);
    // Where that is afterwards which stands at or behind all changes until now.
    qsizetype moved(qsizetype position) const { return position + m_moved; }
    const QList<TextChange> &changes() const { return m_changes; }

private:
    QList<TextChange> m_changes;
    qsizetype m_moved = 0;
};

} // namespace quillmere
