#pragma once

#include "files/Progress.h"
#include "outline/Document.h"
#include "rows/ListRows.h"
#include "rows/RowIndex.h"

#include <QObject>

#include <functional>

namespace quillmere {

class FileList;
class Files;

// The image catalogue: image IDs and the picture files they stand for. Row: text = full path, sub-item 1 =
// ID, sub-item 2 = "Y" when a file of exactly that name was found.
class ImageCatalogue : public QObject
{
    Q_OBJECT

public:
    explicit ImageCatalogue(QObject *parent = nullptr);

    // Clears the rows and reads `<image id="ID">relative path</image>` entries; `imageFolder` is put in front
    // of every path as it stands. A missing file leaves the rows empty. `file1` ends up at the folder of the
    // last row.
    void LoadImageList(const Document &file, const QString &imageFolder, FileList &file1,
                       const Progress &progress = {});
    // Has all that the other one has.
    void assign(const ImageCatalogue &other);

    // The full path of the first row with this ID, both stripped of control characters, letter case minded;
    // empty when there is none. The file need not exist. Constant time, whatever changed the rows.
    QString GetImg(const QString &id) const;
    // The same question to the rows as they stand now: the answers stay, and may be asked for on any thread.
    std::function<QString(const QString &id)> lookup() const;

    // 0-based row with exactly this ID, blanks and letter case minded; -1 without one.
    int rowOf(const QString &id) const;

    // The rows as the catalogue file holds them: paths without the image folder (wherever it occurs, ignoring
    // case) and with "/", every line ended by CR LF.
    QString asText() const;
    // Writes that to the file that was loaded. RunTimeError where there is none or it cannot be written.
    void SaveImageList(Files &files);

    // What is put in front of every picture path, ends in a separator.
    const QString &folder() const { return m_folder; }
    ListRows rows;
    RowsDocument document{rows};

private:
    QString m_folder;
    RowIndex m_ids{rows, 1};
};

} // namespace quillmere
