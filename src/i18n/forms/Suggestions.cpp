#include "i18n/forms/Suggestions.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "i18n/Dictionary.h"
#include "i18n/LanguageNames.h"
#include "i18n/LanguageStrings.h"

#include <QDir>
#include <QFileInfo>

namespace quillmere {

namespace {

constexpr qint64 kMostBytes = 8 * 1024 * 1024;  // of a dictionary, or a language of another theme
constexpr qint64 kMostOfAll = 32 * 1024 * 1024; // bytes of all of them
constexpr int kMostDictionaries = 50;

} // namespace

struct Suggestions::Work
{
    QString source;
    int row;
    Places places;
    QList<ListRows::Row> strings;
    qint64 revision;
};

struct Suggestions::Known
{
    struct File
    {
        FileState state;
        std::shared_ptr<const TranslationMemory> memory;
        bool isUsed = false;
    };
    QHash<QString, File> files;
    qint64 left = 0; // bytes that may still be read for this question

    QString askedFor; // language and themes that the paths are of
    QStringList paths;

    std::shared_ptr<const TranslationMemory> own;
    qint64 revision = -1;
};

Suggestions::Suggestions(const ListRows &strings, QObject *parent)
    : QObject(parent), m_strings(strings), m_known(std::make_shared<Known>())
{
    m_worker.setMaxThreadCount(1);
    const auto changed = [this] { ++m_revision; };
    connect(&strings, &QAbstractItemModel::dataChanged, this, changed);
    connect(&strings, &QAbstractItemModel::modelReset, this, changed);
    connect(&strings, &QAbstractItemModel::rowsInserted, this, changed);
    connect(&strings, &QAbstractItemModel::rowsRemoved, this, changed);
}

Suggestions::~Suggestions()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

void Suggestions::ask(int row, const Places &places)
{
    m_stop.request_stop();
    m_stop = {};
    const Work work = {m_strings.sub(row, 1), row, places, m_strings.rows(), m_revision};
    m_worker.start([this, work, known = m_known, stop = m_stop.get_token()] {
        if (stop.stop_requested())
            return;
        const TranslationMemories all = memories(*known, work);
        const QList<Suggestion> suggestions =
            suggestionsFor(work.source, all, known->own.get(), work.row, stop);
        const auto hand = [this, row = work.row, suggestions, stop] {
            if (!stop.stop_requested())
                emit found(row, suggestions);
        };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    });
}

// What was read before counts as long as the file is the same.
std::shared_ptr<const TranslationMemory>
Suggestions::ofFile(Known &known, const QString &path, const QString &origin, TranslationMemory::Kind kind)
{
    const FileState state = stateOf(path);
    known.left -= state.bytes;
    if (state.bytes == 0 || state.bytes > kMostBytes || known.left < 0)
        return nullptr;
    Known::File &file = known.files[path];
    file.isUsed = true;
    if (file.memory && file.state.bytes == state.bytes && file.state.changed == state.changed)
        return file.memory;
    auto memory = std::make_shared<TranslationMemory>(origin, kind);
    try {
        const QString text = decodeText(LoadBytes(path, {}, kMostBytes).value_or(QByteArray())).text;
        if (kind == TranslationMemory::Kind::Dictionary) {
            memory->addDictionary(text);
        } else {
            for (const LanguageString &string : languageStrings(text))
                memory->add(string.source, string.translation);
        }
    } catch (const RunTimeError &) {
        // One that cannot be read suggests nothing.
    }
    memory->makeIndex();
    file.state = state;
    file.memory = memory;
    return memory;
}

TranslationMemories Suggestions::memories(Known &known, const Work &work)
{
    TranslationMemories all;
    known.left = kMostOfAll;
    for (Known::File &file : known.files)
        file.isUsed = false;
    const auto add = [&](const QString &path, const QString &origin, TranslationMemory::Kind kind) {
        if (const auto memory = ofFile(known, path, origin, kind))
            all.append(memory);
    };
    const Places &places = work.places;
    const QDir trans(joinPath(places.programFolder, u"trans"));
    QStringList dictionaries = {joinPath(places.programFolder, u"Indonesia.txt")};
    for (const QString &name : trans.entryList(QDir::Files, QDir::Name).mid(0, kMostDictionaries))
        dictionaries.append(trans.filePath(name));
    for (const QString &path : std::as_const(dictionaries)) {
        const QString name = dictionaryNames({fileNameOf(path).toString()}).value(0);
        if (!name.isEmpty() && mayTranslateInto(name, places.language))
            add(path, name, TranslationMemory::Kind::Dictionary);
    }
    if (!known.own || known.revision != work.revision) {
        auto own = std::make_shared<TranslationMemory>(tr("this theme"), TranslationMemory::Kind::Language);
        for (int row = 0; row < work.strings.size(); ++row)
            own->add(work.strings.at(row).sub(1), work.strings.at(row).sub(2), row);
        own->makeIndex();
        known.own = own;
        known.revision = work.revision;
    }
    all.append(known.own);
    const QString askedFor = places.language + u'\n' + places.themes.join(u'\n');
    if (known.askedFor != askedFor) {
        known.askedFor = askedFor;
        known.paths.clear();
        for (const QString &theme : places.themes)
            known.paths.append(places.fileIn ? places.fileIn(theme, places.language) : QString());
    }
    for (qsizetype i = 0; i < known.paths.size(); ++i) {
        const QString &path = known.paths.at(i);
        if (!path.isEmpty() && path != places.file)
            add(path, QFileInfo(QFileInfo(places.themes.at(i)).path()).fileName(),
                TranslationMemory::Kind::Language); // every theme's own folder is called "theme"
    }
    known.files.removeIf([](const auto &file) { return !file->isUsed; });
    return all;
}

} // namespace quillmere
