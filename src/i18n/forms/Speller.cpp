#include "i18n/forms/Speller.h"

#include "i18n/LanguageNames.h"
#include "i18n/forms/SpellDictionary.h"

#include <QSettings>
#include <QStandardPaths>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostKnown = 20'000; // words
constexpr qsizetype kMostSuggestions = 8;

} // namespace

struct Speller::Open
{
    SpellFiles files;
    std::unique_ptr<SpellDictionary> dictionary; // once the first word is looked up
};

Speller::Speller(QObject *parent) : QObject(parent)
{
    m_worker.setMaxThreadCount(1);
}

Speller::~Speller()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

QStringList Speller::folders()
{
    QStringList folders = QStandardPaths::locateAll(
        QStandardPaths::GenericDataLocation, QStringLiteral("hunspell"), QStandardPaths::LocateDirectory);
#ifdef Q_OS_UNIX
    folders += {QStringLiteral("/usr/share/hunspell"), QStringLiteral("/usr/share/myspell/dicts")};
#endif
    folders.removeDuplicates();
    return folders;
}

QString Speller::settingsKey() const
{
    return u"spelling/words/" + m_code;
}

bool Speller::setLanguage(const QString &name)
{
    const auto language = languageCalled(name);
    const SpellFiles files =
        SpellDictionary::isBuiltIn() && language ? spellFilesFor(*language, folders()) : SpellFiles();
    m_language = name;
    m_code = language ? QLocale::languageToCode(*language) : QString();
    const QStringList own =
        files.rules.isEmpty() ? QStringList() : QSettings().value(settingsKey()).toStringList();
    m_own = QSet<QString>(own.begin(), own.end()); // another box may have added some
    if (files == m_files)
        return hasDictionary();
    m_stop.request_stop();
    m_stop = {};
    m_files = files;
    m_known.clear();
    m_open.reset();
    if (hasDictionary()) {
        m_open = std::make_shared<Open>();
        m_open->files = files;
    }
    emit changed();
    return hasDictionary();
}

std::optional<bool> Speller::isWrong(const QString &word) const
{
    if (!hasDictionary() || m_own.contains(word))
        return false;
    const auto known = m_known.constFind(word);
    return known == m_known.cend() ? std::nullopt : std::optional(known->isWrong);
}

std::optional<QStringList> Speller::suggestionsFor(const QString &word) const
{
    return m_known.value(word).suggestions;
}

void Speller::put(const QString &word, const Word &known)
{
    if (m_known.size() > kMostKnown)
        m_known.clear();
    m_known.insert(word, known);
}

void Speller::lookUp(const QStringList &words)
{
    QStringList unknown, wrong;
    for (const QString &word : words) {
        const auto known = m_known.constFind(word);
        if (known == m_known.cend())
            unknown.append(word);
        else if (known->isWrong && !known->suggestions)
            wrong.append(word);
    }
    if (!m_open || (unknown.isEmpty() && wrong.isEmpty()))
        return;
    m_stop.request_stop();
    m_stop = {};
    m_worker.start([this, unknown, wrong, open = m_open, stop = m_stop.get_token()]() mutable {
        QHash<QString, Word> known;
        const auto hand = [&] {
            const auto take = [this, known, open] {
                if (open != m_open)
                    return;
                for (auto word = known.begin(); word != known.end(); ++word)
                    put(word.key(), *word);
                emit found();
            };
            QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
            known.clear();
        };
        if (stop.stop_requested())
            return;
        if (!open->dictionary)
            open->dictionary = std::make_unique<SpellDictionary>(open->files);
        for (const QString &word : std::as_const(unknown)) {
            if (stop.stop_requested())
                break;
            const bool isWrong = !open->dictionary->isRight(word);
            known.insert(word, {isWrong});
            if (isWrong)
                wrong.append(word);
        }
        hand();
        // What was meant takes a hundred times as long, and is not seen before somebody asks.
        for (const QString &word : std::as_const(wrong)) {
            if (stop.stop_requested())
                return;
            known.insert(word, {true, open->dictionary->suggestionsFor(word).mid(0, kMostSuggestions)});
            hand();
        }
    });
}

void Speller::addWord(const QString &word)
{
    if (!hasDictionary() || m_own.contains(word))
        return;
    // Another program of ours may have added some.
    QStringList own = QSettings().value(settingsKey()).toStringList();
    if (!own.contains(word))
        own.append(word);
    QSettings().setValue(settingsKey(), own);
    m_own = QSet<QString>(own.begin(), own.end());
    emit found();
}

} // namespace quillmere
