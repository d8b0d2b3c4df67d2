#include "keeping/forms/OutsideChanges.h"

#include "asking/Talk.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "i18n/forms/LangTab.h"
#include "keeping/forms/OfferBar.h"
#include "rows/ToolTip.h"
#include "theme/ThemeProject.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kSettling = 300;  // ms
constexpr int kMostFiles = 100; // of a theme; one that names more is no theme that anybody works on

const QString kKey = QStringLiteral("outside");

} // namespace

OutsideChanges::OutsideChanges(OfferBar &offers, ThemeProject &theme, LangTab &languages, Files &files,
                               Talk &talk, QObject *parent)
    : QObject(parent), m_offers(offers), m_theme(theme), m_openFiles(files), m_talk(talk)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(kSettling);
    const auto soon = [this] { m_settling.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, soon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, soon);
    connect(&m_settling, &QTimer::timeout, this, &OutsideChanges::check);
    // Some file systems report nothing; whoever comes back from another program has the files looked at.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [soon](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            soon();
    });
    connect(&theme, &ThemeProject::loaded, this, &OutsideChanges::watchTheme);
    connect(&languages, &LangTab::languageOpened, this,
            [this, &languages](const QString &path, const QString &folder) {
                const auto reload = [this, &languages, path, folder] {
                    m_talk.run([&] { languages.openLanguage(path, folder); });
                };
                watch(QStringLiteral("language"), {{path, reload}});
            });
}

void OutsideChanges::watchTheme()
{
    QList<File> files;
    for (const QString &path : m_theme.files().mid(0, kMostFiles))
        files.append({path, [this, path] { m_talk.run([&] { m_theme.reload(path); }); }});
    watch(QStringLiteral("theme"), files);
}

void OutsideChanges::watch(const QString &owner, const QList<File> &files)
{
    m_files.insert(owner, files);
    for (const File &file : files)
        m_answered.remove(file.path); // it has just been loaded
    watchAgain();
    check();
}

void OutsideChanges::fileReplaced(const QString &path)
{
    const QString replaced = QFileInfo(path).canonicalFilePath();
    for (const QList<File> &files : QHash(m_files)) {
        for (const File &file : files) {
            if (QFileInfo(findFile(file.path)).canonicalFilePath() != replaced)
                continue;
            file.reload();
            emit reloaded();
        }
    }
}

// A file that was replaced by another of its name is no longer watched, and its folder tells when it comes
// back.
void OutsideChanges::watchAgain()
{
    QStringList paths;
    for (const QList<File> &files : std::as_const(m_files)) {
        for (const File &file : files) {
            const QString existing = findFile(file.path);
            if (!existing.isEmpty())
                paths.append(existing);
            const QFileInfo folder(QFileInfo(existing.isEmpty() ? file.path : existing).path());
            if (folder.isDir())
                paths.append(folder.filePath());
        }
    }
    paths.removeDuplicates();
    const QStringList now = m_watcher.files() + m_watcher.directories();
    QStringList gone, come;
    std::copy_if(now.begin(), now.end(), std::back_inserter(gone),
                 [&](const QString &path) { return !paths.contains(path); });
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(come),
                 [&](const QString &path) { return !now.contains(path); });
    if (!gone.isEmpty())
        m_watcher.removePaths(gone);
    if (!come.isEmpty())
        m_watcher.addPaths(come);
}

void OutsideChanges::check()
{
    m_settling.stop();
    QList<File> changed;
    for (const QList<File> &files : std::as_const(m_files)) {
        for (const File &file : files) {
            if (!m_openFiles.loaded().changedOutside(file.path))
                continue;
            const QByteArray now = fingerprintOf(file.path);
            const auto answered = m_answered.constFind(file.path);
            if (answered != m_answered.constEnd() && *answered == now)
                continue;
            if (!now.isEmpty()) {
                changed.append(file);
                continue;
            }
            m_answered.insert(file.path, now);
            m_talk.say(
                tr("%1 was deleted by another program; what was loaded from it stays.").arg(file.path));
        }
    }
    watchAgain();
    emit looked();
    if (changed.isEmpty())
        m_offers.withdraw(kKey);
    else
        offerReload(changed);
}

void OutsideChanges::offerReload(const QList<File> &changed)
{
    QStringList names;
    for (const File &file : changed)
        names.append(QFileInfo(file.path).fileName());
    QString text;
    if (names.size() == 1)
        text = tr("%1 was changed by another program.").arg(names[0]);
    else if (names.size() == 2)
        text = tr("%1 and %2 were changed by another program.").arg(names[0], names[1]);
    else
        text = tr("%1, %2 and %3 more files were changed by another program.")
                   .arg(names[0], names[1])
                   .arg(names.size() - 2);
    const auto settle = [this, changed] {
        for (const File &file : changed)
            m_answered.insert(file.path, fingerprintOf(file.path));
    };
    m_offers.setToolTip(plainToolTip(names.join(u'\n')));
    m_offers.offer(kKey, text,
                   {{tr("Reload"),
                     [this, changed, settle] {
                         settle();
                         for (const File &file : changed)
                             file.reload();
                         emit reloaded();
                     }},
                    {tr("Keep"), settle}});
}

} // namespace quillmere
