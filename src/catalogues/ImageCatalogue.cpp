#include "catalogues/ImageCatalogue.h"

#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

namespace {

// The folder in which a picture is looked for: the full path without its name, wherever that occurs in it.
QString folderWithout(const QString &path, QStringView name)
{
    QString folder = path;
    replaceIgnoringCase(folder, name, u"");
    return folder;
}

} // namespace

ImageCatalogue::ImageCatalogue(QObject *parent)
    : QObject(parent),
      rows({QStringLiteral("Nama"), QStringLiteral("Status"), QString()}, ListRows::Checks::Yes)
{
}

void ImageCatalogue::LoadImageList(const Document &file, const QString &imageFolder, FileList &file1,
                                   const Progress &progress)
{
    QString text = file.text();
    CloseUpEquals(text);

    QList<ListRows::Row> images;
    FileNames existing;
    QString folder;
    // What stands before the first element is no entry.
    const QList<QStringView> pieces = splitIgnoringCase(text, u"<image ").mid(1);
    images.reserve(pieces.size());
    for (const QStringView &piece : pieces) {
        tell(progress, &piece - pieces.data(), pieces.size());
        if (!containsIgnoringCase(piece, u"id=\""))
            continue;
        const QString id = SplitField(piece, u"id=\"", u"\"", 1, 0);
        const QString full = imageFolder + withOwnSeparators(SplitFieldView(piece, u">", u"</", 1, 0));
        const QString name = fileNameOf(full).toString();
        folder = folderWithout(full, name);
        images.append({full, {id, existing.contains(folder, name) ? QStringLiteral("Y") : QString()}});
    }
    document.replace(file, std::move(images));
    m_folder = imageFolder;
    if (!rows.isEmpty())
        file1.setPath(folder);
}

void ImageCatalogue::assign(const ImageCatalogue &other)
{
    document.replace(other.document, other.rows.rows());
    m_folder = other.m_folder;
}

QString ImageCatalogue::GetImg(const QString &id) const
{
    const int row = m_ids.find(id);
    return row < 0 ? QString() : rows.text(row);
}

std::function<QString(const QString &id)> ImageCatalogue::lookup() const
{
    return [ids = m_ids.snapshot(), images = rows.rows()](const QString &id) {
        const int row = ids.find(id);
        return row < 0 ? QString() : images.at(row).text;
    };
}

int ImageCatalogue::rowOf(const QString &id) const
{
    for (int row = 0; row < rows.count(); ++row) {
        if (rows.sub(row, 1) == id)
            return row;
    }
    return -1;
}

QString ImageCatalogue::asText() const
{
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>\r\n"
                                  "<images>\r\n");
    for (const ListRows::Row &row : rows.rows()) {
        QString path = row.text;
        replaceIgnoringCase(path, m_folder, u"");
        path.replace(u'\\', u'/');
        text += u"<image id= \"" + row.sub(1) + u"\" >" + path + u"</image>\r\n";
    }
    return text + u"</images>\r\n";
}

void ImageCatalogue::SaveImageList(Files &files)
{
    if (document.path().isEmpty())
        throw RunTimeError(
            QStringLiteral("Cannot save the images: no theme is open, so there is no file to write."));
    document.save(files, asText());
}

} // namespace quillmere
