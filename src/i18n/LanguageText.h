#pragma once

#include "i18n/Dictionary.h"
#include "i18n/LanguageStrings.h"

#include <QHash>

namespace quillmere {

// What a language file says, for whoever looks into it and changes nothing. Its strings are views of a text
// of its own, so it stays where it was made.
class LanguageText
{
public:
    explicit LanguageText(const QString &file);
    LanguageText(const LanguageText &) = delete;
    LanguageText &operator=(const LanguageText &) = delete;

    // Units that it keeps.
    qsizetype size() const { return m_text.size(); }
    const QList<LanguageString> &strings() const { return m_strings; }
    // Number of the first string with this source; -1 without one.
    int find(QStringView source) const { return m_firstOf.value(source, -1); }
    // Of that string; null where there is none.
    QStringView translationOf(QStringView source) const;
    const StringCounts &counts() const { return m_counts; }

private:
    QString m_text; // the strings one behind the other; a theme has several languages, and tags are many
    QList<LanguageString> m_strings;
    QHash<QStringView, int> m_firstOf;
    StringCounts m_counts;
};

} // namespace quillmere
