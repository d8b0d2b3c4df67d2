#pragma once

#include "outline/LineStarts.h"
#include "outline/Range.h"

#include <QList>
#include <QSharedData>
#include <QString>

#include <optional>

namespace quillmere {

enum class Severity : quint8 { Error, Warning, Note };
// "error", "warning", "note".
QString nameOf(Severity severity);

// What a theme is held to, in the order of the table in Rules.cpp.
enum class Rule : quint8 {
    ThemeConfig,
    UnknownImage,
    UnknownColour,
    UnknownFont,
    MissingImageFile,
    MissingFontFile,
    MissingDocument,
    BadRect,
    UnclosedElement,
    UnclosedComment,
    DuplicateId,
    LetterCase,
    DuplicateBlock,
    OutsideParent,
    OutsideScreen,
    PictureSize,
    ColourList,
    Mode,
    KeyColour,
    UnreadablePicture,
    Untranslated,
    BlankEnds,
    Placeholders,
    EndPunctuation,
    LineBreaks,
    MissingLetters,
    DuplicateSource,
    TextFit,
    UnlistedDocument,
    UnusedImage,
    UnusedColour,
    UnusedFont,
    UnusedString,
    TwoTranslations,
    SameAsSource,
    SamePicture,
    SameColour,
    UnmeasuredText,
};
constexpr int kRules = int(Rule::UnmeasuredText) + 1;

struct RuleText
{
    Severity severity;
    const char *id;          // "unknown-image"
    const char *explanation; // one line
};
const RuleText &textOf(Rule rule);
// Nothing for an ID that no rule has.
std::optional<Rule> ruleOf(QStringView id);

// Something in a theme that is wrong, or looks wrong. Most problems of a large theme are names that nothing
// uses; what those do not need takes no room in them.
struct Problem
{
    Rule rule = Rule::ThemeConfig;
    qint32 row = -1;             // of the list that a catalogue is loaded into
    QString file;                // full path
    QString name;                // what the message is about; may be empty
    Range range;                 // in the text of the file; empty where the whole file is meant
    qint32 line = 1, column = 1; // from 1, UTF-16 units; 0 in rows that are not written
    LineColumn end = {0, 0};     // behind the range; 0 where it has none
    qint64 bytes = 0;            // that an unused picture takes

    // The message, where the rule and what stands above do not make it, and what should stand in the range,
    // where that is known.
    void say(const QString &text, const QString &meant = {})
    {
        m_said = text.isEmpty() && meant.isEmpty() ? nullptr : new Said{{}, text, meant};
    }
    QString text() const { return m_said ? m_said->text : QString(); }
    QString meant() const { return m_said ? m_said->meant : QString(); }
    // One line.
    QString message() const;
    Severity severity() const { return textOf(rule).severity; }

private:
    struct Said : QSharedData
    {
        QString text, meant;
    };
    QSharedDataPointer<Said> m_said;
};

// By file, then by place.
void sortByPlace(QList<Problem> &problems);

} // namespace quillmere

Q_DECLARE_TYPEINFO(quillmere::Problem, Q_RELOCATABLE_TYPE); // long lists of them grow in place
