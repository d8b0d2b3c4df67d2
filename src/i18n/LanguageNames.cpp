#include "i18n/LanguageNames.h"

#include <QHash>

namespace quillmere {

namespace {

constexpr qsizetype kLeastPart = 5; // letters of a name that stand for all of it

const QHash<QString, QLocale::Language> &knownNames()
{
    static const QHash<QString, QLocale::Language> names = [] {
        QHash<QString, QLocale::Language> known;
        for (int number = QLocale::C + 1; number <= QLocale::LastLanguage; ++number) {
            const auto language = QLocale::Language(number);
            known.insert(QLocale::languageToString(language).toLower(), language);
            const QString own = QLocale(language).nativeLanguageName().toLower();
            if (QLocale(language).language() == language && !own.isEmpty() && !known.contains(own))
                known.insert(own, language);
        }
        return known;
    }();
    return names;
}

QString firstWord(QStringView name)
{
    qsizetype end = 0;
    while (end < name.size() && (name[end].isLetter() || name[end].isMark() || name[end].isSurrogate()))
        ++end;
    return name.first(end).toString().toLower();
}

} // namespace

std::optional<QLocale::Language> languageCalled(QStringView name)
{
    const QString word = firstWord(name.trimmed());
    const QHash<QString, QLocale::Language> &names = knownNames();
    if (const auto known = names.constFind(word); known != names.constEnd())
        return *known;
    if (word.size() == 2 || word.size() == 3) {
        const QLocale::Language language = QLocale::codeToLanguage(word);
        return language == QLocale::AnyLanguage ? std::nullopt : std::optional(language);
    }
    std::optional<QLocale::Language> found;
    for (auto known = names.constBegin(); word.size() >= kLeastPart && known != names.constEnd(); ++known) {
        if (known.key().startsWith(word) && (!found || *known < *found))
            found = *known;
    }
    return found;
}

bool mayTranslateInto(QStringView dictionary, QStringView language)
{
    const auto from = languageCalled(dictionary);
    return !from || from == languageCalled(language) || firstWord(dictionary) == firstWord(language);
}

QString otherThan(QStringView language, QStringView said)
{
    const auto is = languageCalled(said), wanted = languageCalled(language);
    return is && wanted && is != wanted ? QLocale::languageToString(*is) : QString();
}

} // namespace quillmere
