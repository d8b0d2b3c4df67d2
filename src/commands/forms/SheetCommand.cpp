#include "commands/forms/SheetCommand.h"

#include "commands/PictureNames.h"
#include "commands/PutFile.h"
#include "commands/forms/CommandTheme.h"
#include "files/RunTimeError.h"
#include "gallery/forms/PictureRun.h"
#include "gallery/forms/SheetWriter.h"

#include <QFileInfo>
#include <QTextStream>

namespace quillmere {

namespace {

SheetWriter::Form formOf(const QString &path)
{
    return path.endsWith(u".png", Qt::CaseInsensitive)    ? SheetWriter::Form::Picture
           : path.endsWith(u".html", Qt::CaseInsensitive) ? SheetWriter::Form::Page
                                                          : SheetWriter::Form::Print;
}

// Adds all windows; complains of those that cannot be drawn, and says whether there were any.
bool addAll(SheetWriter &sheet, const CommandTheme &theme, const ThemePages &pages,
            const QList<ThemeWindow> &windows, QTextStream &err)
{
    bool areWhole = true;
    qsizetype number = 0;
    const auto next = [&]() -> std::optional<PictureJob> {
        if (number == windows.size())
            return {};
        const ThemeWindow &window = windows[number++];
        QString page, reason;
        try {
            page = pages.pageOf(window);
        } catch (const RunTimeError &error) {
            reason = error.message();
        }
        const auto put = [&, name = printable(window.label()), reason](const QImage &picture) {
            const QString complaint = !reason.isEmpty()  ? reason
                                      : picture.isNull() ? QStringLiteral("not drawn")
                                                         : QString();
            sheet.add(name, picture, printable(complaint));
            if (complaint.isEmpty())
                return;
            err << name << ": " << printable(complaint) << Qt::endl;
            areWhole = false;
        };
        return PictureJob{page, [put, size = sheet.pictureSize()](const QImage &picture) {
                              const QImage small =
                                  picture.isNull()
                                      ? picture
                                      : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
                              return [put, small] { put(small); };
                          }};
    };
    PictureRun run(theme.project().folder(), screenPixels(theme.project()), pages);
    run.run(next);
    return areWhole;
}

} // namespace

int writeSheet(const CommandLine &line, QTextStream &out, QTextStream &err)
{
    const CommandTheme theme(line.theme, err);
    if (!theme.isOpen())
        return 2;
    const QList<ThemeWindow> windows = windowsOf(theme.project());
    if (windows.isEmpty()) {
        err << "quillmere: the theme " << line.theme << " has no windows" << Qt::endl;
        return 2;
    }
    if (QFileInfo(line.out).isDir()) { // a minute before putting it there would say so
        err << "quillmere: cannot write " << printable(line.out) << ": it is a folder" << Qt::endl;
        return 2;
    }
    PutFile file(line.out);
    if (!file.file().isOpen()) {
        err << "quillmere: cannot write " << line.out << ": " << file.file().errorString() << Qt::endl;
        return 2;
    }
    try {
        const ThemePages pages =
            ThemePages::receiver(theme.project(), ThemePages::HiddenWindows::Shown, line.language);
        const auto sheet = SheetWriter::make(formOf(line.out),
                                             {QFileInfo(QFileInfo(line.theme).path()).fileName(),
                                              windows.size(), line.columns, screenPixels(theme.project())},
                                             file.file());
        const bool areWhole = addAll(*sheet, theme, pages, windows, err);
        const bool isMade = sheet->finish();
        const QString reason = isMade ? file.put() : QStringLiteral("no file can be made of the pictures");
        if (!reason.isEmpty())
            throw RunTimeError(u"cannot write " + line.out + u": " + reason);
        out << windows.size() << " windows -> " << printable(line.out) << Qt::endl;
        return areWhole ? 0 : 1;
    } catch (const RunTimeError &error) {
        err << "quillmere: " << printable(error.message()) << Qt::endl;
        return 2;
    }
}

} // namespace quillmere
