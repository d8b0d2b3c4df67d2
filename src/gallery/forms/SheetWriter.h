#pragma once

#include <QImage>
#include <QString>

#include <memory>

class QIODevice;

namespace quillmere {

// Puts the pictures of windows together in one file as they come.
class SheetWriter
{
public:
    enum class Form { Picture, Page, Print };
    struct Plan
    {
        QString title;
        qsizetype windows = 0;
        int columns = 1;
        QSize screen; // pixels of a window
    };
    // Writes to `out`, which has to outlive it. RunTimeError where so many windows do not fit.
    static std::unique_ptr<SheetWriter> make(Form form, const Plan &plan, QIODevice &out);
    virtual ~SheetWriter() = default;

    // The size that pictures are scaled to before they are added.
    virtual QSize pictureSize() const = 0;
    // The next window, left to right. Where there is no picture `reason` stands in its place.
    virtual void add(const QString &name, const QImage &picture, const QString &reason) = 0;
    // All windows are there. False where the file could not be made of them.
    virtual bool finish() = 0;
};

} // namespace quillmere
