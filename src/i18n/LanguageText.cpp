#include "i18n/LanguageText.h"

namespace quillmere {

LanguageText::LanguageText(QString text) : m_text(std::move(text)), m_strings(languageStrings(m_text))
{
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
