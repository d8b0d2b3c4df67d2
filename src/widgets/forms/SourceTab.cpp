#include "widgets/forms/SourceTab.h"

#include "asking/Talk.h"
#include "controls/Commands.h"
#include "controls/DragLine.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/TextHolder.h"
#include "markup/FormatXML.h"
#include "markup/InsertCode.h"
#include "markup/WidgetDocument.h"
#include "source/forms/SourceBox.h"
#include "widgets/BlockLines.h"
#include "widgets/WidgetCatalogue.h"

#include <QAction>
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QSettings>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kTop = 12;                // pixels
constexpr int kCaption = 12;            // pixels, that of the comparison stands above its list
constexpr int kMargin = 8;              // pixels, left, right and below
constexpr double kMostInKey = 15;       // ms that drawing may take of a key
constexpr qsizetype kLarge = 1'500'000; // units of a text whose page is drawn late after commands as well
constexpr qsizetype kHuge = 6'000'000;  // the same, however long drawing may take
constexpr int kAboveText = 3720;        // twips that the block list and the margins take from the source box
constexpr int kLeastAbove = 1800;       // as much as a person may leave them
constexpr int kLeastText = 1800;        // twips of the source box
const QString kListHeight = QStringLiteral("room/blockList");
const QStringList kBlockColumns = {QStringLiteral("Class"), QStringLiteral("Nama")};

} // namespace

SourceTab::SourceTab(std::function<ImageLookup()> pictures, const ListRows &fonts,
                     const WidgetCatalogue &screen, Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(8)"), parent), blocks(kBlockColumns, ListRows::Checks::Yes),
      otherBlocks(kBlockColumns),
      txtSnippet(new SourceBox(QStringLiteral("txtSnippet"), tr("Source text"), this)),
      lvBlock(new ListView(QStringLiteral("lvBlock"), tr("Blocks"), blocks, this)),
      m_pictures(std::move(pictures)), m_fonts(fonts), m_screen(screen), m_talk(talk),
      frBc(new CaptionBox(QStringLiteral("frBc"), this)),
      LvBlock2(new ListView(QStringLiteral("LvBlock2"), tr("Blocks to compare with"), otherBlocks, frBc)),
      txtHtml(named(new TextHolder(this), "txtHtml", tr("Generated page"))),
      m_line(new DragLine(Qt::Horizontal, "blockLine",
                          tr("Drag to give the blocks or the source more room; double-click to reset"),
                          this)),
      m_above(QSettings().value(kListHeight, kAboveText).toInt()),
      m_work(
          kMostInKey, [this] { draw(txtSnippet->text()); },
          [this] {
              m_tried.reset();
              m_late.start(inputOf(txtSnippet->text()));
          })
{
    frBc->setCaption(QStringLiteral("Block Compare"));
    frBc->setToolTip(tr("Double-click the frame to close it."));
    frBc->hide();
    connect(frBc, &CaptionBox::doubleClicked, this, [this] { showComparison(false); });

    lvBlock->setColumnShares({2, 3});
    lvBlock->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvBlock->setToolTip(
        tr("Tick a block to hide it in the preview; double-click it to find it in the source."));
    connect(lvBlock, &ListView::rowOpened, this, &SourceTab::lvBlock_DblClick);
    connect(&blocks, &ListRows::checkChanged, this, &SourceTab::blockTicked);
    connect(&blocks, &ListRows::edited, this, &SourceTab::ShowPreview); // ticks that are undone
    connect(txtSnippet, &SourceBox::changed, this, &SourceTab::txtSnippet_Change);

    connect(&m_late, &LateRender::done, this, &SourceTab::showLate);

    connect(m_line, &DragLine::dragged, this,
            [this](int to) { setAbove(toTwips(to + kMargin / 2 + kMargin) + m_height - toTwips(height())); });
    connect(m_line, &DragLine::dropped, this, [this] { QSettings().setValue(kListHeight, m_above); });
    connect(m_line, &DragLine::doubleClicked, this, [this] {
        setAbove(kAboveText);
        QSettings().remove(kListHeight);
    });
}

void SourceTab::addCommands(Commands &menu)
{
    static constexpr const char *views[] = {"mnuV(0)", "mnuV(1)", "mnuV(2)", "mnuV(3)", "mnuV(4)", "mnuV(5)"};
    for (size_t index = 0; index < std::size(views); ++index) {
        QAction *item = menu.action(views[index]);
        item->setChecked(options.shown[index]);
        menu.on(views[index], [this, item, index] {
            options.shown[index] = item->isChecked();
            ShowPreview();
        });
    }
    menu.on("mnuFormat", [this] { mnuFormat_Click(); });
    menu.action("mnuFormat")->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    menu.on("mnuCblock", [this] { mnuCblock_Click(); });
    menu.on("mnuC(0)", [this] { mnuC_Click(4, 5); });
    menu.on("mnuC(1)", [this] { mnuC_Click(5, 4); });
    menu.on("mnuTD(0)", [this] { mnuTD_Click(Axis::Top); });
    menu.on("mnuTD(1)", [this] { mnuTD_Click(Axis::Left); });
    menu.on("mnuVCopy", [this] {
        catchUp();
        QGuiApplication::clipboard()->setText(linesOfBlocks(blocks));
    });
    menu.on("mnuVPaste", [this] { mnuVPaste_Click(); });
}

void SourceTab::setAbove(int twips)
{
    m_above = twips;
    layOut(m_height);
}

void SourceTab::layOut(int height)
{
    m_height = height;
    const int above = std::clamp(m_above, kLeastAbove, std::max(height - kLeastText, kLeastAbove));
    const int width = this->width() - 2 * kMargin;
    const int textHeight = toPixels(height - above);
    const int textTop = this->height() - kMargin - textHeight;
    const int listHeight = textTop - kTop - kMargin;
    const int half = (width - kMargin) / 2;
    place(lvBlock, kMargin, kTop, frBc->isHidden() ? width : half, listHeight);
    place(frBc, kMargin + width - half, kTop - kCaption, half, listHeight + kCaption);
    place(LvBlock2, 0, kCaption, half, listHeight);
    place(txtSnippet, kMargin, textTop, width, textHeight);
    place(m_line, kMargin, textTop - kMargin, width, DragLine::kThick);
}

void SourceTab::expect(const QString &markup)
{
    m_expected = {};
    if (markup.size() > kLarge && markup.size() <= kHuge)
        m_expected = std::async(std::launch::async, [input = inputOf(markup)] {
            return renderPage(input, PackedText::Packing::Now);
        });
}

// Making the text ready takes longer than drawing it, so this hardly ever waits.
bool SourceTab::showExpected()
{
    const Rendered rendered = m_expected.valid() ? m_expected.get() : Rendered();
    if (rendered.markup.isEmpty() || rendered.markup != txtSnippet->text())
        return false;
    m_sameList = false;
    m_work.forget();
    m_late.giveUp();
    show(rendered, txtSnippet->revision());
    m_work.measured(rendered.milliseconds, txtSnippet->document()->characterCount());
    emit textChanged();
    return true;
}

void SourceTab::txtSnippet_Change()
{
    if (showExpected())
        return;
    // A key does not wait for the page, and neither does a command on a text so large that it could.
    const qsizetype units = txtSnippet->document()->characterCount();
    const bool mayWait = txtSnippet->isTyping() || units > kLarge;
    m_sameList = m_sameList && txtSnippet->isTyping();
    const bool waits = m_work.changed(units, units > kHuge ? LateWork::Wait::Always
                                             : mayWait     ? LateWork::Wait::IfLong
                                                           : LateWork::Wait::Never);
    m_behind = waits;
    if (m_work.isWaiting()) {
        m_late.giveUp(); // it is the page of an older text
        if (!std::exchange(m_saidBehind, true))
            emit fellBehind();
    }
    emit textChanged();
}

RenderInput SourceTab::inputOf(const QString &markup) const
{
    return {markup, m_pictures(), m_fonts.rows(), defaultFontSize(m_fonts), options, maker(), m_kept};
}

void SourceTab::BuildWidgetHtml(const QString &markup)
{
    m_sameList = false;
    draw(markup);
}

void SourceTab::tryOut(const QString &markup)
{
    m_expected = {};
    catchUp();
    const qint64 revision = markup == txtSnippet->text() ? txtSnippet->revision() : -1;
    if (markup.size() <= kLarge) {
        m_late.giveUp();
        const ViewPage make = maker();
        showTried(make ? make(markup, options, blocks.rows()) : triedPage(renderPage(inputOf(markup))),
                  revision);
        return;
    }
    m_tried = revision;
    m_late.start(inputOf(markup));
}

QString SourceTab::triedPage(const QString &markup)
{
    catchUp();
    return markup.size() > kLarge || maker() ? QString() : triedPage(renderPage(inputOf(markup)));
}

QString SourceTab::pageOf(const QString &markup, const QString &html) const
{
    const ViewPage make = maker();
    return make ? make(markup, options, blocks.rows())
                : BuildPreviewPage(html, options, defaultFontSize(m_fonts), blocks);
}

QString SourceTab::triedPage(const Rendered &rendered) const
{
    const bool hides = std::ranges::any_of(blocks.rows(), &ListRows::Row::checked);
    return hides ? pageOf(rendered.markup, rendered.html.text()) : rendered.page;
}

void SourceTab::showTried(const QString &page, qint64 revision)
{
    m_pageRevision = revision;
    emit pageReady(page);
}

void SourceTab::draw(const QString &markup)
{
    m_expected = {};
    m_work.forget();
    m_late.giveUp();
    show(renderPage(inputOf(markup)), markup == txtSnippet->text() ? txtSnippet->revision() : -1);
}

void SourceTab::show(const Rendered &rendered, qint64 revision)
{
    m_pageRevision = revision;
    m_markup = rendered.markup;
    txtHtml->setText(rendered.html);
    {
        const QScopedValueRollback listing(m_listing, true);
        if (std::exchange(m_sameList, true))
            blocks.update(rendered.blocks);
        else
            blocks.assign(rendered.blocks);
    }
    emit pageReady(rendered.page);
    m_behind = m_late.isBusy();
    emit blocksListed();
    if (!m_behind && std::exchange(m_saidBehind, false))
        emit caughtUp();
}

void SourceTab::showLate(const Rendered &rendered)
{
    if (m_tried) {
        showTried(triedPage(rendered), m_late.isBusy() ? -1 : *m_tried);
        return;
    }
    QElapsedTimer clock;
    clock.start();
    const bool isOfText = !m_late.isBusy();
    show(rendered, isOfText ? txtSnippet->revision() : -1);
    m_work.measured(rendered.milliseconds + double(clock.nsecsElapsed()) / 1e6,
                    txtSnippet->document()->characterCount());
}

bool SourceTab::catchUp()
{
    if (!m_behind)
        return false;
    m_work.doNow(txtSnippet->document()->characterCount());
    return true;
}

void SourceTab::ShowPreview()
{
    m_expected = {};
    if (catchUp())
        return;
    const QString page = pageOf(m_markup, txtHtml->text()); // the widgets' text goes before the page does
    emit pageReady(page);
}

void SourceTab::blockTicked(int row)
{
    const ListRows::Row ticked = blocks.row(row);
    if (!catchUp()) {
        ShowPreview();
        return;
    }
    // The list was that of an older text, and the tick is meant for the block of this name.
    const auto hasName = [&](int other) { return blocks.sub(other, 1) == ticked.sub(1); };
    if (row >= blocks.count() || !hasName(row)) {
        for (row = 0; row < blocks.count() && !hasName(row);)
            ++row;
    }
    if (row < blocks.count())
        blocks.setChecked(row, ticked.checked);
}

void SourceTab::setFixed(bool fixed)
{
    options.fixed = fixed;
    ShowPreview();
}

void SourceTab::mnuFormat_Click()
{
    QString text = txtSnippet->text();
    txtSnippet->rewrite(FormatXML(text));
}

void SourceTab::mnuCblock_Click()
{
    catchUp();
    QString names;
    for (const ListRows::Row &row : blocks.rows())
        names += row.sub(1) + u"\r\n";
    if (!names.isEmpty())
        QGuiApplication::clipboard()->setText(names);
}

void SourceTab::mnuC_Click(int numerator, int denominator)
{
    QString text = txtSnippet->text();
    switch (ScaleRects(text, numerator, denominator, m_screen.width, m_screen.height)) {
    case ScaleResult::TooLarge:
        m_talk.tell(QStringLiteral("Confirm Size"), QStringLiteral("Terlalu besar"), Talk::Icon::Critical);
        break;
    case ScaleResult::TooSmall:
        m_talk.tell(QStringLiteral("Confirm Size"), QStringLiteral("Terlalu kecil"), Talk::Icon::Critical);
        break;
    case ScaleResult::Scaled:
        rewriteRects(text);
        break;
    case ScaleResult::Nothing:
        break;
    }
}

void SourceTab::mnuTD_Click(Axis axis)
{
    QString text = txtSnippet->text();
    if (text.isEmpty())
        return;
    const std::optional<QString> answer =
        m_talk.input(QStringLiteral("Widget Porition"), QStringLiteral("Input distance"), QString());
    qint64 distance = 0;
    if (!answer || !wholeNumber(*answer, distance))
        return;
    MoveRects(text, axis, distance);
    rewriteRects(text);
}

void SourceTab::rewriteRects(const QString &text)
{
    const qsizetype changed = changedRects(txtSnippet->text(), text);
    txtSnippet->rewriteAll(text);
    m_talk.sayUntilEdit(changed == 1 ? tr("1 rect changed.") : tr("%1 rects changed.").arg(changed));
}

void SourceTab::mnuVPaste_Click()
{
    otherBlocks.assign(blocksOfLines(QGuiApplication::clipboard()->text()));
    showComparison(true);
}

void SourceTab::showComparison(bool shown)
{
    frBc->setVisible(shown);
    layOut(toTwips(height()));
}

void SourceTab::InsertCode(const QString &Awal, const QString &Akhir)
{
    const TextSelection now{txtSnippet->text(), txtSnippet->selectionStart(), txtSnippet->selectionLength()};
    const TextSelection wrapped = quillmere::InsertCode(now, Awal, Akhir);
    txtSnippet->rewrite(wrapped.text);
    txtSnippet->select(wrapped.start, wrapped.length);
    txtSnippet->setFocus();
}

void SourceTab::lvBlock_DblClick(int row)
{
    if (blocks.isEmpty())
        return;
    const QScopedValueRollback opening(m_opening, true);
    const ListRows::Row block = blocks.row(row); // by its name, whatever text the list is of
    txtSnippet->showFrom(lineOfBlock(txtSnippet->text(), block.sub(1)));
    txtSnippet->setFocus();
    emit blockOpened(block.sub(1), block.text, row);
}

} // namespace quillmere
