#include "checks/NameRules.h"
#include "checks/WindowReport.h"

namespace quillmere {

// Numbers and signs are the same in every language.
bool needsTranslation(QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        uint letter = text[at].unicode();
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            letter = QChar::surrogateToUcs4(text[at], text[at + 1]);
            ++at;
        }
        if (QChar::isLetter(letter))
            return true;
    }
    return false;
}

std::vector<FoundName> stringsToTranslate(const std::vector<FoundName> &names)
{
    std::vector<FoundName> strings;
    QSet<QString> known;
    for (const FoundName &name : names) {
        if (name.kind != NameKind::String || !needsTranslation(name.name))
            continue;
        const QString text = QString::fromRawData(name.name.data(), name.name.size());
        if (!known.contains(text))
            strings.push_back(name);
        known.insert(text);
    }
    return strings;
}

// A draft that the catalogue does not name yet, and what widgets take over, need no translation.
void checkTranslations(WindowReport &report)
{
    if (report.file.role != FileRole::Window || !report.file.isListed || report.facts.languages.isEmpty())
        return;
    const std::vector<FoundName> strings = stringsToTranslate(report.used);
    for (const LanguageTexts &language : report.facts.languages) {
        Range first;
        int missing = 0;
        for (const FoundName &string : strings) {
            if (language.translated.contains(QString::fromRawData(string.name.data(), string.name.size())))
                continue;
            if (missing++ == 0)
                first = string.range;
        }
        if (missing > 0)
            report.add(
                Rule::Untranslated, first,
                (missing == 1 ? QStringLiteral("1 string") : QStringLiteral("%1 strings").arg(missing)) +
                    u" not in " + quoted(language.name) +
                    (missing == 1 ? QStringLiteral(": ") : QStringLiteral("; the first is ")) +
                    quoted(first.in(report.outline.text())),
                language.name);
    }
}

} // namespace quillmere
