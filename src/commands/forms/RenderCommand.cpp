#include "commands/forms/RenderCommand.h"

#include "browser/forms/PageCamera.h"
#include "browser/forms/PictureSizes.h"
#include "commands/PictureNames.h"
#include "controls/Twips.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "markup/FormatXML.h"
#include "preview/forms/LateRender.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"

#include <QBuffer>
#include <QDir>
#include <QEventLoop>
#include <QTextStream>
#include <QUuid>

#include <filesystem>
#include <functional>
#include <memory>

namespace quillmere {

namespace {

struct Window
{
    QString name;
    QString document; // full path
};

// The windows asked for, in catalogue order or in the order asked; a name that the catalogue does not have
// keeps an empty path.
QList<Window> windowsOf(const ListRows &LvWidget, const QStringList &names)
{
    QList<Window> windows;
    if (names.isEmpty()) {
        for (const ListRows::Row &row : LvWidget.rows())
            windows.append({row.sub(1), row.text});
        return windows;
    }
    for (const QString &name : names) {
        Window window{name, {}};
        for (const ListRows::Row &row : LvWidget.rows()) {
            if (row.sub(1) == name) {
                window.document = row.text;
                break;
            }
        }
        windows.append(window);
    }
    return windows;
}

// Null where the browser does not draw the page.
QImage pictureOf(PageCamera &camera, const QString &page)
{
    QEventLoop loop;
    QImage picture;
    camera.take(page, [&](const QImage &taken) {
        picture = taken;
        loop.quit();
    });
    loop.exec();
    return picture;
}

// Whatever has the name of the picture is replaced, and a link there is not followed. Gives the reason where
// it cannot be.
QString writePicture(const QImage &picture, const QString &path)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!picture.save(&buffer, "PNG"))
        return QStringLiteral("no PNG can be made of it");
    const QString own = u".quillmere-" + QUuid::createUuid().toString(QUuid::Id128);
    QFile beside(joinPath(folderOf(path), own));
    if (!beside.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return beside.errorString();
    const bool written = beside.write(bytes) == bytes.size() && beside.flush();
    QString reason = written ? QString() : beside.errorString();
    beside.close();
    std::error_code failure;
    if (written)
        std::filesystem::rename(beside.filesystemFileName(), QFile(path).filesystemFileName(), failure);
    if (failure)
        reason = QString::fromStdString(failure.message());
    if (!reason.isEmpty())
        beside.remove();
    return reason;
}

// Makes the page of a window from its text.
using PageMaker = std::function<QString(QString &text)>;

PageMaker previewMaker(const ThemeProject &theme)
{
    return [&theme](QString &text) {
        const auto GetImg = [&theme](const QString &id) { return theme.images.GetImg(id); };
        return renderPage({FormatXML(text), GetImg, theme.lvFont.rows(), defaultFontSize(theme.lvFont), {}})
            .page;
    };
}

// RunTimeError for a language that the theme does not have, or whose file cannot be read.
PageMaker receiverMaker(const ThemeProject &theme, const CommandLine &line, PageCamera &camera)
{
    ReceiverParts parts = receiverParts(theme);
    if (!line.language.isEmpty()) {
        parts.theme.translation = translationOf(theme, line.language);
        if (!parts.theme.translation)
            throw RunTimeError(QStringLiteral("the theme has no language \"%1\"; it has: %2")
                                   .arg(line.language, languageNames(theme).join(QStringLiteral(", "))));
    }
    parts.theme.sizeOf = [sizes = std::make_shared<PictureSizes>(theme.folder())](const QString &path) {
        return sizes->of(path);
    };
    camera.setFonts(parts.fonts);
    ReceiverOptions options;
    options.state = line.state;
    return [parts, options](QString &text) { return receiverPage(Outline(text), parts.theme, options); };
}

// RunTimeError where there is nothing to draw, or it cannot be drawn or written.
void draw(PageCamera &camera, const PageMaker &pageOf, const Window &window, const QString &file)
{
    QString text = LoadFile(window.document);
    if (findFile(window.document).isEmpty())
        throw RunTimeError(QStringLiteral("no document"));
    const QString page = pageOf(text);
    const QImage picture = pictureOf(camera, page);
    if (picture.isNull())
        throw RunTimeError(u"the browser did not draw it for " + file);
    const QString reason = writePicture(picture, file);
    if (!reason.isEmpty())
        throw RunTimeError(u"cannot write the picture " + file + u": " + reason);
}

} // namespace

int renderWindows(const CommandLine &line, QTextStream &out, QTextStream &err)
{
    if (!QFileInfo(line.theme).isDir()) {
        err << "quillmere: there is no folder " << line.theme << Qt::endl;
        return 2;
    }
    if (!QDir().mkpath(line.out)) {
        err << "quillmere: cannot make the folder " << line.out << Qt::endl;
        return 2;
    }
    Files files;
    ThemeProject theme(files);
    try {
        theme.LoadTheme(line.theme);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << error.message() << Qt::endl;
        return 2;
    }
    if (!theme.problems().isEmpty())
        err << "quillmere: " << theme.problems().text() << Qt::endl;

    const Screen screen = line.size.value_or(screenOfTheme(theme.widgets.width, theme.widgets.height));
    const TwipSize size = browserSize(screen, true);
    PageCamera camera(line.theme, QSize(toPixels(size.width), toPixels(size.height)));

    PageMaker pageOf;
    try {
        pageOf = line.receiver ? receiverMaker(theme, line, camera) : previewMaker(theme);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << printable(error.message()) << Qt::endl;
        return 2;
    }
    const QList<Window> windows = windowsOf(theme.widgets.LvWidget, line.windows);
    if (windows.isEmpty())
        err << "quillmere: the theme " << line.theme << " has no windows" << Qt::endl;
    PictureNames names;
    int status = windows.isEmpty() ? 1 : 0;
    for (int i = 0; i < windows.size(); ++i) {
        const QString name = printable(windows[i].name);
        try {
            const QString file = joinPath(line.out, names.next(windows[i].name));
            draw(camera, pageOf, windows[i], file);
            out << '[' << i + 1 << '/' << windows.size() << "] " << name << " -> " << printable(file)
                << Qt::endl;
        } catch (const RunTimeError &error) {
            err << name << ": " << printable(error.message()) << Qt::endl;
            status = 1;
        }
    }
    return status;
}

} // namespace quillmere
