#pragma once

#include "i18n/LanguageText.h"
#include "rows/ListRows.h"

#include <QHash>
#include <QList>

#include <memory>
#include <vector>

namespace quillmere {

// A language to be laid beside others: what its file says, or its rows where they are open.
struct ComparedLanguage
{
    ComparedLanguage(const QString &languageName, std::shared_ptr<const LanguageText> text);
    ComparedLanguage(const QString &languageName, const QList<ListRows::Row> &rows);

    QString name;
    QList<LanguageString> strings;
    std::shared_ptr<const void> holder; // of the texts that they are views of
};

// Every source of some languages, once, with what each says: in the order of the first language, then what
// the second has beside, and so on. Of several strings with one source the first counts.
class LanguageTable
{
public:
    LanguageTable() = default;
    explicit LanguageTable(const QList<ComparedLanguage> &languages);

    int rows() const { return int(m_sources.size()); }
    int languages() const { return int(m_languages.size()); }
    const QString &name(int language) const { return m_languages.at(language).name; }
    QStringView source(int row) const { return m_sources[size_t(row)]; }
    // Null where the language lacks the source.
    QStringView translation(int row, int language) const
    {
        return m_cells[size_t(row) * size_t(languages()) + size_t(language)];
    }

    // The rows that hold a text in the source or in one of these languages, ignoring letter case; an empty
    // text is in all. And of them those that one of the languages does not translate, where these are wanted.
    QList<int> matching(const QString &text, const QList<int> &languages, bool onlyMissing) const;

private:
    QList<ComparedLanguage> m_languages;
    std::vector<QStringView> m_sources;
    std::vector<QStringView> m_cells; // row by row
};

} // namespace quillmere
