#include "checks/FontLetters.h"
#include "checks/NameRules.h"
#include "checks/ThemeReport.h"
#include "checks/TranslationText.h"
#include "checks/WindowReport.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "markup/Matching.h"

#include <algorithm>
#include <vector>

namespace quillmere {

namespace {

// A word of capitals is a name in every language.
bool hasSmallLetter(QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        if ((text[at].isLetter() && !text[at].isUpper()) || text[at].isHighSurrogate())
            return true;
    }
    return false;
}

// Nearly all of whose texts are the sources themselves.
bool isOfSources(const Catalogue &language)
{
    qsizetype translated = 0, same = 0;
    for (const CatalogueRow &row : language.rows) {
        if (row.value.isEmpty() || !needsTranslation(row.name))
            continue;
        ++translated;
        same += row.value == row.name;
    }
    return same * 10 >= translated * 9;
}

// The letters of the font that a language names, where they can be read.
std::optional<FontLetters> lettersOf(const ThemeReport &report, const Catalogue &language)
{
    if (language.font.isEmpty())
        return std::nullopt;
    for (const CatalogueRow &row : report.catalogues.of(FileRole::FontCatalogue).rows) {
        if (row.name != language.font || !row.isFirst || row.found.isEmpty() ||
            !liesBelow(row.found, report.sources.folder))
            continue;
        QString reason;
        return FontLetters::read(readRegular(row.found, kLargestFile, reason));
    }
    return std::nullopt;
}

// Blanks and what only tells others how to stand need no shape.
bool needsShape(char32_t letter)
{
    const bool choosesShape = letter >= 0xFE00 && letter <= 0xFE0F;
    return !choosesShape && !QChar::isSpace(letter) && QChar::isPrint(letter) &&
           QChar::category(letter) != QChar::Other_Format;
}

// Each once.
QStringList missingIn(QStringView text, const FontLetters &letters)
{
    QStringList missing;
    for (qsizetype at = 0; at < text.size(); ++at) {
        char32_t letter = text[at].unicode();
        if (letter < 0x80 && letters.has(letter))
            continue;
        const bool isPair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (isPair)
            letter = QChar::surrogateToUcs4(text[at], text[at + 1]);
        at += isPair;
        if (!letters.has(letter) && needsShape(letter))
            missing.append(QString::fromUcs4(&letter, 1));
    }
    missing.removeDuplicates();
    return missing;
}

// Letter case and the number of blanks do not count.
QString comparable(const QString &text)
{
    return text.simplified().toCaseFolded();
}
// The same for texts that are the same so; without the cost of making one.
size_t markOf(QStringView text)
{
    size_t mark = 0;
    for (const QChar c : text) {
        if (!c.isSpace())
            mark = mark * 31 + foldCase(c.unicode());
    }
    return mark;
}

class LanguageCheck
{
public:
    LanguageCheck(ThemeReport &report, const Catalogue &language)
        : m_report(report), m_language(language), m_letters(lettersOf(report, language)),
          m_isOfSources(isOfSources(language))
    {
    }

    void check(qsizetype number)
    {
        const CatalogueRow &row = m_language.rows.at(number);
        if (row.name.isEmpty())
            return;
        if (row.isFirst && !m_report.index.isUsed(NameKind::String, row.name))
            add(Rule::UnusedString, number, {});
        if (!row.isFirst)
            add(Rule::DuplicateSource, number, quoted(row.name) + u" is in the language already");
        if (QStringView(row.value).trimmed().isEmpty())
            return;
        m_marks.push_back({markOf(row.name), number});
        if (m_letters)
            checkLetters(number, row);
        if (row.value == row.name) {
            if (!m_isOfSources && hasSmallLetter(row.name))
                add(Rule::SameAsSource, number, quoted(row.name) + u" is translated as itself");
            return;
        }
        if (!hasSameBlanks(row.name, row.value))
            add(Rule::BlankEnds, number,
                quoted(row.value) + u" does not begin and end with the blanks of " + quoted(row.name));
        if (const QStringList wanted = placeholdersIn(row.name), there = placeholdersIn(row.value);
            wanted != there)
            add(Rule::Placeholders, number,
                quoted(row.value) + u" has " + listed(there) + u", its source " + listed(wanted));
        if (!endsAlike(row.name, row.value))
            add(Rule::EndPunctuation, number, quoted(row.value) + u" does not end like " + quoted(row.name));
        if (const int wanted = lineBreaksIn(row.name), there = lineBreaksIn(row.value); wanted != there)
            add(Rule::LineBreaks, number,
                quoted(row.value) +
                    QStringLiteral(" has %1 line breaks, its source has %2").arg(there).arg(wanted));
    }

    // Once all rows are checked: those with one source and another translation than the first.
    void compare()
    {
        std::sort(m_marks.begin(), m_marks.end());
        for (size_t first = 0, behind = 0; first < m_marks.size(); first = behind) {
            while (behind < m_marks.size() && m_marks[behind].first == m_marks[first].first)
                ++behind;
            if (behind - first > 1)
                compare(first, behind);
        }
    }

private:
    void compare(size_t first, size_t behind)
    {
        QHash<QString, qsizetype> rows; // by source
        for (size_t i = first; i < behind; ++i) {
            const qsizetype number = m_marks[i].second;
            const CatalogueRow &row = m_language.rows.at(number);
            const QString source = comparable(row.name);
            const CatalogueRow &other = m_language.rows.at(rows.value(source, number));
            if (comparable(other.value) != comparable(row.value))
                add(Rule::TwoTranslations, number,
                    quoted(row.value) + u" translates " + quoted(row.name) + u" here, elsewhere it is " +
                        quoted(other.value));
            if (!rows.contains(source))
                rows.insert(source, number);
        }
    }

    void add(Rule rule, qsizetype row, const QString &message)
    {
        m_report.add(rule, m_language, row, message);
    }

    static QString listed(const QStringList &placeholders)
    {
        return placeholders.isEmpty() ? QStringLiteral("no placeholder")
                                      : placeholders.join(QStringLiteral(", "));
    }

    void checkLetters(qsizetype number, const CatalogueRow &row)
    {
        constexpr qsizetype most = 8;
        const QStringList missing = missingIn(row.value, *m_letters);
        if (!missing.isEmpty())
            add(Rule::MissingLetters, number,
                u"The font " + quoted(m_language.font) + u" lacks " + missing.mid(0, most).join(u' ') +
                    (missing.size() > most ? u" and others of " : u" of ") + quoted(row.value));
    }

    ThemeReport &m_report;
    const Catalogue &m_language;
    std::optional<FontLetters> m_letters;
    bool m_isOfSources;
    std::vector<std::pair<size_t, qsizetype>> m_marks; // of the sources that are translated, and their rows
};

} // namespace

QList<Problem> checkLanguage(const ThemeReport &report, const Catalogue &language,
                             const std::stop_token &stop)
{
    ThemeReport own(report.sources, report.index, report.catalogues);
    LanguageCheck check(own, language);
    for (qsizetype row = 0; row < language.rows.size() && !stop.stop_requested(); ++row)
        check.check(row);
    check.compare();
    own.problems.squeeze();
    return own.problems;
}

} // namespace quillmere
