// Draws every picture of the Aurora theme into a folder.
#include "sheets.h"

#include <QGuiApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    // Letters need an application object, but no screen.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("usage: draw_aurora OUT_FOLDER\n", stderr);
        return 2;
    }
    aurora::Folder out(arguments.at(1));
    aurora::drawBackgrounds(out);
    aurora::drawScenes(out);
    aurora::drawGlass(out);
    aurora::drawIcons(out);
    aurora::drawMarks(out);
    if (!out.failure().isEmpty()) {
        std::fprintf(stderr, "draw_aurora: cannot write %s\n", qPrintable(out.failure()));
        return 1;
    }
    std::printf("%d pictures\n", out.written());
    return 0;
}
