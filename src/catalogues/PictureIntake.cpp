#include "catalogues/PictureIntake.h"

#include "browser/PictureFile.h"
#include "files/FailedStep.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "files/RunTimeError.h"

#include <QBuffer>
#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kExtension = 4; // characters, with the dot: what the ID leaves out of the name

QString idOf(const QString &name)
{
    return fileNameOf(name).chopped(std::min<qsizetype>(kExtension, fileNameOf(name).size())).toString();
}

// What Qt calls the format of a file of this name; empty for one that the preview does not show.
QByteArray formatNamed(const QString &name)
{
    const QByteArray suffix = QFileInfo(name).suffix().toLower().toLatin1();
    if (suffix == "jpg")
        return "jpeg";
    const QByteArrayList known = {"png", "jpeg", "gif", "bmp", "webp", "ico"};
    return known.contains(suffix) ? suffix : QByteArray();
}

QByteArray formatOf(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return pixelFormat(buffer);
}

// Where the folder of a file really is; the file itself may be a link.
QString realFolderOf(const QString &path)
{
    return realPlace(folderOf(QFileInfo(path).absoluteFilePath()).toString());
}

} // namespace

PictureIntake::PictureIntake(const ImageCatalogue &images, Files &files, WhyNoPicture whyNot)
    : m_images(images), m_files(files), m_whyNot(std::move(whyNot)), m_folder(findFolder(images.folder()))
{
    if (images.document.path().isEmpty())
        throw RunTimeError(QStringLiteral("Cannot add pictures: no theme with images is open."));
    if (m_folder.isEmpty())
        throw RunTimeError(
            QStringLiteral("Cannot add pictures: there is no folder \"%1\".").arg(images.folder()));
    const QString file = joinPath(m_folder, u"a");
    if (!m_files.place(Files::Step::Create, file, images.document.theme()).mayBeTouched)
        throw RunTimeError(
            QStringLiteral("Cannot add pictures: the image folder \"%1\" lies outside the theme's folder.")
                .arg(m_folder));
}

QString PictureIntake::nameProblem(const QString &name, const Encoding &encoding)
{
    static constexpr QStringView forbidden = u"\"'<>\\";
    for (const QChar letter : name) {
        if (forbidden.contains(letter))
            return QStringLiteral("a theme cannot hold \"%1\" in a name").arg(letter);
        if (letter.category() == QChar::Other_Control)
            return QStringLiteral("a theme cannot hold a control character in a name");
    }
    if (name.contains(u" =") || name.contains(u"= "))
        return QStringLiteral("a theme cannot hold a blank beside \"=\" in a name");
    try {
        encodeText(name, encoding.page, encoding.rule);
    } catch (const RunTimeError &) {
        return QStringLiteral("its name does not fit into the code page of the theme");
    }
    if (formatNamed(name).isEmpty())
        return QStringLiteral("its name does not end in .png, .jpg, .jpeg, .gif, .bmp, .webp or .ico");
    return idOf(name).isEmpty() ? QStringLiteral("its name leaves nothing for an ID") : QString();
}

bool PictureIntake::isNameTaken(const QString &name) const
{
    const QString path = joinPath(m_folder, name);
    const QFileInfo there(path);
    return m_names.contains(name.toCaseFolded()) || there.exists() || there.isSymLink() ||
           !findFile(path).isEmpty();
}

bool PictureIntake::isIdTaken(const QString &id) const
{
    return m_ids.contains(id) || m_images.rowOf(id) >= 0;
}

void PictureIntake::look(ComingPicture &picture, const QString &name) const
{
    picture.name = name;
    picture.id = idOf(name);
    picture.problem = nameProblem(name, m_images.document.encoding());
    picture.isTaken = (!picture.isThere && isNameTaken(name)) || isIdTaken(picture.id);
}

ComingPicture PictureIntake::fromFile(const QString &path) const
{
    ComingPicture picture;
    picture.source = path;
    const QString name = fileNameOf(path).toString();
    picture.name = name;
    if (QFileInfo(path).isDir()) {
        picture.problem = QStringLiteral("it is a folder");
        return picture;
    }
    QString reason;
    const std::unique_ptr<QFile> file = openRegular(path, kLargestFile, reason);
    if (!file || pixelFormat(*file).isEmpty()) {
        picture.problem = file ? QStringLiteral("it is not a picture made of pixels") : reason;
        return picture;
    }
    const QString place = realFolderOf(path) + u'/', folder = realPlace(m_folder) + u'/';
    picture.isThere = place.startsWith(folder);
    look(picture, picture.isThere ? withOwnSeparators(place.sliced(folder.size())) + name : name);
    if (!picture.isThere || !picture.problem.isEmpty())
        return picture;
    const QString full = joinPath(m_images.folder(), picture.name);
    const auto isSame = [&full](const ListRows::Row &row) { return row.text == full; };
    if (!liesBelow(path, m_images.document.theme()))
        picture.problem = QStringLiteral("it is a link that leads out of the theme");
    else if (std::ranges::any_of(m_images.rows.rows(), isSame))
        picture.problem = QStringLiteral("it is in the list already");
    return picture;
}

ComingPicture PictureIntake::fromBytes(const QByteArray &bytes, const QString &name) const
{
    ComingPicture picture;
    picture.bytes = bytes;
    look(picture, name);
    return picture;
}

void PictureIntake::rename(ComingPicture &picture, const QString &name) const
{
    if (!picture.isThere) {
        look(picture, name);
        if (name.contains(u'/') || name.contains(separator()))
            picture.problem = QStringLiteral("a name cannot contain \"/\"");
        return;
    }
    picture.id = name;
    picture.problem = name.isEmpty() ? QStringLiteral("an ID needs at least one letter")
                                     : nameProblem(name + u".png", m_images.document.encoding());
    picture.isTaken = isIdTaken(name);
}

QString PictureIntake::freeName(const ComingPicture &picture) const
{
    const QString suffix = u'.' + QFileInfo(picture.name).suffix();
    const QString stem = picture.isThere ? picture.id : picture.name.chopped(suffix.size());
    for (int number = 2;; ++number) {
        const QString next = stem + u'-' + QString::number(number);
        if (picture.isThere ? !isIdTaken(next)
                            : !isNameTaken(next + suffix) && !isIdTaken(idOf(next + suffix)))
            return picture.isThere ? next : QString(next + suffix);
    }
}

void PictureIntake::claim(const ComingPicture &picture)
{
    m_names.insert(picture.name.toCaseFolded());
    m_ids.insert(picture.id);
}

std::optional<ListRows::Row> PictureIntake::bring(ComingPicture &picture) const
{
    QByteArray bytes = picture.bytes;
    if (!picture.source.isEmpty())
        bytes = readRegular(picture.source, kLargestFile, picture.problem);
    if (picture.problem.isEmpty())
        picture.problem = m_whyNot(bytes);
    if (!picture.problem.isEmpty())
        return {};
    if (!picture.isThere) {
        try {
            m_files.create(joinPath(m_folder, picture.name), bytes, m_images.document.theme());
        } catch (const RunTimeError &error) {
            picture.problem = error.message().chopped(1);
            return {};
        }
    }
    return ListRows::Row{joinPath(m_images.folder(), picture.name), {picture.id, QStringLiteral("Y")}};
}

void replacePicture(const QString &path, const QString &source, const QString &theme, Files &files,
                    const PictureIntake::WhyNoPicture &whyNot)
{
    const QString target = findFile(path);
    if (target.isEmpty())
        throwFailed("replace", path, QStringLiteral("there is no such file"));
    QString reason;
    const QByteArray before = readRegular(target, kLargestFile, reason);
    if (!reason.isEmpty())
        throwFailed("replace", path, reason);
    const QByteArray after = readRegular(source, kLargestFile, reason);
    if (reason.isEmpty())
        reason = whyNot(after);
    if (!reason.isEmpty())
        throwFailed("take", source, reason);
    const QByteArray format = formatOf(after);
    if (format != formatNamed(target) && format != formatOf(before))
        throwFailed("take", source,
                    QStringLiteral("it is a %1 picture, unlike \"%2\"")
                        .arg(QString::fromLatin1(format.toUpper()), fileNameOf(target)));
    files.saveAll({{target, before, after}}, theme);
}

} // namespace quillmere
