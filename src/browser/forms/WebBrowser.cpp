#include "browser/forms/WebBrowser.h"

#include "browser/CellScripts.h"
#include "browser/NamedPictures.h"
#include "browser/PagePatch.h"
#include "browser/forms/CellPage.h"
#include "browser/forms/PictureHandler.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QPointer>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineScript>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

Q_LOGGING_CATEGORY(lcBrowser, "quillmere.browser", QtInfoMsg)

constexpr int kMostDeaths = 3;
constexpr int kPollInterval = 15;           // ms
constexpr qsizetype kMostAtOnce = 1 << 19;  // units; a longer page is sent in pieces
constexpr qsizetype kPiece = 1 << 16;       // units; a millisecond's work or two
constexpr qsizetype kMostPatched = 1 << 21; // units; the changes of a longer page are not looked for
constexpr qsizetype kFewPictures = 20;      // may be asked for, or be missing, at the price of a request each
constexpr qsizetype kMostInlined = 1 << 22; // units of all pictures that travel with a page
constexpr int kPatience = 10000;            // ms for the renderer to take a page

// A page beyond these holds the renderer for minutes and takes memory by the gigabyte. A window of 10,000
// widgets has about a third of either.
constexpr qsizetype kMostCharacters = 16 * 1024 * 1024;
constexpr qsizetype kMostTags = 300000;

} // namespace

WebBrowser::WebBrowser(QWidget *parent)
    : QuietView(parent), m_profile(std::make_unique<QWebEngineProfile>()),
      m_pictures(std::make_unique<PictureHandler>())
{
    m_profile->installUrlSchemeHandler(kPictureScheme, m_pictures.get());
    m_profile->setUrlRequestInterceptor(new Interceptor(m_profile.get()));
    m_profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    connect(m_profile.get(), &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadRequest *download) { download->cancel(); });

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
            m_waiting = currentPage();
        m_ready = true;
        m_touched = false;
        m_fonts.forget();
        m_shown.forget();
        if (!m_busy)
            writeNext();
    };
    page()->runJavaScript(untouchedScript(), QWebEngineScript::ApplicationWorld, look);
}

WebBrowser::~WebBrowser()
{
    // A dying page answers every script that is under way; nothing may come of it.
    ++m_writes;
    m_ready = false;
    m_waiting.reset();
    stopPreparing();
    delete std::exchange(m_cell, nullptr); // before its profile goes
}

void WebBrowser::setThemeFolder(const QString &folder)
{
    m_pictures->setThemeFolder(folder);
    m_fonts.setThemeFolder(folder);
}

QString WebBrowser::setBackdrop(const QByteArray &png)
{
    return m_pictures->setBackdrop(png);
}

void WebBrowser::setView(const PageView &view)
{
    if (m_view == view)
        return;
    m_view = view;
    showView();
}

// One at a time, so that a picture that is dragged is never behind by more than one.
void WebBrowser::showView()
{
    if (!m_ready || m_viewing)
        return;
    m_viewing = true;
    page()->runJavaScript(viewScript(m_view), QWebEngineScript::ApplicationWorld,
                          [self = QPointer(this), sent = m_view](const QVariant &) {
                              if (!self)
                                  return;
                              self->m_viewing = false;
                              if (self->m_view != sent)
                                  self->showView();
                          });
}

void WebBrowser::beginDocument()
{
    m_nextBegins = true;
}

void WebBrowser::write(const QString &page)
{
    m_waiting = page;
    m_begins = m_begins || std::exchange(m_nextBegins, false);
    if (m_preparing) {
        stopPreparing(); // nobody will see that page any more
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
    const QStringView waiting = *m_waiting;
    if (waiting.size() > kMostCharacters ||
        (waiting.size() > kMostTags && std::ranges::count(waiting, QChar(u'<')) > kMostTags)) {
        m_waiting.reset();
        emit failed(tr("The window is too large for the preview, which stays as it was."));
        return;
    }
    if (m_touched && (m_begins || bindsDocument(m_current))) {
        m_shown.forget();
        m_ready = false; // it is written when the new document is there
        m_cell->loadBlank();
        return;
    }
    if (*m_waiting != m_current)
        m_deaths = 0;
    m_current = std::move(*m_waiting);
    m_waiting.reset();
    m_marked.clear();
    m_otherUrls.clear();
    m_inlineRoom = m_inlines || m_current.size() > kMostPatched ? kMostInlined : 0;
    m_begins = false;
    m_busy = m_touched = true;
    m_pictures->lookAnew();
    for (const QString &script : m_fonts.scripts())
        page()->runJavaScript(script, QWebEngineScript::ApplicationWorld);
    m_patience.start();
    if (m_current.size() > (m_shown.isKnown() ? kMostPatched : kMostAtOnce)) {
        startPieces();
        return;
    }
    lookUpPictures(withPictureUrls(m_current, m_pictures->themeFolder()),
                   [this](const QString &text) { bring(text); });
}

// Hands the text on at once, or, where it names many pictures, when it is known what they are.
void WebBrowser::lookUpPictures(const QString &text, const std::function<void(const QString &)> &send)
{
    const NamedPictures named(text, m_inlineRoom > 0);
    const QList<NamedPictures::Picture> pictures = named.pictures();
    if (pictures.size() <= kFewPictures) {
        send(text);
        return;
    }
    m_preparing = true;
    const auto tell = [this, named, send, length = text.size(),
                       number = ++m_lookups](const QHash<QString, QString> &others) {
        if (number != m_lookups)
            return;
        m_preparing = m_pieces.has_value();
        m_otherUrls.insert(others);
        const QString whole = named.with(others);
        m_inlineRoom -= std::max<qsizetype>(0, whole.size() - length);
        send(whole);
    };
    m_pictures->lookUp(pictures, m_inlineRoom, tell);
}

// Changes the document for this text of the page, or writes it.
void WebBrowser::bring(const QString &text)
{
    const PageTree *shown = m_patching ? m_shown.tree() : nullptr;
    std::optional<PageTree> next = m_patching ? PageTree::read(text, shown) : std::nullopt;
    const auto changes = shown && next ? changesBetween(*shown, *next) : std::nullopt;
    if (!changes && text.size() > kMostAtOnce) {
        startPieces();
        return;
    }
    const int number = m_writes + 1;
    m_shown.set(std::move(next));
    if (changes)
        put(patchingScript(*changes, m_writes, number), Way::Patch);
    else
        put(writingScript(quoted(text), number, m_view), Way::Anew);
}

void WebBrowser::startPieces()
{
    m_shown.forget();
    m_sent.clear();
    m_preparing = true;
    page()->runJavaScript(QStringLiteral("window.__pieces=[]"), QWebEngineScript::ApplicationWorld);
    m_pieces.emplace(m_current, m_pictures->themeFolder());
    m_nextPiece.start();
}

// A long page goes over bit by bit between the other events, and is written when all of it is there.
void WebBrowser::sendPiece()
{
    if (m_pieces->atEnd()) {
        putPieces();
        return;
    }
    m_nextPiece.stop();
    lookUpPictures(m_pieces->next(kPiece), [this](const QString &piece) {
        page()->runJavaScript(QString(u"window.__pieces.push(" + quoted(piece) + u")"),
                              QWebEngineScript::ApplicationWorld);
        if (m_current.size() <= kMostPatched)
            m_sent += piece;
        m_nextPiece.start();
    });
}

void WebBrowser::putPieces()
{
    const QString sent = std::exchange(m_sent, {});
    stopPreparing();
    put(writingScript(QStringLiteral("window.__pieces.join('')"), m_writes + 1, m_view), Way::Anew);
    if (m_patching && m_current.size() <= kMostPatched)
        m_shown.set(PageTree::read(sent));
}

void WebBrowser::stopPreparing()
{
    m_preparing = false;
    ++m_lookups;
    m_nextPiece.stop();
    m_pieces.reset();
    m_sent.clear();
}

void WebBrowser::put(const QString &script, Way way)
{
    const int number = ++m_writes;
    // Not on its own: where a patch fails, the document is still that of the page before.
    const QString whole =
        m_behind.isEmpty()
            ? script
            : QString(u"(function(){var done=" + script + u";if(done)" + m_behind + u";return done;})()");
    page()->runJavaScript(whole, QWebEngineScript::ApplicationWorld,
                          [this, number, way](const QVariant &done) {
                              if (number != m_writes)
                                  return;
                              m_busy = m_overdue = false;
                              m_patience.stop();
                              if (way == Way::Patch && !done.toBool()) {
                                  m_shown.forget(); // something has been at the document
                                  if (!m_waiting)
                                      m_waiting = currentPage();
                              }
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

bool WebBrowser::beginSteps(const QString &marked, const QStringList &values)
{
    if (!m_ready || isBusy() || !m_shown.isKnown())
        return false;
    const QString text = withPictureUrls(marked, m_pictures->themeFolder());
    const bool begins = m_shown.beginSteps(NamedPictures(text).with(m_otherUrls), values);
    if (begins) {
        m_marked = marked;
        m_values = values;
    }
    return begins;
}

bool WebBrowser::step(const QStringList &values)
{
    const auto step = m_ready && !isBusy() ? m_shown.step(values) : std::nullopt;
    if (!step)
        return false;
    m_values = values;
    m_busy = true;
    m_patience.start();
    put(patchingScript(step->changes, m_writes, m_writes + 1, step->rules), Way::Patch);
    return true;
}

QString WebBrowser::currentPage() const
{
    return m_marked.isEmpty() ? m_current : PageForm::filled(m_marked, m_values);
}

void WebBrowser::findPlaces(const std::function<void(const QList<PagePlace> &)> &use)
{
    page()->runJavaScript(placesScript(), QWebEngineScript::ApplicationWorld,
                          [number = m_writes, use, self = QPointer(this)](const QVariant &answer) {
                              if (self && self->m_cell)
                                  use(number == self->m_writes ? placesOf(answer.toString())
                                                               : QList<PagePlace>());
                          });
}

void WebBrowser::findExtent(const std::function<void(QSize)> &use)
{
    page()->runJavaScript(extentScript(), QWebEngineScript::ApplicationWorld,
                          [use, number = m_writes, self = QPointer(this)](const QVariant &answer) {
                              const QJsonArray size = QJsonDocument::fromJson(answer.toByteArray()).array();
                              if (self && number == self->m_writes)
                                  use(QSize(size.at(0).toInt(), size.at(1).toInt()));
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
    stopPreparing();
    m_shown.forget();
    m_ready = m_busy = m_overdue = m_viewing = false;
    m_patience.stop();
}

// A page that is only slow is waited for as long as nothing newer is there to be shown instead.
void WebBrowser::onPatienceEnded()
{
    qCDebug(lcBrowser) << "no answer from the renderer;" << (m_waiting ? "it is replaced" : "waiting");
    if (m_waiting) {
        changeCell();
        return;
    }
    m_overdue = true;
    emit failed(tr("The preview of this window is slow and behind; you can go on typing."));
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
    qCDebug(lcBrowser) << "the renderer ended," << m_deaths << "times before on this page";
    if (++m_deaths > kMostDeaths) {
        m_waiting.reset();
        emit failed(tr(
            "The preview stopped: this page crashes the browser's renderer. Change the text to try again."));
    } else if (!m_waiting) {
        m_waiting = currentPage();
    }
    // Reloading from inside the notice of death would be lost with the dying process.
    QTimer::singleShot(0, m_cell, &CellPage::loadBlank);
}

} // namespace quillmere
