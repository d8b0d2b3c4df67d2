#include "app/SystemDetails.h"

#include "browser/forms/PlainDrawing.h"

#include <QApplication>
#include <QLocale>
#include <QScreen>
#include <QStyle>
#include <QSysInfo>
#include <qtwebenginecoreglobal.h>

namespace quillmere {

QString systemDetails()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QString lines[] = {
        u"Quillmere " + QCoreApplication::applicationVersion(),
        u"Qt " + QLatin1String(qVersion()) + u", " + QSysInfo::buildAbi(),
        QStringLiteral("Browser engine: Qt WebEngine %1, Chromium %2")
            .arg(QLatin1String(qWebEngineVersion()), QLatin1String(qWebEngineChromiumVersion())),
        u"System: " + QSysInfo::prettyProductName() + u", kernel " + QSysInfo::kernelVersion(),
        u"Desktop: " + qEnvironmentVariable("XDG_CURRENT_DESKTOP", QStringLiteral("not named")) + u", " +
            QGuiApplication::platformName() + u", style " + QApplication::style()->name(),
        screen ? QStringLiteral("Screen: %1 x %2 at %3 %")
                     .arg(screen->size().width())
                     .arg(screen->size().height())
                     .arg(qRound(screen->devicePixelRatio() * 100))
               : QStringLiteral("Screen: none"),
        u"Drawn by: " + drawnBy(),
        u"Language: " + QLocale::system().name(),
    };
    QString text;
    for (const QString &line : lines)
        text += QString(line + u'\n');
    return text;
}

} // namespace quillmere
