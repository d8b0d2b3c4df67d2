#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <functional>

namespace quillmere {

class Files;
class LangTab;
class OfferBar;
class Talk;
class ThemeProject;

// Watches the files that are open and offers to load those again that another program changed.
class OutsideChanges : public QObject
{
    Q_OBJECT

public:
    struct File
    {
        QString path;
        std::function<void()> reload;
    };

    // Watches the theme's own files and the language file from when they are loaded.
    OutsideChanges(OfferBar &offers, ThemeProject &theme, LangTab &languages, Files &files, Talk &talk,
                   QObject *parent = nullptr);

    // The files of one owner, in place of those it had. They are documents that were opened.
    void watch(const QString &owner, const QList<File> &files);
    // The person had this file replaced: loads it again where it is open.
    void fileReplaced(const QString &path);

signals:
    // Files were loaded again, as the person wished.
    void reloaded();
    // Files that are watched, or others beside them, may have changed on disk.
    void looked();

private:
    void watchTheme();
    void watchAgain();
    void check();
    void offerReload(const QList<File> &changed);

    OfferBar &m_offers;
    ThemeProject &m_theme;
    Files &m_openFiles;
    Talk &m_talk;
    QFileSystemWatcher m_watcher;
    QTimer m_settling; // programs write a file in several steps
    QHash<QString, QList<File>> m_files;
    QHash<QString, QByteArray> m_answered; // by path, the contents that have been dealt with
};

} // namespace quillmere
