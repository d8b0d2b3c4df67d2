#include "browser/forms/WebBrowser.h"

#include "browser/CellScripts.h"
#include "browser/forms/CellPage.h"
#include "browser/forms/PictureHandler.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QMetaMethod>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineUrlScheme>

#include <utility>

namespace quillmere {

namespace {

constexpr int kMostDeaths = 3;
constexpr int kPollInterval = 15;          // ms
constexpr qsizetype kMostAtOnce = 1 << 19; // units; a longer page is sent in pieces
constexpr qsizetype kPiece = 1 << 16;      // units; a millisecond's work or two
constexpr int kPatience = 10000;           // ms for the renderer to take a page

// A page beyond these holds the renderer for minutes and takes memory by the gigabyte. A window of 10,000
// widgets has about a third of either.
constexpr qsizetype kMostCharacters = 16 * 1024 * 1024;
constexpr qsizetype kMostTags = 300000;

// No name is looked up, whatever a page names: the browser itself knows of none.
const QByteArray kNoNames = "--host-resolver-rules=\"MAP * ~NOTFOUND\"";
constexpr char kFlags[] = "QTWEBENGINE_CHROMIUM_FLAGS";

} // namespace

void WebBrowser::prepare()
{
    qputenv(kFlags, QByteArray(qgetenv(kFlags) + ' ' + kNoNames).trimmed());
    QWebEngineUrlScheme scheme(kPictureScheme);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

WebBrowser::WebBrowser(QWidget *parent)
    : QWebEngineView(parent), m_profile(std::make_unique<QWebEngineProfile>()),
      m_pictures(std::make_unique<PictureHandler>())
{
    m_profile->installUrlSchemeHandler(kPictureScheme, m_pictures.get());
    m_profile->setUrlRequestInterceptor(new Interceptor(m_profile.get()));
    m_profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    connect(m_profile.get(), &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadRequest *download) { download->cancel(); });

    setAcceptDrops(false);
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    connect(&m_patience, &QTimer::timeout, this, &WebBrowser::onPatienceEnded);
    m_nextPiece.setInterval(0);
    connect(&m_nextPiece, &QTimer::timeout, this, &WebBrowser::sendPiece);
    enterCell();
}

void WebBrowser::enterCell()
{
    auto *cell = new CellPage(m_profile.get(), this);
    connect(cell, &QWebEnginePage::loadFinished, this, &WebBrowser::lookForBlank);
    connect(cell, &QWebEnginePage::renderProcessTerminated, this, &WebBrowser::onTerminated);
    setPage(cell);
    delete std::exchange(m_cell, cell); // and its renderer with it
    cell->loadBlank();
}

// Closing a written document counts as a load, too, and its notice may come late. A blank one that we have
// not asked for is where markup led, by a link to "about:blank"; our page comes back.
void WebBrowser::lookForBlank()
{
    const auto look = [this, cell = m_cell, number = m_writes](const QVariant &untouched) {
        if (cell != m_cell || number != m_writes || !untouched.toBool())
            return;
        if (m_ready && m_touched && !m_busy && !m_waiting)
            m_waiting = m_current;
        m_ready = true;
        m_touched = false;
        if (!m_busy)
            writeNext();
    };
    page()->runJavaScript(untouchedScript(), QWebEngineScript::ApplicationWorld, look);
}

WebBrowser::~WebBrowser()
{
    // A dying page answers every script that is under way; nothing may come of it.
    ++m_writes;
    m_waiting.reset();
    stopPieces();
    delete m_cell; // before its profile goes
}

void WebBrowser::setThemeFolder(const QString &folder)
{
    m_pictures->setThemeFolder(folder);
}

void WebBrowser::setScrollable(bool scrollable)
{
    if (m_scrollable == scrollable)
        return;
    m_scrollable = scrollable;
    if (m_ready && !m_busy)
        page()->runJavaScript(overflowScript(scrollable), QWebEngineScript::ApplicationWorld);
}

void WebBrowser::beginDocument()
{
    m_nextBegins = true;
}

void WebBrowser::write(const QString &page)
{
    m_waiting = page;
    m_begins = m_begins || std::exchange(m_nextBegins, false);
    if (m_pieces) {
        stopPieces(); // nobody will see that page any more
        m_busy = false;
    }
    if (m_overdue)
        changeCell();
    else if (m_ready && !m_busy)
        writeNext();
}

void WebBrowser::writeNext()
{
    if (!m_waiting)
        return;
    if (m_waiting->size() > kMostCharacters || m_waiting->count(u'<') > kMostTags) {
        m_waiting.reset();
        emit failed(tr("The window is too large for the preview, which stays as it was."));
        return;
    }
    if (m_touched && (m_begins || bindsDocument(m_current))) {
        m_ready = false; // it is written when the new document is there
        m_cell->loadBlank();
        return;
    }
    if (*m_waiting != m_current)
        m_deaths = 0;
    m_current = std::move(*m_waiting);
    m_waiting.reset();
    m_begins = false;
    m_busy = m_touched = true;
    m_pictures->lookAnew();
    m_patience.start();
    if (m_current.size() <= kMostAtOnce) {
        put(quoted(withPictureUrls(m_current, m_pictures->themeFolder())));
        return;
    }
    page()->runJavaScript(QStringLiteral("window.__pieces=[]"), QWebEngineScript::ApplicationWorld);
    m_pieces.emplace(m_current, m_pictures->themeFolder());
    m_nextPiece.start();
}

// A long page goes over bit by bit between the other events, and is written when all of it is there.
void WebBrowser::sendPiece()
{
    if (m_pieces->atEnd()) {
        stopPieces();
        put(QStringLiteral("window.__pieces.join('')"));
        return;
    }
    page()->runJavaScript(QString(u"window.__pieces.push(" + quoted(m_pieces->next(kPiece)) + u")"),
                          QWebEngineScript::ApplicationWorld);
}

void WebBrowser::stopPieces()
{
    m_nextPiece.stop();
    m_pieces.reset();
}

void WebBrowser::put(const QString &pageExpression)
{
    const int number = ++m_writes;
    page()->runJavaScript(writingScript(pageExpression, m_scrollable), QWebEngineScript::ApplicationWorld,
                          [this, number](const QVariant &) {
                              if (number != m_writes)
                                  return;
                              m_busy = m_overdue = false;
                              m_patience.stop();
                              if (m_waiting) {
                                  writeNext();
                                  return;
                              }
                              emit written();
                              // Nobody waits for pictures while a person types.
                              if (isSignalConnected(QMetaMethod::fromSignal(&WebBrowser::drawn))) {
                                  page()->runJavaScript(watchingScript(), QWebEngineScript::ApplicationWorld);
                                  pollDrawn();
                              }
                          });
}

void WebBrowser::pollDrawn()
{
    const int number = m_writes;
    page()->runJavaScript(QStringLiteral("window.__drawn"), QWebEngineScript::ApplicationWorld,
                          [this, number](const QVariant &isDrawn) {
                              if (number != m_writes)
                                  return;
                              if (isDrawn.toBool())
                                  emit drawn();
                              else
                                  QTimer::singleShot(kPollInterval, this, [this, number] {
                                      if (number == m_writes)
                                          pollDrawn();
                                  });
                          });
}

void WebBrowser::forgetWrite()
{
    ++m_writes; // whatever was under way is not going to answer
    stopPieces();
    m_ready = m_busy = m_overdue = false;
    m_patience.stop();
}

// A page that is only slow is waited for as long as nothing newer is there to be shown instead.
void WebBrowser::onPatienceEnded()
{
    if (m_waiting) {
        changeCell();
        return;
    }
    m_overdue = true;
    emit failed(tr("The preview takes long for this window and is behind; typing goes on."));
}

void WebBrowser::changeCell()
{
    forgetWrite();
    // Later: this may be a slot of the page that goes.
    QTimer::singleShot(0, this, &WebBrowser::enterCell);
}

void WebBrowser::onTerminated()
{
    forgetWrite();
    if (++m_deaths > kMostDeaths) {
        m_waiting.reset();
        emit failed(
            tr("The preview stopped: this page ends the browser's renderer. Change the text to try again."));
    } else if (!m_waiting) {
        m_waiting = m_current;
    }
    // Reloading from inside the notice of death would be lost with the dying process.
    QTimer::singleShot(0, m_cell, &CellPage::loadBlank);
}

void WebBrowser::dragEnterEvent(QDragEnterEvent *event)
{
    event->ignore();
}

// The browser has dialogs of its own, such as that of a colour box in a form, and asks nobody before it opens
// them.
void WebBrowser::childEvent(QChildEvent *event)
{
    QWebEngineView::childEvent(event);
    auto *dialog = event->polished() ? qobject_cast<QDialog *>(event->child()) : nullptr;
    if (!dialog)
        return;
    dialog->setAttribute(Qt::WA_DontShowOnScreen);
    QTimer::singleShot(0, dialog, &QDialog::reject);
}

void WebBrowser::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept(); // its entries (back, reload, view source) make no sense here
}

} // namespace quillmere
