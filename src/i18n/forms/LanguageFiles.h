#pragma once

#include "files/TextFile.h"
#include "i18n/LanguageText.h"

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <stop_token>

namespace quillmere {

class ListRows;

// What the files of a theme's languages say, read beside the window's thread when somebody first wants to
// know, and again when they have changed. What is not saved yet is not in it.
class LanguageFiles : public QObject
{
    Q_OBJECT

public:
    // The rows of the languages must outlive this. `rule` is asked whenever files are read.
    LanguageFiles(const ListRows &lvLang, std::function<CodePageRule()> rule, QObject *parent = nullptr);
    ~LanguageFiles() override; // tells what is under way to stop, and waits for it

    // nullptr for a file that has not been read yet, or cannot be.
    std::shared_ptr<const LanguageText> at(const QString &path) const;
    // Reads what was not read, or is another file now.
    void lookAgain();

signals:
    void changed();

private:
    struct Read
    {
        FileState state;
        CodePageRule rule = CodePageRule::Automatic;
        std::shared_ptr<const LanguageText> text;
    };
    using Texts = QHash<QString, Read>;

    static Texts read(const QStringList &paths, CodePageRule rule, const Texts &before,
                      const std::stop_token &stop);
    void start();

    const ListRows &m_languages;
    std::function<CodePageRule()> m_rule;
    bool m_isWanted = false;
    Texts m_texts;
    std::stop_source m_stop;
    QThreadPool m_worker; // last: nothing of the above may go while it works
};

} // namespace quillmere
