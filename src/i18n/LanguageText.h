#pragma once

#include "i18n/Dictionary.h"
#include "i18n/LanguageStrings.h"

#include <QHash>

namespace quillmere {

// What a language file says, for whoever looks into it and changes nothing. It goes by its own text, so it
// stays where it was made.
class LanguageText
{
public:
    explicit LanguageText(QString text);
    LanguageText(const LanguageText &) = delete;
    LanguageText &operator=(const LanguageText &) = delete;

    const QString &text() const { return m_text; }
    const QList<LanguageString> &strings() const { return m_strings; }
    // Number of the first string with this source; -1 without one.
    int find(QStringView source) const { return m_firstOf.value(source, -1); }
    // Of that string; null where there is none.
    QStringView translationOf(QStringView source) const;
    const StringCounts &counts() const { return m_counts; }

private:
    const QString m_text;
    QList<LanguageString> m_strings;
    QHash<QStringView, int> m_firstOf;
    StringCounts m_counts;
};

} // namespace quillmere
