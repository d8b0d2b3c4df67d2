#include "files/Files.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/ProgramFolder.h"
#include "files/Writer.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>

namespace quillmere {

namespace {

QString placeOf(Files::Step step, const QString &path, const QString &theme)
{
    switch (step) {
    case Files::Step::Save:
        // Where the theme's folder is gone, one of another letter case may stand beside it; it is only read.
        return realPlace(theme.isEmpty() || QFileInfo(theme).isDir() ? fileToWrite(path) : path);
    case Files::Step::Restore:
        return realPlace(path);
    case Files::Step::Delete:
    case Files::Step::Create:
        break;
    }
    const QString folder = realPlace(folderOf(path).toString());
    return folder.isEmpty() ? QString() : joinPath(folder, fileNameOf(path));
}

bool isBelow(const QString &place, const QString &folder)
{
    return !folder.isEmpty() && place.size() > folder.size() && place.startsWith(folder) &&
           (folder.endsWith(u'/') || place[folder.size()] == u'/');
}

} // namespace

Files::Place Files::place(Step step, const QString &path, const QString &theme) const
{
    const QString real = placeOf(step, path, theme);
    const bool isInside = !theme.isEmpty() && isBelow(real, realPlace(theme));
    // Links in a circle end nowhere; the system refuses them, too.
    const QString shown = real.isEmpty() ? path : real;
    return {shown, isInside, isInside || m_allowed.contains(shown)};
}

QStringList Files::placesOutside(const QStringList &paths, const QString &theme)
{
    const QString folder = realPlace(theme);
    QStringList places;
    for (const QString &path : paths) {
        const QString place = realPlace(path);
        if (!place.isEmpty() && !isBelow(place, folder))
            places.append(place);
    }
    places.removeDuplicates();
    return places;
}

void Files::allow(const QString &place)
{
    m_allowed.insert(place);
}

QString Files::touch(Step step, const QString &path, const QString &theme) const
{
    const Place found = place(step, path, theme);
    if (!found.mayBeTouched)
        throwFailed(step == Step::Delete ? "delete" : "open", path,
                    QStringLiteral("it lies outside the theme's folder, at \"%1\"").arg(found.path));
    return found.path;
}

Writer Files::writer()
{
    return Writer(m_backups, [this](const QString &path, const std::optional<QByteArray> &bytes) {
        m_loaded.noteWritten(path, bytes);
        for (const auto &[listener, tell] : std::as_const(m_listeners)) {
            if (listener)
                tell(path);
        }
    });
}

CodePage Files::save(const QString &path, const QString &text, const QString &theme,
                     std::optional<Encoding> encoding)
{
    const QString target = touch(Step::Save, path, theme);
    if (!QFileInfo(folderOf(target).toString()).isDir())
        throwFailed("open", path, qt_error_string(ENOENT));
    return writer().save(target, text, encoding);
}

void Files::saveAll(const QList<Change> &changes, const QString &theme)
{
    QList<Change> files = changes;
    for (Change &change : files)
        change.path = touch(Step::Save, change.path, theme);
    writer().replaceAll(files);
}

void Files::create(const QString &path, const QByteArray &bytes, const QString &theme)
{
    writer().create(touch(Step::Create, path, theme), bytes);
}

void Files::restore(const QString &path, const QString &version, const QString &theme)
{
    writer().restore(touch(Step::Restore, path, theme), version);
}

void Files::move(const QString &path, const QString &to, const QString &theme)
{
    writer().move(touch(Step::Delete, path, theme), touch(Step::Delete, to, theme));
}

void Files::remove(const QString &path, const QString &theme)
{
    writer().remove(touch(Step::Delete, path, theme));
}

void Files::onWritten(const QObject *listener, std::function<void(const QString &path)> tell)
{
    m_listeners.append({listener, std::move(tell)});
}

QString Files::programFolder() const
{
    if (m_programFolder.isEmpty())
        m_programFolder = findProgramFolder();
    return m_programFolder;
}

QString Files::recoveryFolder() const
{
    if (!m_recoveryFolder.isEmpty())
        return m_recoveryFolder;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return joinPath(data, u"Quillmere/recovery");
}

CodePage Files::saveOwn(const QString &path, const QString &text, std::optional<Encoding> encoding)
{
    return writer().save(path, text, encoding);
}

} // namespace quillmere
