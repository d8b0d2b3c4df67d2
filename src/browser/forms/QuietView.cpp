#include "browser/forms/QuietView.h"

#include "browser/PictureUrls.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QTimer>
#include <QWebEngineUrlScheme>

namespace quillmere {

namespace {

// No name is looked up, whatever a page names: the browser itself knows of none.
const QByteArray kNoNames = "--host-resolver-rules=\"MAP * ~NOTFOUND\"";
// What has changed is drawn at once, not at the next of 60 ticks a second. Drawing stops where nothing
// changes, and a page that moves of itself is held back by our own window, which shows one frame before it
// takes the next.
const QByteArray kNoTicks = "--disable-frame-rate-limit";
// Pictures are in the first frame that shows their page, however large they are.
const QByteArray kPicturesAtOnce = "--disable-checker-imaging";
constexpr char kFlags[] = "QTWEBENGINE_CHROMIUM_FLAGS";

} // namespace

void QuietView::prepare()
{
    qputenv(kFlags,
            QByteArray(qgetenv(kFlags) + ' ' + kNoNames + ' ' + kNoTicks + ' ' + kPicturesAtOnce).trimmed());
    QWebEngineUrlScheme scheme(kPictureScheme);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

QuietView::QuietView(QWidget *parent) : QWebEngineView(parent)
{
    setAcceptDrops(false);
}

void QuietView::dragEnterEvent(QDragEnterEvent *event)
{
    event->ignore();
}

// The browser has dialogs of its own, such as that of a colour box in a form, and asks nobody before it opens
// them.
void QuietView::childEvent(QChildEvent *event)
{
    QWebEngineView::childEvent(event);
    auto *dialog = event->polished() ? qobject_cast<QDialog *>(event->child()) : nullptr;
    if (!dialog)
        return;
    dialog->setAttribute(Qt::WA_DontShowOnScreen);
    QTimer::singleShot(0, dialog, &QDialog::reject);
}

void QuietView::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept(); // its entries (back, reload, view source) make no sense here
}

} // namespace quillmere
