#include "browser/forms/WebBrowser.h"

#include "browser/CellScripts.h"
#include "browser/PagePatch.h"
#include "browser/forms/CellPage.h"
#include "browser/forms/OutgoingPage.h"
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
constexpr qsizetype kMostPatched = 1 << 21; // units; the changes of a longer page are not looked for
constexpr int kPatience = 10000;            // ms for the renderer to take a page

// A page beyond these holds the renderer for minutes and takes memory by the gigabyte. A window of 10,000
// widgets has about a third of either.
constexpr qsizetype kMostCharacters = 16 * 1024 * 1024;
constexpr qsizetype kMostTags = 300000;

} // namespace

WebBrowser::WebBrowser(QWidget *parent)
    : QuietView(parent), m_profile(std::make_unique<QWebEngineProfile>()),
      m_pictures(std::make_unique<PictureHandler>()), m_outgoing(std::make_unique<OutgoingPage>(*m_pictures))
{
    m_profile->installUrlSchemeHandler(kPictureScheme, m_pictures.get());
    m_profile->setUrlRequestInterceptor(new Interceptor(m_profile.get()));
    m_profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    connect(m_profile.get(), &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadRequest *download) { download->cancel(); });

    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    connect(&m_patience, &QTimer::timeout, this, &WebBrowser::onPatienceEnded);
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
    m_outgoing->stop();
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
    if (m_outgoing->isUnderWay()) {
        m_outgoing->stop(); // nobody will see that page any more
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
    if (m_touched && (m_begins || m_binds)) {
        m_shown.forget();
        m_ready = false; // it is written when the new document is there
        m_cell->loadBlank();
        return;
    }
    const QString next = *std::exchange(m_waiting, {});
    if (!(m_current == next))
        m_deaths = 0;
    m_current = PackedText(next);
    m_binds = bindsDocument(next);
    m_marked.clear();
    m_begins = false;
    m_busy = m_touched = true;
    m_outgoing->begin(next, m_inlines || m_current.size() > kMostPatched);
    for (const QString &script : m_fonts.scripts())
        page()->runJavaScript(script, QWebEngineScript::ApplicationWorld);
    m_patience.start();
    if (m_current.size() > (m_shown.isKnown() ? kMostPatched : kMostAtOnce))
        bringPieces();
    else
        m_outgoing->sendWhole([this](const QString &text) { bring(text); });
}

// Changes the document for this text of the page, or writes it.
void WebBrowser::bring(const QString &text)
{
    const PageTree *shown = m_patching ? m_shown.tree() : nullptr;
    std::optional<PageTree> next = m_patching ? PageTree::read(text, shown) : std::nullopt;
    const auto changes = shown && next ? changesBetween(*shown, *next) : std::nullopt;
    if (!changes && text.size() > kMostAtOnce) {
        bringPieces();
        return;
    }
    const int number = m_writes + 1;
    m_shown.set(std::move(next));
    if (changes)
        put(patchingScript(*changes, m_writes, number), Way::Patch);
    else
        put(writingScript(quoted(text), number, m_view), Way::Anew);
}

// A long page goes over bit by bit, and is written when all of it is there.
void WebBrowser::bringPieces()
{
    m_shown.forget();
    page()->runJavaScript(QStringLiteral("window.__pieces=[]"), QWebEngineScript::ApplicationWorld);
    const bool isKept = m_patching && m_current.size() <= kMostPatched;
    const auto sent = std::make_shared<QString>();
    const auto send = [this, isKept, sent](const QString &piece) {
        page()->runJavaScript(QString(u"window.__pieces.push(" + quoted(piece) + u")"),
                              QWebEngineScript::ApplicationWorld);
        if (isKept)
            *sent += piece;
    };
    m_outgoing->sendPieces(send, [this, isKept, sent] {
        put(writingScript(QStringLiteral("window.__pieces.join('')"), m_writes + 1, m_view), Way::Anew);
        if (isKept)
            m_shown.set(PageTree::read(*sent));
    });
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
    const bool begins = m_shown.beginSteps(m_outgoing->textLike(marked), values);
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
    return m_marked.isEmpty() ? m_current.text() : PageForm::filled(m_marked, m_values);
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
    m_outgoing->stop();
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
