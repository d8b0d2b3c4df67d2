#include "browser/forms/PlainDrawing.h"

#include "browser/GraphicsCard.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

Q_LOGGING_CATEGORY(lcDrawing, "quillmere.drawing", QtInfoMsg)

constexpr const char *kPlatformGl = "QT_XCB_GL_INTEGRATION";

bool hasChosen()
{
    constexpr std::array names = {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND", "QT_OPENGL",
                                  kPlatformGl};
    return std::ranges::any_of(names, [](const char *name) { return qEnvironmentVariableIsSet(name); });
}

// The context is there already, for the browser.
QByteArray renderer()
{
    QOpenGLContext *context = QOpenGLContext::globalShareContext();
    QOffscreenSurface surface;
    surface.create();
    if (!context || !context->makeCurrent(&surface))
        return {};
    const auto *name = context->functions()->glGetString(GL_RENDERER);
    const QByteArray copy(reinterpret_cast<const char *>(name));
    context->doneCurrent();
    return copy;
}

void drawPlainly(const char *why)
{
    qCDebug(lcDrawing) << "no OpenGL:" << why;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace

std::unique_ptr<QApplication> makeApplication(int &argc, char **argv)
{
    if (hasChosen())
        return std::make_unique<QApplication>(argc, argv);
    if (hasGraphicsCard()) {
        auto app = std::make_unique<QApplication>(argc, argv);
        if (const QByteArray name = renderer(); drawsWithProcessor(name))
            drawPlainly(name.constData());
        return app;
    }
    // Loading what would draw takes a while, too. Programs that this one starts shall not inherit the choice.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, false);
    qputenv(kPlatformGl, "none");
    auto app = std::make_unique<QApplication>(argc, argv);
    qunsetenv(kPlatformGl);
    drawPlainly("no graphics card");
    return app;
}

QString drawnBy()
{
    return QQuickWindow::graphicsApi() == QSGRendererInterface::Software ? QStringLiteral("processor")
                                                                         : QStringLiteral("OpenGL");
}

} // namespace quillmere
