#pragma once

#include "browser/PageFonts.h"
#include "browser/PagePlace.h"
#include "browser/PageView.h"
#include "browser/ShownPage.h"
#include "browser/forms/QuietView.h"
#include "files/PackedText.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QWebEngineProfile;

namespace quillmere {

class CellPage;
class OutgoingPage;
class PictureHandler;

// The preview's browser: shows one page at a time, written into "about:blank", and is a cell. Scripts in the
// page do not run, nothing but pictures below the theme folder is loaded, it goes nowhere and keeps nothing.
class WebBrowser : public QuietView
{
    Q_OBJECT

public:
    explicit WebBrowser(QWidget *parent = nullptr);
    ~WebBrowser() override;

    void setThemeFolder(const QString &folder);

    // The bytes of a PNG that every page from now on can have under the URL that this gives, and that nothing
    // else is under.
    QString setBackdrop(const QByteArray &png);
    // Pages from now on can be set in these.
    void setFonts(const QList<PageFont> &fonts) { m_fonts.set(fonts); }
    // Shows the page when the browser is free: the document changes where the page differs from the one
    // before as far as that gives the same document, and is written anew otherwise. While it is busy only the
    // newest page waits; it gets a new renderer when the old one is still busy after ten seconds. The scroll
    // position stays and the focus is not touched.
    void write(const QString &page);
    // For a page that goes from step to step with only numbers in it changing: a step costs what changes. The
    // page in the browser is this one, with values for the marks of PageForm; it goes on until the next page
    // is written. False where that is not certain, or the browser is busy: then pages are to be written.
    bool beginSteps(const QString &marked, const QStringList &values);
    // Shows the page with these values, and written() follows. Its document is that of the page, but for the
    // text of its sheet: what that would make differ is seen all the same. False, and nothing is done, where
    // the page has to be written.
    bool step(const QStringList &values);
    // The page written next is that of another window and begins in a document that nothing has touched: what
    // markup can set there outlives the page. A page that may have set such things is never written over.
    void beginDocument();
    // Every page is written anew: what the changes are measured and held against.
    void setPatching(bool patching) { m_patching = patching; }
    // In a page that names many pictures, small ones stand themselves, in place of a request each, of which
    // thousands take the renderer seconds and hundreds of megabytes. Pages so long that they are always
    // written anew are brought like that; with this, all pages are.
    void setInlining(bool inlines) { m_inlines = inlines; }
    // How long the renderer may take for a page, ms.
    void setPatience(int milliseconds) { m_patience.setInterval(milliseconds); }
    // An expression that is run behind every page from now on, as soon as the document has it. "" for none.
    void setBehind(const QString &script) { m_behind = script; }
    // How this page and those after it are shown.
    void setView(const PageView &view);
    // Asks how far the page reaches as it is laid out, pixels. No answer where it has been written over by
    // then.
    void findExtent(const std::function<void(QSize extent)> &use);
    // Asks where the divs of the page are. The answer is empty where the page has been written over by then.
    void findPlaces(const std::function<void(const QList<PagePlace> &places)> &use);
    bool isBusy() const { return m_busy || m_waiting.has_value(); }

signals:
    // The newest page is in the browser; its pictures may still be loading.
    void written();
    // The page's pictures have been loaded and it has been laid out since.
    void drawn();
    // The newest page is not shown, or not yet: it keeps killing the renderer, is too large, or takes long.
    void failed(const QString &reason);

private:
    void enterCell();
    void lookForBlank();
    void changeCell();
    void writeNext();
    void bring(const QString &text);
    void bringPieces();
    enum class Way { Anew, Patch };
    void put(const QString &script, Way way);
    QString currentPage() const;
    void forgetWrite();
    void showView();
    void pollDrawn();
    void onPatienceEnded();
    void onTerminated();

    std::unique_ptr<QWebEngineProfile> m_profile;
    std::unique_ptr<PictureHandler> m_pictures;
    std::unique_ptr<OutgoingPage> m_outgoing;
    PageFonts m_fonts;
    CellPage *m_cell = nullptr;
    bool m_ready = false;      // the document can be written into
    bool m_touched = false;    // it has been
    bool m_begins = false;     // the waiting page begins in a document of its own
    bool m_nextBegins = false; // the page that write() gets next does
    bool m_busy = false;
    bool m_overdue = false; // the page under way has used up the patience
    QTimer m_patience;
    QString m_behind;
    PageView m_view;
    bool m_viewing = false; // a change of it is under way
    int m_deaths = 0;
    int m_writes = 0;
    std::optional<QString> m_waiting;
    PackedText m_current;
    bool m_binds = false; // it may set what outlives it
    bool m_patching = true;
    bool m_inlines = false;
    ShownPage m_shown; // what the document is, once it has the page under way
    QString m_marked;  // while it goes in steps
    QStringList m_values;
};

} // namespace quillmere
