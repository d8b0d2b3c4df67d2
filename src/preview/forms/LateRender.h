#pragma once

#include "files/PackedText.h"
#include "files/Progress.h"
#include "preview/PreviewPage.h"
#include "preview/WidgetDrawing.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace quillmere {

// Makes another page than the preview's for the browser. Blocks whose names are ticked in the rows are left
// out. May be called on any thread.
using ViewPage = std::function<QString(const QString &markup, const ViewOptions &options,
                                       const QList<ListRows::Row> &lvBlock)>;

// What is kept of the window drawn last.
struct KeptDrawing
{
    std::mutex mutex;
    WidgetDrawing drawing; // guarded by it
};

// All that the page of a window is made from. The lookup must not change under way, and may be asked on any
// thread.
struct RenderInput
{
    QString markup;
    ImageLookup GetImg;
    QList<ListRows::Row> fonts;
    QString fontSize;
    ViewOptions options;
    ViewPage makePage = {}; // none for the preview
    std::shared_ptr<KeptDrawing> kept = {};
};

struct Rendered
{
    QString markup;
    QList<ListRows::Row> blocks;
    PackedText html; // of the widgets
    QString page;    // for the browser
    double milliseconds = 0;
};

Rendered renderPage(const RenderInput &input, PackedText::Packing packing = PackedText::Packing::Beside);

// Makes the page of a large window beside the window's own thread. Everything else here runs on that one
// thread; this does not, since no part of the rendering may take longer than a keystroke may wait, on any
// machine, and the routines that rewrite the whole page each take their time in one go. What goes in is a
// copy, what comes out arrives by the event loop. Of what is asked for meanwhile only the newest is made.
class LateRender : public QObject
{
    Q_OBJECT

public:
    explicit LateRender(QObject *parent = nullptr);
    ~LateRender() override; // waits for what is under way, which ends at its next picture

    // What is under way is finished and handed over before, or keys that come faster than pages would see
    // none.
    void start(const RenderInput &input);
    void giveUp();
    // Whether what has been handed over last is of an older input.
    bool isBusy() const { return m_givenUp != nullptr; }

signals:
    void done(const quillmere::Rendered &rendered);

private:
    void makeNext();
    void hand(const Rendered &rendered);

    QThreadPool m_worker;
    std::shared_ptr<std::atomic_bool> m_givenUp; // of the one under way; null where there is none
    std::optional<RenderInput> m_next;
};

} // namespace quillmere
