#pragma once

#include "controls/LateWork.h"
#include "controls/TabFrame.h"
#include "preview/forms/LateRender.h"
#include "rows/ListRows.h"
#include "widgets/RectCommands.h"

#include <future>

namespace quillmere {

class Commands;
class ListView;
class Talk;
class SourceBox;
class DragLine;
class TextHolder;
class WidgetCatalogue;

// The Source tab: the text of the open window, its blocks, and the page made from it.
class SourceTab : public TabFrame
{
    Q_OBJECT

public:
    // `pictures` gives a lookup of the pictures as they are now, which does not change and may be asked on
    // any thread. `screen` is where the theme's catalogue says how large the screen is.
    SourceTab(std::function<ImageLookup()> pictures, const ListRows &fonts, const WidgetCatalogue &screen,
              Talk &talk, QWidget *parent = nullptr);

    void addCommands(Commands &menu);
    // Draws markup without changing the source box: refills lvBlock and txtHtml and shows the page.
    void BuildWidgetHtml(const QString &markup);
    // Shows the page of a text that is about to become that of the source box, or may; lvBlock and txtHtml
    // stay, and with them the ticks.
    void tryOut(const QString &markup);
    // The page that tryOut() would show; empty for a text so large that this one makes it late, and in a view
    // that takes its numbers apart.
    QString triedPage(const QString &markup);
    // Pages are those that `view` gives makers for, which is asked for each page; it gives none for the
    // preview's. lvBlock and txtHtml are the preview's in every view.
    void setView(std::function<ViewPage()> view) { m_view = std::move(view); }
    // SourceBox::revision() of the text that pageReady() was last sent for; -1 where that was no text of the
    // source box.
    qint64 pageRevision() const { return m_pageRevision; }
    // Makes the browser's page from what was drawn last, the options and the ticks of lvBlock.
    void ShowPreview();
    // True while the page and lvBlock are those of an older text: what takes too long for a key waits until
    // typing pauses. Whatever needs them before that brings them up to date first.
    bool isBehind() const { return m_behind; }
    // True while the rows of lvBlock are replaced: nobody selects or deselects any then.
    bool isListing() const { return m_listing; }
    // True while a block is being opened, which puts the caret where its name first occurs.
    bool isOpening() const { return m_opening; }
    // The "Fixed" mark of the Window menu.
    void setFixed(bool fixed);
    // Puts two texts around the selection; the same text stays selected.
    void InsertCode(const QString &Awal, const QString &Akhir);

    ListRows blocks;      // lvBlock: text = class, sub-item 1 = name
    ListRows otherBlocks; // LvBlock2: the same of another window
    ViewOptions options;
    SourceBox *txtSnippet;
    ListView *lvBlock;

    // This text is about to come into the source box, unless that is told of an empty one: where it is large,
    // its page is drawn meanwhile, beside the window's thread.
    void expect(const QString &markup);

signals:
    void pageReady(const QString &page);
    void textChanged();
    void fellBehind();
    void caughtUp();
    // The rows of lvBlock are those of a text that was drawn.
    void blocksListed();
    // A block of lvBlock was opened; the caret is on the line that holds its name.
    void blockOpened(const QString &name, const QString &className, int row);

protected:
    void layOut(int height) override;
    void setAbove(int twips);

private:
    void txtSnippet_Change();
    bool showExpected();
    RenderInput inputOf(const QString &markup) const;
    void draw(const QString &markup);
    void show(const Rendered &rendered, qint64 revision);
    void showLate(const Rendered &rendered);
    ViewPage maker() const { return m_view ? m_view() : ViewPage(); }
    // With the blocks left out that are ticked now.
    QString pageOf(const QString &markup, const QString &html) const;
    QString triedPage(const Rendered &rendered) const;
    void showTried(const QString &page, qint64 revision);
    // True where it had to draw.
    bool catchUp();
    void blockTicked(int row);
    void mnuFormat_Click();
    void mnuCblock_Click();
    void mnuC_Click(int numerator, int denominator);
    void mnuTD_Click(Axis axis);
    void rewriteRects(const QString &text); // and says how many have changed
    void mnuVPaste_Click();
    void showComparison(bool shown);
    void lvBlock_DblClick(int row);

    std::function<ImageLookup()> m_pictures;
    const ListRows &m_fonts;
    const WidgetCatalogue &m_screen;
    Talk &m_talk;
    CaptionBox *frBc;
    ListView *LvBlock2;
    TextHolder *txtHtml;
    DragLine *m_line; // between blocks and source
    int m_above;      // twips that the blocks and the margins take from the source, as they are wanted
    int m_height = 0; // of the frame, twips
    std::function<ViewPage()> m_view;
    QString m_markup; // that was drawn last
    std::shared_ptr<KeptDrawing> m_kept = std::make_shared<KeptDrawing>();
    LateRender m_late{this};
    std::future<Rendered> m_expected; // valid until something else is drawn
    LateWork m_work;                  // the page of the text
    qint64 m_pageRevision = -1;
    // What is made late is of a text that is tried out, or of the text after one.
    std::optional<qint64> m_tried;
    bool m_behind = false;
    bool m_saidBehind = false; // which is for a pause, not for the moment that a page is being made
    bool m_listing = false, m_opening = false;
    bool m_sameList = false; // nothing but keys has come between lvBlock and the text
};

} // namespace quillmere
