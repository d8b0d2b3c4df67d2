#pragma once

#include <QString>

namespace quillmere {

// A mark that the browser paints over a corner of a page: two squares side by side, in colours that nobody
// can know before. A picture of the browser that has the mark was taken after it was asked for. It moves
// nothing in the page, and is no part of its document.
struct PageMark
{
    static constexpr int kSquare = 8; // pixels of the browser
    static constexpr int kPlaces = 2; // along its upper edge, 0 leftmost

    int place = 0;
    int top = 0;                 // pixels of the page
    int shrink = 1;              // pixels of the page that one of the browser shows, in a row
    quint32 left = 0, right = 0; // colours, 0xRRGGBB

    static PageMark at(int place, int top = 0, int shrink = 1);
    // What markStateScript() answers.
    enum class State {
        Awaited,
        Shown,  // it is in the page; a picture that shows it comes
        Hidden, // the page does not let it be seen
        Removed // and the page has been drawn without
    };
    static State stateOf(const QString &answer);
    int x() const { return place * 2 * kSquare; } // pixels of the browser
};

// Sets the mark once the pictures and fonts of the page are there and can be painted at once. To be run when
// the page is in the browser, as early as can be: it is what asks for the pictures.
QString markingWhenLoadedScript(const PageMark &mark);
// Sets it in place of the one before. A page that has none to be replaced stays without.
QString movingMarkScript(const PageMark &mark);
// Takes it away, also one that is still to come.
QString removingMarkScript();
// How it stands with the mark asked for last.
QString markStateScript();

} // namespace quillmere
