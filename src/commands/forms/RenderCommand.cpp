#include "commands/forms/RenderCommand.h"

#include "browser/forms/WebBrowser.h"
#include "controls/Twips.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "markup/FormatXML.h"
#include "preview/PreviewPage.h"
#include "preview/WidgetHtml.h"
#include "theme/ThemeProject.h"

#include <QDir>
#include <QEventLoop>
#include <QTextStream>
#include <QTimer>

namespace quillmere {

namespace {

constexpr int kMostWait = 20000; // ms for one window
constexpr int kFrame = 40;       // ms between two looks at the browser
constexpr int kMostLooks = 50;

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

// Writes the page and waits for its pictures.
bool show(WebBrowser &wb, const QString &page)
{
    QEventLoop loop;
    bool drawn = false;
    const auto done = QObject::connect(&wb, &WebBrowser::drawn, &loop, [&] {
        drawn = true;
        loop.quit();
    });
    QObject::connect(&wb, &WebBrowser::failed, &loop, &QEventLoop::quit);
    QTimer::singleShot(kMostWait, &loop, &QEventLoop::quit);
    wb.write(page);
    loop.exec();
    QObject::disconnect(done);
    return drawn;
}

// What the browser shows. Its frames arrive from another process some time after the page says that it is
// drawn, so the picture is taken when it has stopped changing.
QImage pictureOf(WebBrowser &wb)
{
    QImage last;
    int same = 0;
    for (int look = 0; look < kMostLooks && same < 2; ++look) {
        QEventLoop loop;
        QTimer::singleShot(kFrame, &loop, &QEventLoop::quit);
        loop.exec();
        QImage now = wb.grab().toImage();
        same = now == last ? same + 1 : 0;
        last = std::move(now);
    }
    return last;
}

// Empty where the document was read, else why not.
QString read(const QString &document, QString &text)
{
    try {
        text = LoadFile(document);
    } catch (const RunTimeError &error) {
        return error.message();
    }
    return findFile(document).isEmpty() ? QStringLiteral("no document") : QString();
}

// A window's name is the theme's own text; it must not lead out of the folder.
QString pictureName(QString window)
{
    window.replace(u'/', u'_').replace(u'\\', u'_');
    return window + QStringLiteral(".png");
}

} // namespace

int renderWindows(const CommandLine &line)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (!QFileInfo(line.theme).isDir()) {
        err << "quillmere: there is no folder " << line.theme << Qt::endl;
        return 1;
    }
    if (!QDir().mkpath(line.out)) {
        err << "quillmere: cannot make the folder " << line.out << Qt::endl;
        return 1;
    }
    ThemeProject theme;
    try {
        theme.LoadTheme(line.theme);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << error.message() << Qt::endl;
        return 1;
    }
    if (!theme.problems().isEmpty())
        err << "quillmere: " << theme.problems().text() << Qt::endl;

    WebBrowser wb;
    const Screen screen = line.size.value_or(screenOfTheme(theme.widgets.width, theme.widgets.height));
    const TwipSize size = browserSize(screen, true);
    wb.setAttribute(Qt::WA_DontShowOnScreen);
    wb.resize(toPixels(size.width), toPixels(size.height));
    wb.setThemeFolder(line.theme);
    wb.show();

    const QList<Window> windows = windowsOf(theme.widgets.LvWidget, line.windows);
    if (windows.isEmpty())
        err << "quillmere: the theme " << line.theme << " has no windows" << Qt::endl;
    const ImageLookup GetImg = [&theme](const QString &id) { return theme.images.GetImg(id); };
    ListRows blocks({QString(), QString()});
    int status = windows.isEmpty() ? 1 : 0;
    for (int i = 0; i < windows.size(); ++i) {
        const Window &window = windows[i];
        QString text;
        const QString problem = read(window.document, text);
        if (!problem.isEmpty()) {
            err << window.name << ": " << problem << Qt::endl;
            status = 1;
            continue;
        }
        const QString html = BuildWidgetHtml(FormatXML(text), GetImg, theme.lvFont, blocks);
        const bool drawn = show(wb, BuildPreviewPage(html, {}, defaultFontSize(theme.lvFont), blocks));
        const QString file = joinPath(line.out, pictureName(window.name));
        if (!drawn || !pictureOf(wb).save(file, "PNG")) {
            err << window.name << ": "
                << (drawn ? "cannot write the picture " : "the browser did not draw it for ") << file
                << Qt::endl;
            status = 1;
            continue;
        }
        out << '[' << i + 1 << '/' << windows.size() << "] " << window.name << " -> " << file << Qt::endl;
    }
    return status;
}

} // namespace quillmere
