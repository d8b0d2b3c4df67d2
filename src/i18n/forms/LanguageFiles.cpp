#include "i18n/forms/LanguageFiles.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "rows/ListRows.h"

namespace quillmere {

namespace {

constexpr int kMostLanguages = 100;               // of a theme
constexpr qsizetype kMostText = 32 * 1024 * 1024; // units, of all languages together

bool isSame(const FileState &a, const FileState &b)
{
    return a.bytes == b.bytes && a.changed == b.changed && a.isLink == b.isLink;
}

} // namespace

LanguageFiles::LanguageFiles(const ListRows &lvLang, std::function<CodePageRule()> rule, QObject *parent)
    : QObject(parent), m_languages(lvLang), m_rule(std::move(rule))
{
    m_worker.setMaxThreadCount(1);
    const auto again = [this] {
        if (m_isWanted)
            start();
    };
    connect(&lvLang, &QAbstractItemModel::modelReset, this, again);
    connect(&lvLang, &QAbstractItemModel::rowsInserted, this, again);
    connect(&lvLang, &QAbstractItemModel::dataChanged, this, again);
}

LanguageFiles::~LanguageFiles()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

std::shared_ptr<const LanguageText> LanguageFiles::at(const QString &path) const
{
    return m_texts.value(path).text;
}

void LanguageFiles::lookAgain()
{
    m_isWanted = true;
    start();
}

void LanguageFiles::start()
{
    QStringList paths;
    for (const ListRows::Row &language : m_languages.rows().mid(0, kMostLanguages))
        paths.append(language.text);
    m_stop.request_stop();
    m_stop = {};
    m_worker.start([this, paths, rule = m_rule(), before = m_texts, stop = m_stop.get_token()] {
        const Texts texts = read(paths, rule, before, stop);
        const auto hand = [this, texts, stop] {
            if (stop.stop_requested())
                return;
            m_texts = texts;
            emit changed();
        };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    });
}

LanguageFiles::Texts LanguageFiles::read(const QStringList &paths, CodePageRule rule, const Texts &before,
                                         const std::stop_token &stop)
{
    Texts texts;
    qsizetype room = kMostText;
    for (const QString &path : paths) {
        if (stop.stop_requested() || texts.contains(path))
            continue;
        const QString found = findFile(path);
        if (found.isEmpty())
            continue;
        Read now = {stateOf(found), rule, {}};
        const Read old = before.value(path);
        if (old.text && old.rule == rule && isSame(old.state, now.state)) {
            now.text = old.text;
        } else {
            try {
                now.text = std::make_shared<const LanguageText>(LoadFile(found, rule));
            } catch (const RunTimeError &) {
                continue; // opening the language says why it cannot be read
            }
        }
        room -= now.text->size();
        if (room >= 0)
            texts.insert(path, now);
    }
    return texts;
}

} // namespace quillmere
