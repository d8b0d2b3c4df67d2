#include "commands/forms/RenderCommand.h"

#include "commands/PictureNames.h"
#include "commands/PutFile.h"
#include "commands/forms/CommandTheme.h"
#include "controls/Twips.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "gallery/forms/PictureRun.h"
#include "gallery/forms/Png.h"
#include "gallery/forms/ThemePages.h"

#include <QDir>
#include <QTextStream>

namespace quillmere {

namespace {

// Whatever has the name of the picture is replaced. Gives the reason where it cannot be.
QString writePicture(const QImage &picture, const QString &path)
{
    const QByteArray bytes = pngOf(picture);
    return bytes.isEmpty() ? QStringLiteral("no PNG can be made of it") : putFile(bytes, path);
}

ThemePages pagesFor(const ThemeProject &theme, const CommandLine &line)
{
    ReceiverOptions options;
    options.state = line.state;
    return line.receiver
               ? ThemePages::receiver(theme, ThemePages::HiddenWindows::AsInReceiver, line.language, options)
               : ThemePages::preview(theme);
}

QSize sizeFor(const ThemeProject &theme, const CommandLine &line)
{
    if (!line.size)
        return screenPixels(theme);
    const TwipSize size = browserSize(*line.size, true);
    return {toPixels(size.width), toPixels(size.height)};
}

// What is wrong with the picture of a window, or was with its page; empty where it has been written.
QString complaintAbout(const QImage &picture, const QString &file)
{
    if (picture.isNull())
        return u"the browser did not draw it for " + file;
    const QString reason = writePicture(picture, file);
    return reason.isEmpty() ? reason : QString(u"cannot write the picture " + file + u": " + reason);
}

} // namespace

int renderWindows(const CommandLine &line, QTextStream &out, QTextStream &err)
{
    const CommandTheme theme(line.theme, err);
    if (!theme.isOpen())
        return 2;
    if (!QDir().mkpath(line.out)) {
        err << "quillmere: cannot make the folder " << line.out << Qt::endl;
        return 2;
    }
    std::optional<ThemePages> pages;
    try {
        pages = pagesFor(theme.project(), line);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << printable(error.message()) << Qt::endl;
        return 2;
    }
    const QList<ThemeWindow> windows = windowsOf(theme.project(), line.windows);
    if (windows.isEmpty())
        err << "quillmere: the theme " << line.theme << " has no windows" << Qt::endl;
    PictureNames names;
    int status = windows.isEmpty() ? 1 : 0;
    qsizetype number = 0;
    const auto next = [&]() -> std::optional<PictureJob> {
        if (number == windows.size())
            return {};
        const ThemeWindow &window = windows[number++];
        const QString file = joinPath(line.out, names.next(window.name));
        QString page, reason;
        try {
            page = pages->pageOf(window);
        } catch (const RunTimeError &error) {
            reason = error.message();
        }
        const auto tell = [&, name = printable(window.label()), file,
                           own = number](const QString &complaint) {
            if (complaint.isEmpty()) {
                out << '[' << own << '/' << windows.size() << "] " << name << " -> " << printable(file)
                    << Qt::endl;
                return;
            }
            err << name << ": " << printable(complaint) << Qt::endl;
            status = 1;
        };
        return PictureJob{page, [reason, file, tell](const QImage &picture) -> std::function<void()> {
                              return [tell, complaint = reason.isEmpty() ? complaintAbout(picture, file)
                                                                         : reason] { tell(complaint); };
                          }};
    };
    const qsizetype cameras = std::clamp<qsizetype>(line.jobs, 1, std::max<qsizetype>(windows.size(), 1));
    PictureRun run(line.theme, sizeFor(theme.project(), line), *pages, int(cameras));
    run.run(next);
    return status;
}

} // namespace quillmere
