#include "i18n/LanguageText.h"

#include <utility>

namespace quillmere {

LanguageText::LanguageText(const QString &file) : m_strings(languageStrings(file))
{
    // Copied as soon as the room is known: the views are to stay.
    const auto isCopy = [](const LanguageString &string) {
        return !string.translation.isNull() && string.translation == string.source;
    };
    qsizetype units = 0;
    for (const LanguageString &string : std::as_const(m_strings))
        units += string.source.size() + (isCopy(string) ? 0 : string.translation.size());
    m_text.reserve(units + 1); // so that no view of it is null
    const auto keep = [this](QStringView part) {
        m_text += part;
        return QStringView(m_text).last(part.size());
    };
    for (LanguageString &string : m_strings) {
        const bool copies = isCopy(string);
        string.source = keep(string.source);
        if (copies)
            string.translation = string.source;
        else if (!string.translation.isNull())
            string.translation = keep(string.translation);
    }
    m_firstOf.reserve(m_strings.size());
    for (int i = 0; i < m_strings.size(); ++i) {
        const LanguageString &string = m_strings.at(i);
        if (!m_firstOf.contains(string.source))
            m_firstOf.insert(string.source, i);
        ++m_counts.all;
        m_counts.untranslated += string.translation.trimmed().isEmpty() ? 1 : 0;
    }
}

QStringView LanguageText::translationOf(QStringView source) const
{
    const int number = find(source);
    return number < 0 ? QStringView() : m_strings.at(number).translation;
}

} // namespace quillmere
