#include "naming/forms/Pictures.h"

#include "browser/PictureFile.h"
#include "catalogues/forms/ScaledPicture.h"
#include "files/Paths.h"

#include <QFileInfo>

#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kMostKept = 16 * 1024 * 1024; // bytes
constexpr qsizetype kMostWanted = 60;             // more than any list shows at a time
constexpr qsizetype kAnyPicture = 500;            // bytes, beside its pixels

} // namespace

Pictures::Pictures(QSize room, QObject *parent) : QObject(parent), m_room(room), m_known(kMostKept)
{
    m_worker.setMaxThreadCount(1);
}

Pictures::~Pictures()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void Pictures::setThemeFolder(const QString &folder)
{
    if (std::exchange(m_folder, folder) == folder)
        return;
    m_known.clear();
    m_wanted.clear();
}

ShownPicture Pictures::find(const QString &path)
{
    const Known *known = m_known.object(path);
    if (!known || known->look != m_look) {
        m_wanted.removeOne(path);
        m_wanted.append(path);
        if (m_wanted.size() > kMostWanted)
            m_wanted.removeFirst();
        readNext();
    }
    return known ? known->picture : ShownPicture();
}

Pictures::Known Pictures::read(const QString &path, const QString &folder, QSize room, const Known &before)
{
    Known known;
    known.picture.isKnown = true;
    const QString found = findFile(path);
    if (found.isEmpty()) {
        known.picture.why = tr("There is no such file.");
        return known;
    }
    if (folder.isEmpty() || !liesBelow(found, folder)) {
        known.picture.why = tr("This file is outside the theme.");
        return known;
    }
    const QFileInfo info(QFileInfo(found).canonicalFilePath());
    known.time = info.lastModified();
    if (before.picture.isKnown && before.time == known.time && before.picture.bytes == info.size())
        return before;
    const std::unique_ptr<QFile> file = openPicture(info.filePath());
    if (!file) {
        known.picture.why = tr("This file cannot be read.");
        return known;
    }
    const ScaledPicture picture = readScaled(*file, room);
    known.picture.image = picture.image;
    known.picture.size = picture.size;
    known.picture.bytes = picture.bytes;
    if (picture.image.isNull())
        known.picture.why = info.suffix().startsWith(u"svg", Qt::CaseInsensitive)
                                ? tr("Drawings are shown in the preview only.")
                                : tr("This is not a picture that can be shown.");
    return known;
}

void Pictures::readNext()
{
    if (m_reading || m_wanted.isEmpty())
        return;
    m_reading = true;
    const QString path = m_wanted.takeLast();
    const Known *known = m_known.object(path);
    const auto work = [this, path, folder = m_folder, room = m_room, look = m_look,
                       before = known ? *known : Known()] {
        Known now = read(path, folder, room, before);
        now.look = look;
        const auto hand = [this, path, folder, now] {
            m_reading = false;
            if (folder == m_folder)
                take(path, now);
            readNext();
        };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    };
    m_worker.start(work);
}

void Pictures::take(const QString &path, const Known &known)
{
    m_known.insert(path, new Known(known), kAnyPicture + known.picture.image.sizeInBytes());
    emit arrived(path);
}

} // namespace quillmere
