#pragma once

#include "i18n/SpellWords.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QThreadPool>

#include <memory>
#include <optional>
#include <stop_token>

namespace quillmere {

class SpellDictionary;

// Tells which words are misspelled in one language. The dictionary is read and asked beside the window's
// thread: what is not known yet is looked up, and found() comes when it is.
class Speller : public QObject
{
    Q_OBJECT

public:
    explicit Speller(QObject *parent = nullptr);
    ~Speller() override; // waits for the word that is being looked up

    // Where dictionaries are looked for: in the person's own data, then where the system has them. Never in a
    // theme.
    static QStringList folders();

    // By the name a theme gives the language; empty for none. False where there is no dictionary for it.
    bool setLanguage(const QString &name);
    const QString &language() const { return m_language; }
    bool hasDictionary() const { return !m_files.rules.isEmpty(); }

    // Nothing where it is not known yet.
    std::optional<bool> isWrong(const QString &word) const;
    // What was meant by a wrong word, the likeliest first; nothing where it is not known yet.
    std::optional<QStringList> suggestionsFor(const QString &word) const;
    // Looks up those of the words that are not known; those that were asked for before are given up.
    void lookUp(const QStringList &words);

    // Takes a word into the person's own list for the language, which is remembered.
    void addWord(const QString &word);

signals:
    // Words are known, or known otherwise, now.
    void found();
    // It is another dictionary, and nothing is known.
    void changed();

private:
    struct Word
    {
        bool isWrong = false;
        std::optional<QStringList> suggestions = {};
    };
    struct Open;
    void put(const QString &word, const Word &known);
    QString settingsKey() const;

    QString m_language, m_code;
    SpellFiles m_files;
    QSet<QString> m_own;
    QHash<QString, Word> m_known;
    std::shared_ptr<Open> m_open; // the worker's
    std::stop_source m_stop;
    QThreadPool m_worker; // last: nothing of the above may go while it works
};

} // namespace quillmere
