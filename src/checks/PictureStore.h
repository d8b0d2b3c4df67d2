#pragma once

#include "files/RegularFile.h"

#include <QByteArray>
#include <QHash>
#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <mutex>
#include <stop_token>

namespace quillmere {

// Tells the bytes of a file from others while the program runs; all 0 where they are not known.
using PictureMark = std::array<quint64, 2>;

struct PictureFacts
{
    qint64 bytes = 0;
    PictureMark mark;
    QSize size;              // pixels; empty where there is none, as for drawings
    bool isReadable = false; // both size and pixels, within the limits of the preview
};

// The size of a picture and whether its pixels can be read, from the bytes of its file. Is called from
// several threads at once.
struct PictureReading
{
    QSize size;
    bool isReadable = false;
};
using PictureReader = std::function<PictureReading(const QByteArray &bytes)>;

// What is known of picture files. A file is read again only where its size or its time has changed.
class PictureStore
{
public:
    explicit PictureStore(PictureReader reader) : m_reader(std::move(reader)) {}

    // Existing files, by path, in this order; what lies outside the theme's folder, once links are
    // followed, is not read. Where it is told to stop, the rest stays unread.
    QList<PictureFacts> facts(const QStringList &paths, const QString &themeFolder, std::stop_token stop);

private:
    struct Known
    {
        qint64 changed; // when; see FileState
        PictureFacts facts;
    };
    class Folders;

    PictureFacts factsOf(const QString &inTheme, const FileState &state);

    PictureReader m_reader;
    std::mutex m_mutex; // of what is known
    QHash<QString, Known> m_known;
};

} // namespace quillmere
