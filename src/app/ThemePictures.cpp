#include "app/ThemePictures.h"

#include "app/RecentThemes.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "gallery/forms/OverviewRows.h"
#include "gallery/forms/Png.h"
#include "theme/ThemeProject.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace quillmere {

namespace {

constexpr int kMostLookedAt = 20;        // windows; the first may have no document
constexpr qint64 kMostBytes = 4'000'000; // of a picture
const QString kEnding = QStringLiteral(".png");

QString cacheFolder()
{
    return joinPath(QStandardPaths::writableLocation(QStandardPaths::CacheLocation), u"themes");
}

void write(const QString &file, const QImage &picture)
{
    QDir().mkpath(cacheFolder());
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && writePng(picture, out))
        out.commit(); // without it there is no picture, and that is all
}

// Those of themes that are no longer among the recent ones.
void dropOthers(const QStringList &recent)
{
    QStringList kept;
    for (const QString &folder : recent)
        kept.append(fileNameOf(ThemePictures::fileOf(folder)).toString());
    QDir folder(cacheFolder());
    const QStringList files = folder.entryList({u'*' + kEnding}, QDir::Files);
    for (const QString &file : files) {
        if (!kept.contains(file))
            folder.remove(file);
    }
}

} // namespace

ClosedTheme closedTheme(const QString &folder)
{
    ClosedTheme theme;
    theme.isThere = !findFile(joinPath(folder, u"theme.xml")).isEmpty();
    QString reason;
    const QByteArray bytes = readRegular(ThemePictures::fileOf(folder), kMostBytes, reason);
    theme.picture = QImage::fromData(bytes);
    return theme;
}

ThemePictures::ThemePictures(const ThemeProject &theme, const OverviewRows &rows, QObject *parent)
    : QObject(parent), m_theme(theme), m_rows(rows)
{
    m_worker.setMaxThreadCount(1);
    connect(&rows, &QAbstractItemModel::dataChanged, this, &ThemePictures::keep);
}

QString ThemePictures::fileOf(const QString &folder)
{
    const QByteArray name = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex();
    return joinPath(cacheFolder(), QString(QLatin1String(name) + kEnding));
}

void ThemePictures::keep()
{
    for (int number = 0; number < std::min(m_rows.windows(), kMostLookedAt); ++number) {
        const OverviewRows::Window &window = m_rows.window(number);
        if (window.look == OverviewRows::Look::Waiting)
            return;
        if (window.look != OverviewRows::Look::Drawn)
            continue;
        // While another theme is being read the rows are still those of the one before.
        const QString folder = m_theme.folder();
        if (!window.path.startsWith(folder) || m_kept.value(folder) == window.mark)
            return;
        m_kept.insert(folder, window.mark);
        m_worker.start(
            [file = fileOf(folder), picture = window.picture.toImage(), recent = RecentThemes::folders()] {
                dropOthers(recent);
                write(file, picture);
            });
        return;
    }
}

} // namespace quillmere
