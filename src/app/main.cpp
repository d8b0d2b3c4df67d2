#include "app/frmSkin.h"
#include "browser/forms/WebBrowser.h"
#include "checks/forms/ReadPicture.h"
#include "commands/CheckCommand.h"
#include "commands/CommandLine.h"
#include "commands/forms/RenderCommand.h"
#include "files/Memory.h"

#include <QApplication>
#include <QFile>
#include <QTextStream>
#include <QTimer>

using namespace quillmere;

namespace {

void setProgramNames()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillmere"));
    QCoreApplication::setApplicationName(QStringLiteral("quillmere"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUILLMERE_VERSION));
}

CommandLine readCommandLine(int argc, char **argv)
{
    // Help, version and complaints must work where there is no display, so they are settled before a window
    // system is asked for anything.
    QCoreApplication words(argc, argv);
    return parseCommandLine(QCoreApplication::arguments());
}

// Wants no window system, so that a build server can do without one.
int check(const CommandLine &line, int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QFile out;
    QTextStream err(stderr);
    if (!out.open(stdout, QIODevice::WriteOnly))
        return 2;
    const int status = runCheck(line, readPicture, out, err);
    return out.flush() ? status : 2;
}

} // namespace

int main(int argc, char **argv)
{
    keepLargeTextsApart();
    setProgramNames();
    WebBrowser::prepare();
    const CommandLine line = readCommandLine(argc, argv);
    if (line.action == CommandLine::Action::Print) {
        QTextStream(stdout) << line.text;
        return 0;
    }
    if (line.action == CommandLine::Action::Fail) {
        QTextStream(stderr) << "quillmere: " << line.text << "\nquillmere --help says more.\n";
        return 2;
    }

    if (line.action == CommandLine::Action::Check)
        return check(line, argc, argv);

    // Pictures are drawn the same with a display, without one, and with one that does not answer.
    if (line.action == CommandLine::Action::Render && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (line.action == CommandLine::Action::Render) {
        QTextStream out(stdout), err(stderr);
        return renderWindows(line, out, err);
    }

    Files files;
    frmSkin window(files);
    window.showFirst();
    if (!line.theme.isEmpty())
        QTimer::singleShot(0, &window, [&] { window.openTheme(line.theme); });
    return QApplication::exec();
}
