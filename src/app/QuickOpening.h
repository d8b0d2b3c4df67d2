#pragma once

#include "naming/FoundPlaces.h"
#include "quick/QuickList.h"

#include <QAction>
#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QMenuBar;
class QWidget;

namespace quillmere {

class Commands;
class LiveIndex;
class SourceBox;
class TabStrip;
class Talk;
class ThemeNames;
class ThemeProject;
class frmQuickOpen;

// Quick open: gathers all that one can go to, and goes there.
class QuickOpening : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ThemeNames &names;
        const LiveIndex &index;
        const ThemeProject &theme;
        const SourceBox &source;
        TabStrip &strip;
        const QMenuBar &menus;
        std::function<void(const QString &path)> openDocument, openLanguage, openTheme;
    };
    QuickOpening(const Parts &parts, Talk &talk, QWidget &window);
    ~QuickOpening() override;

    void addCommands(Commands &menu);

private:
    void present();
    void gather();
    void gatherBlocks();
    void gatherNames();
    void gatherFiles();
    void gatherCommands(); // those that can be chosen now
    void add(QuickEntry::Kind kind, const QString &text, const QString &detail, qsizetype id);
    QString shortPath(const QString &path) const;
    void goTo(const QuickEntry &entry);
    void goToBlock(qsizetype number);
    void goToFile(const IndexedFile &file);

    Parts m_parts;
    Talk &m_talk;
    QWidget &m_window;
    std::unique_ptr<frmQuickOpen> m_frmQuickOpen;

    // While it is shown.
    QList<QuickEntry> m_entries;
    QList<NamedThing> m_names;
    QStringList m_windows, m_themes; // paths
    QList<IndexedFile> m_files;
    QList<QPointer<QAction>> m_commands;
};

} // namespace quillmere
