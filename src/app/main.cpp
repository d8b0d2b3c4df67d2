#include "app/frmSkin.h"
#include "browser/forms/PlainDrawing.h"
#include "browser/forms/TextMeasurer.h"
#include "browser/forms/WebBrowser.h"
#include "checks/forms/ReadPicture.h"
#include "commands/CheckCommand.h"
#include "commands/CommandLine.h"
#include "commands/ExchangeCommand.h"
#include "commands/forms/CompareCommand.h"
#include "commands/forms/RenderCommand.h"
#include "commands/forms/SheetCommand.h"
#include "files/Memory.h"
#include "receiver/BlockText.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLoggingCategory>
#include <QTextStream>
#include <QTimer>

#include <memory>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

using namespace quillmere;

namespace {

void setProgramNames()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillmere"));
    QCoreApplication::setApplicationName(QStringLiteral("quillmere"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUILLMERE_VERSION));
}

// Nothing that nobody asked for comes from Qt and its browser; what ends the program still does.
void silenceOthers()
{
    constexpr const char *flags = "QTWEBENGINE_CHROMIUM_FLAGS";
    qputenv(flags, QByteArray(qgetenv(flags) + " --log-level=3").trimmed());
    QLoggingCategory::setFilterRules(QStringLiteral("*=false\n*.critical=true"));
}

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/%1x%1/apps/quillmere.png").arg(size), QSize(size, size));
    return icon;
}

// The browser would end the program with a word that only its makers understand.
QString reasonAgainstBrowser()
{
#ifdef Q_OS_LINUX
    if (geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX") &&
        !qgetenv("QTWEBENGINE_CHROMIUM_FLAGS").contains("--no-sandbox"))
        return QStringLiteral("the browser of the preview does not run as root in its sandbox. Use another "
                              "account, or set QTWEBENGINE_DISABLE_SANDBOX=1 if you trust the theme.");
#endif
    return {};
}

CommandLine readCommandLine(int argc, char **argv)
{
    // Help, version and complaints must work where there is no display, so they are settled before a window
    // system is asked for anything.
    QCoreApplication words(argc, argv);
    return parseCommandLine(QCoreApplication::arguments());
}

int check(const CommandLine &line, const TextMeasuring &measure = {})
{
    QFile out;
    QTextStream err(stderr);
    if (!out.open(stdout, QIODevice::WriteOnly))
        return 2;
    // The system takes back at once what a large theme takes a tenth of the time to free, text by text.
    const auto leave = [&](int status) {
        if (!line.textFit)
            std::_Exit(out.flush() ? status : 2);
    };
    const int status = runCheck(line, readPicture, out, err, measure, leave);
    return out.flush() ? status : 2;
}

int measureAndCheck(const CommandLine &line)
{
    return check(line, [](const QString &folder, const QList<PageFont> &fonts, const QList<SetText> &texts) {
        return TextMeasurer(folder, fonts, textSheet()).measure(texts);
    });
}

int draw(const CommandLine &line)
{
    QTextStream out(stdout), err(stderr);
    if (line.action == CommandLine::Action::Sheet)
        return writeSheet(line, out, err);
    if (line.action == CommandLine::Action::Compare)
        return compareThemes(line, out, err);
    return renderWindows(line, out, err);
}

// Wants no window system, so that a build server can do without one.
int exchange(const CommandLine &line, int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QTextStream out(stdout), err(stderr);
    Files files;
    return line.action == CommandLine::Action::Export ? runExport(files, line, err)
                                                      : runImport(files, line, out, err);
}

} // namespace

int main(int argc, char **argv)
{
    keepLargeTextsApart();
    setProgramNames();
    const CommandLine line = readCommandLine(argc, argv);
    if (line.isVerbose)
        QLoggingCategory::setFilterRules(QStringLiteral("quillmere.*=true"));
    else
        silenceOthers();
    WebBrowser::prepare();
    if (line.action == CommandLine::Action::Print) {
        QTextStream(stdout) << line.text;
        return 0;
    }
    if (line.action == CommandLine::Action::Fail) {
        QTextStream(stderr) << "quillmere: " << line.text << "\nquillmere --help says more.\n";
        return 2;
    }

    const bool isCheck = line.action == CommandLine::Action::Check;
    if (isCheck && !line.textFit) {
        // No window system is asked for, so that a build server can do without one.
        const QCoreApplication app(argc, argv);
        return check(line);
    }
    if (line.action == CommandLine::Action::Export || line.action == CommandLine::Action::Import)
        return exchange(line, argc, argv);

    if (const QString reason = reasonAgainstBrowser(); !reason.isEmpty()) {
        QTextStream(stderr) << "quillmere: " << reason << Qt::endl;
        return 2;
    }
    // Pictures and texts are the same with a display, without one, and with one that does not answer.
    if (line.action != CommandLine::Action::Edit && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::unique_ptr<QApplication> app = makeApplication(argc, argv);
    if (isCheck)
        return measureAndCheck(line);
    if (line.action != CommandLine::Action::Edit)
        return draw(line);

    QApplication::setWindowIcon(programIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral("quillmere"));
    Files files;
    frmSkin window(files);
    window.showFirst();
    QTimer::singleShot(0, &window, [&] {
        if (!line.theme.isEmpty())
            window.openTheme(line.theme);
        window.showStart();
    });
    return QApplication::exec();
}
