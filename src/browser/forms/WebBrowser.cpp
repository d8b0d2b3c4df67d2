#include "browser/forms/WebBrowser.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QFile>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaMethod>
#include <QMimeDatabase>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>

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

constexpr qint64 kMostPixels = 64 * 1024 * 1024; // of one picture: 256 MB in the renderer

const QUrl kBlank(QStringLiteral("about:blank"));

class Interceptor : public QWebEngineUrlRequestInterceptor
{
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        const QUrl url = info.requestUrl();
        const bool picture = url.scheme() == QLatin1String(kPictureScheme) &&
                             info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeImage;
        info.block(!picture && url != kBlank);
    }
};

class CellPage : public QWebEnginePage
{
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType, bool isMainFrame) override
    {
        return isMainFrame && url == kBlank;
    }
    QWebEnginePage *createWindow(WebWindowType) override { return nullptr; }
    // Theme markup has nothing to say on our standard output.
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                  const QString &) override
    {
    }
    void javaScriptAlert(const QUrl &, const QString &) override {}
    bool javaScriptConfirm(const QUrl &, const QString &) override { return false; }
    bool javaScriptPrompt(const QUrl &, const QString &, const QString &, QString *) override
    {
        return false;
    }
    QStringList chooseFiles(FileSelectionMode, const QStringList &, const QStringList &) override
    {
        return {};
    }
};

// A file of some kilobytes can stand for gigabytes of pixels. Formats that say nothing of their size in a
// header, like drawings, are not asked.
bool fitsInMemory(QFile &picture)
{
    QImageReader reader(&picture);
    qint64 pixels = 0;
    if (!reader.format().startsWith("svg")) {
        const QSize size = reader.size();
        pixels = qint64(size.width()) * size.height();
    }
    return picture.seek(0) && pixels <= kMostPixels;
}

// The window of a page scrolls by the rule of its root element; without one there it goes by that of the
// body, which is where pages forbid it.
QString overflowScript(bool scrollable)
{
    return QStringLiteral("document.documentElement.style.overflow='%1';")
        .arg(scrollable ? QStringLiteral("auto") : QString());
}

// Text is handed over as JSON, so that nothing in it can end the string it travels in.
QString quoted(const QString &text)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact)) + u"[0]";
}

QString writingScript(const QString &pageExpression, bool scrollable)
{
    return u"(function(){var p=" + pageExpression +
           u",x=window.scrollX,y=window.scrollY;window.__pieces=[];document.open();document.write(p);"
           u"document.close();" +
           overflowScript(scrollable) + u"if(x||y)window.scrollTo(x,y);})()";
}

// Loads the pictures that the style rules name once more (from the cache) to learn when they are there, waits
// two frames, then sets a mark that can be asked for.
const QString kWatchScript = QStringLiteral(
    "(function(){window.__drawn=false;var "
    "css='';document.querySelectorAll('style').forEach(function(s){css+=s."
    "textContent});var loads=[],seen={};css.replace(/url\\('([^']+)'\\)/g,function(m,u){if(seen[u])return "
    "m;seen[u]="
    "1;loads.push(new Promise(function(done){var i=new Image();i.onload=i.onerror=done;i.src=u;}));return "
    "m;});"
    "Promise.all(loads).then(function(){requestAnimationFrame(function(){requestAnimationFrame(function(){"
    "window.__drawn=true;});});});})()");

} // namespace

class PictureHandler : public QWebEngineUrlSchemeHandler
{
public:
    QString themeFolder;

    void requestStarted(QWebEngineUrlRequestJob *job) override
    {
        const QString path = admittedPicture(job->requestUrl(), themeFolder);
        std::unique_ptr<QFile> file = path.isEmpty() ? nullptr : openPicture(path);
        if (!file || !fitsInMemory(*file)) {
            job->fail(QWebEngineUrlRequestJob::UrlNotFound);
            return;
        }
        const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
        file->setParent(job);
        job->reply(type.name().toLatin1(), file.release());
    }
};

void WebBrowser::registerScheme()
{
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
    QWebEngineSettings *settings = cell->settings();
    for (QWebEngineSettings::WebAttribute off :
         {QWebEngineSettings::JavascriptEnabled, QWebEngineSettings::JavascriptCanOpenWindows,
          QWebEngineSettings::JavascriptCanAccessClipboard, QWebEngineSettings::LocalStorageEnabled,
          QWebEngineSettings::LocalContentCanAccessFileUrls, QWebEngineSettings::PluginsEnabled,
          QWebEngineSettings::HyperlinkAuditingEnabled, QWebEngineSettings::ErrorPageEnabled,
          QWebEngineSettings::FullScreenSupportEnabled, QWebEngineSettings::FocusOnNavigationEnabled,
          QWebEngineSettings::AutoLoadIconsForPage, QWebEngineSettings::PdfViewerEnabled,
          QWebEngineSettings::NavigateOnDropEnabled, QWebEngineSettings::DnsPrefetchEnabled})
        settings->setAttribute(off, false);
    settings->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
    connect(cell, &QWebEnginePage::loadFinished, this, [this](bool) {
        if (m_ready)
            return; // closing a written document counts as a load too
        m_ready = true;
        writeNext();
    });
    connect(cell, &QWebEnginePage::featurePermissionRequested, cell,
            [cell](const QUrl &origin, QWebEnginePage::Feature feature) {
                cell->setFeaturePermission(origin, feature, QWebEnginePage::PermissionDeniedByUser);
            });
    connect(cell, &QWebEnginePage::renderProcessTerminated, this, &WebBrowser::onTerminated);
    setPage(cell);
    delete std::exchange(m_cell, cell); // and its renderer with it
    setUrl(kBlank);
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
    m_pictures->themeFolder = folder;
}

void WebBrowser::setScrollable(bool scrollable)
{
    if (m_scrollable == scrollable)
        return;
    m_scrollable = scrollable;
    if (m_ready && !m_busy)
        page()->runJavaScript(overflowScript(scrollable), QWebEngineScript::ApplicationWorld);
}

void WebBrowser::write(const QString &page)
{
    m_waiting = page;
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
    if (*m_waiting != m_current)
        m_deaths = 0;
    m_current = std::move(*m_waiting);
    m_waiting.reset();
    m_busy = true;
    m_patience.start();
    if (m_current.size() <= kMostAtOnce) {
        put(quoted(withPictureUrls(m_current)));
        return;
    }
    page()->runJavaScript(QStringLiteral("window.__pieces=[]"), QWebEngineScript::ApplicationWorld);
    m_pieces.emplace(m_current);
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
                                  page()->runJavaScript(kWatchScript, QWebEngineScript::ApplicationWorld);
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
    QTimer::singleShot(0, page(), [this] { setUrl(kBlank); });
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
