#pragma once

#include "browser/PageMark.h"
#include "browser/forms/WebBrowser.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>

namespace quillmere {

// Draws pages into pictures, out of sight, one after the other, in a cell of its own.
class PageCamera : public QObject
{
    Q_OBJECT

public:
    // Where the browser has room for the mark that tells when a page is drawn. A mark in the page has to be
    // moved once, for the picture without it; one below asks for pages that look the same in a higher view.
    enum class Mark { InPage, Below };

    // Pages are `size` pixels; pictures of the theme are found below the folder.
    PageCamera(const QString &themeFolder, QSize size, Mark mark = Mark::InPage, QObject *parent = nullptr);
    ~PageCamera() override;

    // These count for what is not drawn yet.
    void setThemeFolder(const QString &folder);
    void setSize(QSize size);
    // Pictures may be smaller than their pages, by halves, yet not narrower than this, in pixels of the
    // picture: smaller ones are drawn sooner. For a camera with its mark below.
    void setLeastWidth(int pixels);
    void setFonts(const QList<PageFont> &fonts);
    // Calls back once, in the order of asking, later, in this thread: with the picture, null where the page
    // could not be drawn (within 20 s).
    void take(const QString &page, const std::function<void(const QImage &)> &use);
    // Of the fonts, those that the browser can set texts in; to be asked for when a page has been taken.
    void askFamilies(const std::function<void(const QStringList &families)> &use);
    // Nobody wants those asked for any more; they are not called back.
    void forget();
    // How many pictures were taken when they had stopped changing, since the page let no mark be seen.
    int unmarked() const { return m_unmarked; }

protected:
    // Looks at what the browser has just painted.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    enum class Stage {
        Idle,
        Writing, // the page is on its way into the browser
        Marked,  // the first mark is to be seen, in a place that the picture lacks then
        Moved,   // the second is, in another
        Watching // until the picture stops changing: no mark was seen
    };
    struct Order
    {
        QString page;
        std::function<void(const QImage &)> use;
    };

    void start();
    void onWritten();
    void look();
    void fitBrowser();
    QRect pageRect() const; // in the browser
    QRect edge() const;     // that the marks are in, likewise
    void cover(QImage &picture) const;
    QImage grab(const QRect &part);
    void onDoubt();
    void askState(const std::function<void(PageMark::State)> &use);
    void watch();
    void finish(const QImage &picture);
    void rest();

    QSize m_size;     // of pages
    int m_shrink = 1; // pixels of pages that one of the browser shows, in a row
    int m_leastWidth = 0;
    const Mark m_mark;
    QPointer<QWidget> m_painted;
    std::deque<Order> m_orders; // the first is under way
    Stage m_stage = Stage::Idle;
    PageMark m_marks[PageMark::kPlaces];
    QImage m_strip; // the upper edge with the first mark
    QImage m_last;  // while it is watched
    int m_same = 0, m_looks = 0, m_unmarked = 0;
    bool m_isGrabbing = false;
    bool m_isTouched = false; // the document, by a page that may leave something behind
    QElapsedTimer m_sinceWritten;
    QTimer m_look, m_doubt, m_watch, m_patience, m_fail, m_rest;
    WebBrowser m_wb; // goes first
};

} // namespace quillmere
