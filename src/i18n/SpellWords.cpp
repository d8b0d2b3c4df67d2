#include "i18n/SpellWords.h"

#include "i18n/Placeholders.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kLongest = 60; // units; dictionaries take no longer words

bool runsOn(QChar::Script script)
{
    switch (script) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
        return true;
    default:
        return false;
    }
}

bool isApostrophe(QChar c)
{
    return c == u'\'' || c == u'\u2019';
}

bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c.isSurrogate() || c == u'_';
}

bool isLeftAlone(QStringView word)
{
    qsizetype letters = 0;
    bool isCapitals = true;
    for (const QChar c : word) {
        if (c.isDigit() || c.isNumber() || c.isSurrogate() || c == u'_' || runsOn(c.script()))
            return true;
        letters += c.isLetter() ? 1 : 0;
        isCapitals = isCapitals && (!c.isLetter() || c.isUpper());
    }
    return letters < 2 || isCapitals || word.size() > kLongest;
}

// Where a word ends that begins here. Apostrophes count between letters.
qsizetype endOfWord(QStringView text, qsizetype at)
{
    while (at < text.size() && (isOfWord(text[at]) ||
                                (isApostrophe(text[at]) && at + 1 < text.size() && text[at + 1].isLetter())))
        ++at;
    return at;
}

// Regular, and no larger than any dictionary is.
bool isUsable(const QString &path)
{
    constexpr qint64 most = 100'000'000; // bytes
    const QFileInfo file(path);
    return file.isFile() && file.isReadable() && file.size() <= most;
}

} // namespace

QList<Range> wordsToSpell(QStringView text)
{
    QList<Range> words;
    const QList<Range> placeholders = placesOfPlaceholders(text);
    auto placeholder = placeholders.begin();
    for (qsizetype at = 0; at < text.size();) {
        if (!isOfWord(text[at])) {
            const bool isEscape = text[at] == u'\\' && at + 1 < text.size() && text[at + 1] == u'n';
            at += isEscape ? 2 : 1;
            continue;
        }
        const Range word{qint32(at), qint32(endOfWord(text, at))};
        at = word.end;
        while (placeholder != placeholders.end() && placeholder->end < word.start)
            ++placeholder;
        const bool isPlaceholder = placeholder != placeholders.end() && placeholder->start <= word.end;
        if (!isPlaceholder && !isLeftAlone(word.in(text)))
            words.append(word);
    }
    return words;
}

SpellFiles spellFilesFor(QLocale::Language language, const QStringList &folders)
{
    const QString code = QLocale::languageToCode(language);
    if (code.isEmpty())
        return {};
    QStringList wanted;
    if (QLocale::system().language() == language)
        wanted.append(QLocale::system().name());
    wanted += {QLocale(language).name(), code};
    for (const QString &folder : folders) {
        const QDir in(folder);
        QStringList names;
        for (const QString &file : in.entryList({code + u"*.aff"}, QDir::Files, QDir::Name)) {
            const QString name = file.chopped(4);
            // "de_DE", "de-1901" and "de", but not "den"
            const bool isOurs =
                name.size() == code.size() || name[code.size()] == u'_' || name[code.size()] == u'-';
            if (isOurs && isUsable(in.filePath(file)) && isUsable(in.filePath(QString(name + u".dic"))))
                names.append(name);
        }
        const auto rank = [&wanted](const QString &name) {
            const qsizetype at = wanted.indexOf(name);
            return at < 0 ? wanted.size() : at;
        };
        const auto best =
            std::min_element(names.begin(), names.end(),
                             [&](const QString &a, const QString &b) { return rank(a) < rank(b); });
        if (best != names.end())
            return {in.filePath(QString(*best + u".aff")), in.filePath(QString(*best + u".dic"))};
    }
    return {};
}

} // namespace quillmere
