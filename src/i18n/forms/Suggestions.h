#pragma once

#include "files/RegularFile.h"
#include "i18n/TranslationMemory.h"
#include "rows/ListRows.h"

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QThreadPool>

#include <functional>

namespace quillmere {

// Finds translations for a string beside the window's thread: in the dictionaries, in the other rows of its
// language, and in the same language of other themes. The answer to the newest question counts.
class Suggestions : public QObject
{
    Q_OBJECT

public:
    // The rows must outlive this.
    explicit Suggestions(const ListRows &strings, QObject *parent = nullptr);
    ~Suggestions() override; // tells what is under way to stop, and waits for it

    // Where to look. The functions are called on another thread.
    struct Places
    {
        QString language;      // as its theme calls it
        QString file;          // of the strings; it is not read
        QString programFolder; // with the dictionaries
        QStringList themes;    // folders of other themes, the nearest first
        std::function<QString(const QString &theme, const QString &language)> fileIn;
    };
    void ask(int row, const Places &places);
    // There is nothing to answer any more.
    void forget() { m_stop.request_stop(); }

signals:
    void found(int row, const QList<quillmere::Suggestion> &suggestions);

private:
    struct Work;
    struct Known;
    static std::shared_ptr<const TranslationMemory>
    ofFile(Known &known, const QString &path, const QString &origin, TranslationMemory::Kind kind);
    static TranslationMemories memories(Known &known, const Work &work);

    const ListRows &m_strings;
    qint64 m_revision = 0;          // of the rows
    std::shared_ptr<Known> m_known; // what was read and indexed before; the worker's alone
    std::stop_source m_stop;
    QThreadPool m_worker; // last: nothing of the above may go while it works
};

} // namespace quillmere
