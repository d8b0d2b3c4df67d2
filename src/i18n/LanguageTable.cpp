#include "i18n/LanguageTable.h"

#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

ComparedLanguage::ComparedLanguage(const QString &languageName, std::shared_ptr<const LanguageText> text)
    : name(languageName), strings(text->strings()), holder(text)
{
}

ComparedLanguage::ComparedLanguage(const QString &languageName, const QList<ListRows::Row> &rows)
    : name(languageName)
{
    // Lists of the same texts: a row that changes elsewhere gets a text of its own.
    const auto held = std::make_shared<QStringList>();
    held->reserve(2 * rows.size());
    for (const ListRows::Row &row : rows) {
        const QString source = row.sub(1);
        // An empty text is something else than none.
        const QString translation = row.sub(2).isNull() ? QStringLiteral("") : row.sub(2);
        held->append(source);
        held->append(translation);
        strings.append({source, translation});
    }
    holder = held;
}

LanguageTable::LanguageTable(const QList<ComparedLanguage> &languages) : m_languages(languages)
{
    QHash<QStringView, int> rowOf;
    for (const ComparedLanguage &language : languages) {
        for (const LanguageString &string : language.strings) {
            if (string.source.isEmpty() || rowOf.contains(string.source))
                continue;
            rowOf.insert(string.source, int(m_sources.size()));
            m_sources.push_back(string.source);
        }
    }
    m_cells.resize(m_sources.size() * size_t(languages.size()));
    for (qsizetype number = 0; number < languages.size(); ++number) {
        for (const LanguageString &string : languages.at(number).strings) {
            const int row = rowOf.value(string.source, -1);
            if (row < 0)
                continue;
            QStringView &cell = m_cells[size_t(row) * size_t(languages.size()) + size_t(number)];
            if (cell.isNull())
                cell = string.translation;
        }
    }
}

QList<int> LanguageTable::matching(const QString &text, const QList<int> &languages, bool onlyMissing) const
{
    QList<int> found;
    for (int row = 0; row < rows(); ++row) {
        const auto isMissing = [&](int language) { return translation(row, language).trimmed().isEmpty(); };
        if (onlyMissing && std::none_of(languages.begin(), languages.end(), isMissing))
            continue;
        const auto holds = [&](int language) {
            return containsIgnoringCase(translation(row, language), text);
        };
        if (text.isEmpty() || containsIgnoringCase(source(row), text) ||
            std::any_of(languages.begin(), languages.end(), holds))
            found.append(row);
    }
    return found;
}

} // namespace quillmere
