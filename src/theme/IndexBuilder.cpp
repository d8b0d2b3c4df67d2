#include "files/FileList.h"
#include "files/FolderListings.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "theme/ThemeConfig.h"
#include "theme/ThemeIndex.h"

#include <QSet>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

namespace quillmere {

namespace {

constexpr int kMostThreads = 4;

struct RoleOfEntry
{
    QStringView entry;
    FileRole role;
};
constexpr RoleOfEntry kRoles[] = {{u"file_widget", FileRole::WindowCatalogue},
                                  {u"file_image", FileRole::ImageCatalogue},
                                  {u"file_color", FileRole::ColourCatalogue},
                                  {u"file_i18n", FileRole::LanguageCatalogue},
                                  {u"file_font", FileRole::FontCatalogue}};

} // namespace

std::optional<QString> textOf(const ThemeSources &sources, const IndexedFile &file)
{
    for (const QString &path : {file.path, file.found}) {
        const auto open = sources.texts.constFind(path);
        if (open != sources.texts.constEnd())
            return *open;
    }
    if (file.found.isEmpty())
        return std::nullopt;
    try {
        const std::optional<QByteArray> bytes = LoadBytes(file.found);
        return bytes ? std::optional(decodeText(*bytes, sources.rule).text) : std::nullopt;
    } catch (const RunTimeError &) {
        return std::nullopt; // what stands there may be no file at all
    }
}

class IndexBuilder
{
public:
    IndexBuilder(const ThemeSources &sources, std::stop_token stop, WindowOutlines *outlines)
        : m_sources(sources), m_stop(std::move(stop)), m_outlines(outlines)
    {
    }

    std::optional<ThemeIndex> build()
    {
        m_index.m_folder = m_sources.folder;
        listFiles();
        readFiles();
        if (m_stop.stop_requested())
            return std::nullopt;
        return std::move(m_index);
    }

private:
    void listFiles()
    {
        const QString config = joinPath(m_sources.folder, u"theme.xml");
        IndexedFile theme = {config, m_listings.find(config)};
        const QList<ConfigEntry> entries =
            configEntries(quillmere::textOf(m_sources, theme).value_or(QString()));
        QString windows, languages;
        for (const RoleOfEntry &kind : kRoles) {
            // What an entry loads takes the place of what one before it did.
            const auto entry = std::find_if(entries.crbegin(), entries.crend(),
                                            [&](const ConfigEntry &each) { return each.name == kind.entry; });
            if (entry == entries.crend())
                continue;
            const QString path = joinPath(m_sources.folder, u"") + withOwnSeparators(entry->value);
            add(path, kind.role);
            if (kind.role == FileRole::WindowCatalogue)
                windows = path;
            else if (kind.role == FileRole::LanguageCatalogue)
                languages = path;
        }
        listLanguages(languages);
        add(joinPath(m_sources.folder, u"style.xml"), FileRole::Style);
        listWindows(windows, entries);
    }

    // A file is read once for each role, however often it is named.
    qint32 add(const QString &path, FileRole role, bool isListed = true)
    {
        const QString found = m_listings.find(path);
        const QString key = QString::number(int(role)) + (found.isEmpty() ? path : found);
        const auto known = m_known.constFind(key);
        if (known != m_known.constEnd()) {
            if (!m_index.m_numbers.contains(path, *known))
                m_index.m_numbers.insert(path, *known);
            return *known;
        }
        const bool exists = !found.isEmpty() || m_sources.texts.contains(path);
        const qint32 number = m_index.add({path, found, role, isListed, exists});
        m_known.insert(key, number);
        return number;
    }

    void listLanguages(const QString &catalogue)
    {
        if (catalogue.isEmpty())
            return;
        const QString folder = folderOf(catalogue).toString();
        if (m_sources.rows.contains(catalogue)) {
            for (const ListRows::Row &row : m_sources.rows.value(catalogue))
                add(row.text, FileRole::Language);
            return;
        }
        const QString text = textOf(catalogue);
        for (const CatalogueEntry &entry : catalogueEntries(FileRole::LanguageCatalogue, text)) {
            if (!entry.value.isEmpty())
                add(folder + withOwnSeparators(entry.value.in(text)), FileRole::Language);
        }
    }

    void listWindows(const QString &catalogue, const QList<ConfigEntry> &entries)
    {
        if (catalogue.isEmpty())
            return;
        const QString folder = folderOf(catalogue).toString();
        const FoundNames found = m_sources.rows.contains(catalogue)
                                     ? findNames(FileRole::WindowCatalogue, m_sources.rows.value(catalogue))
                                     : findNames(FileRole::WindowCatalogue, textOf(catalogue));
        for (const FoundName &name : found.names)
            addWindow(folder, folder + withOwnSeparators(name.name) + QStringLiteral(".xml"), true,
                      name.name);
        // Windows may lie in one folder with all that theme.xml names.
        QSet<QString> others = {m_listings.find(joinPath(m_sources.folder, u"theme.xml")),
                                m_listings.find(joinPath(m_sources.folder, u"default.xml"))};
        for (const ConfigEntry &entry : entries)
            others.insert(m_listings.find(joinPath(m_sources.folder, u"") + withOwnSeparators(entry.value)));
        for (const IndexedFile &file : std::as_const(m_index.m_files))
            others.insert(file.found);
        for (const QString &name : filesOf(folder)) {
            const QString path = m_listings.find(folder + name);
            if (name.endsWith(u".xml", Qt::CaseInsensitive) && name != u"widget.xml" &&
                !others.contains(path))
                addWindow(folder, folder + name, false, {});
        }
    }

    // A document defines the window that is named like it.
    void addWindow(const QString &folder, const QString &path, bool isListed, QStringView name)
    {
        constexpr qsizetype suffix = 4;
        const qsizetype before = m_index.m_files.size();
        const qint32 file = add(path, FileRole::Window, isListed);
        const QString &found = m_index.m_files.at(file).found;
        if (file < before || !m_index.m_files.at(file).isReadable)
            return;
        QString defined = name.toString();
        if (found != path || defined.isEmpty()) {
            const QString realFolder = joinPath(findFolder(folder), u"");
            defined =
                (found.startsWith(realFolder) ? found.mid(realFolder.size()) : fileNameOf(found).toString())
                    .chopped(suffix);
            defined.replace(separator(), u'/');
        }
        m_windows.insert(file, defined);
    }

    QString textOf(const QString &path)
    {
        const QString text = quillmere::textOf(m_sources, {path, m_listings.find(path)}).value_or(QString());
        m_sources.texts.insert(path, text); // it is read again for its names
        return text;
    }

    void readFiles()
    {
        m_count = qint32(m_index.m_files.size());
        if (m_outlines)
            m_outlines->resize(size_t(m_count));
        const int threads = std::clamp(QThread::idealThreadCount(), 1, kMostThreads);
        std::vector<std::jthread> others;
        for (int i = 1; i < threads; ++i)
            others.emplace_back([this] { work(); });
        work();
    }

    void work()
    {
        for (qint32 next = m_next++; next < m_count && !m_stop.stop_requested(); next = m_next++)
            readFile(next);
    }

    void readFile(qint32 number)
    {
        IndexedFile file;
        {
            const std::lock_guard lock(m_mutex);
            file = m_index.m_files.at(number);
        }
        const std::optional<QString> text = quillmere::textOf(m_sources, file);
        const auto rows = m_sources.rows.constFind(file.path);
        FoundNames found = namesOf(number, file.role, text.value_or(QString()));
        const FoundNames inRows =
            rows == m_sources.rows.constEnd() ? FoundNames() : findNames(file.role, *rows);
        const std::lock_guard lock(m_mutex);
        if (!text)
            m_index.m_files[number].isReadable = false;
        const auto window = m_windows.constFind(number);
        if (window != m_windows.constEnd())
            found.names.insert(found.names.begin(),
                               {*window, {}, -1, NameKind::Window, true, LineColumn{1, 1}});
        m_index.replace(number, found, ThemeIndex::From::Text);
        if (rows != m_sources.rows.constEnd())
            m_index.replace(number, inRows, ThemeIndex::From::Rows);
    }

    FoundNames namesOf(qint32 number, FileRole role, const QString &text)
    {
        if (role != FileRole::Window && role != FileRole::Style)
            return findNames(role, text);
        auto outline = std::make_unique<const Outline>(text);
        FoundNames found = findNames(*outline);
        if (m_outlines)
            (*m_outlines)[size_t(number)] = std::move(outline);
        return found;
    }

    ThemeSources m_sources; // with the texts that were read already
    std::stop_token m_stop;
    WindowOutlines *m_outlines;
    FolderListings m_listings;
    QHash<QString, qint32> m_known;
    QHash<qint32, QString> m_windows; // the names that documents define
    ThemeIndex m_index;
    std::mutex m_mutex; // of the index, while files are read
    std::atomic<qint32> m_next = 0;
    qint32 m_count = 0;
};

std::optional<ThemeIndex> ThemeIndex::build(const ThemeSources &sources, std::stop_token stop,
                                            WindowOutlines *outlines)
{
    return IndexBuilder(sources, std::move(stop), outlines).build();
}

} // namespace quillmere
