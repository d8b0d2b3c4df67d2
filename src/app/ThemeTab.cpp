#include "app/ThemeTab.h"

#include "controls/DirListBox.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "files/FileList.h"
#include "rows/ListRows.h"

#include <QComboBox>
#include <QDir>
#include <QListView>
#include <QStorageInfo>

namespace quillmere {

namespace {

constexpr int kMargin = 8;          // pixels
constexpr int kDriveHeight = 26;    // pixels
constexpr int kEntriesHeight = 190; // pixels, lvTheme keeps it
constexpr int kAroundFolders = 900; // twips of the frame's height that neither list takes

// The drives of a system that has letters for them; elsewhere the root, the person's own folder and what is
// mounted.
QStringList drives()
{
    QStringList paths;
    for (const QFileInfo &drive : QDir::drives())
        paths.append(QDir::toNativeSeparators(drive.absoluteFilePath()));
#ifndef Q_OS_WIN
    paths.append(QDir::homePath());
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        const QString root = volume.rootPath();
        if (root.startsWith(QLatin1String("/media/")) || root.startsWith(QLatin1String("/mnt/")) ||
            root.startsWith(QLatin1String("/run/media/")) || root.startsWith(QLatin1String("/Volumes/")))
            paths.append(root);
    }
#endif
    paths.removeDuplicates();
    return paths;
}

} // namespace

ThemeTab::ThemeTab(ListRows &entries, FileList &files, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(0)"), parent),
      Dir1(new DirListBox(QStringLiteral("Dir1"), tr("Folders"), this)),
      Drive1(named(new QComboBox(this), "Drive1", tr("Drive"))),
      File1(named(new QListView(this), "File1", tr("Files"))),
      lvTheme(new ListView(QStringLiteral("lvTheme"), tr("Entries of the theme"), entries, this))
{
    Drive1->addItems(drives());
    {
        // Somewhere to start from; nothing is chosen by it. Some accounts have no folder of their own.
        const QSignalBlocker quiet(Dir1);
        Dir1->setPath(QDir(QDir::homePath()).exists() ? QDir::homePath() : QDir::rootPath());
    }
    setTabOrder(Drive1, Dir1);
    setTabOrder(Dir1, lvTheme);
    connect(Drive1, &QComboBox::textActivated, this, [this](const QString &drive) {
        // A drive that is not ready is passed over in silence.
        Dir1->setPath(drive);
    });
    File1->setModel(&files);
    File1->hide(); // the loaders' own; a person sees its files in the lists they fill
    lvTheme->setColumnShares({2, 3});
}

void ThemeTab::layOut(int height)
{
    const int inner = width() - 2 * kMargin;
    place(Drive1, kMargin, kMargin, inner, kDriveHeight);
    const int folders = toPixels(height - kAroundFolders) - kEntriesHeight;
    place(Dir1, kMargin, 2 * kMargin + kDriveHeight, inner, folders);
    place(lvTheme, kMargin, this->height() - kMargin - kEntriesHeight, inner, kEntriesHeight);
}

} // namespace quillmere
