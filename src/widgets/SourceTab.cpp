#include "widgets/SourceTab.h"

#include "markup/FormatXML.h"
#include "markup/InsertCode.h"
#include "platform/Commands.h"
#include "platform/ListView.h"
#include "platform/Named.h"
#include "platform/Prompts.h"
#include "widgets/BlockLines.h"
#include "widgets/SourceBox.h"
#include "widgets/WidgetCatalogue.h"
#include "widgets/WidgetDocument.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>

namespace quillmere {

namespace {

constexpr int kTop = 12;         // pixels
constexpr int kCaption = 12;     // pixels, that of the comparison stands above its list
constexpr int kMargin = 8;       // pixels, left, right and below
constexpr int kAboveText = 3720; // twips that the block list and the margins take from the source box
const QStringList kBlockColumns = {QStringLiteral("Class"), QStringLiteral("Nama")};

} // namespace

SourceTab::SourceTab(const ImageLookup &GetImg, const ListRows &fonts, const WidgetCatalogue &screen,
                     Prompts &prompts, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(8)"), parent), blocks(kBlockColumns, ListRows::Checks::Yes),
      otherBlocks(kBlockColumns),
      txtSnippet(new SourceBox(QStringLiteral("txtSnippet"), tr("Source text"), this)), m_getImg(GetImg),
      m_fonts(fonts), m_screen(screen), m_prompts(prompts),
      lvBlock(new ListView(QStringLiteral("lvBlock"), tr("Blocks"), blocks, this)),
      frBc(new CaptionBox(QStringLiteral("frBc"), this)),
      LvBlock2(new ListView(QStringLiteral("LvBlock2"), tr("Blocks to compare with"), otherBlocks, frBc)),
      txtHtml(named(new QPlainTextEdit(this), "txtHtml", tr("Generated page")))
{
    frBc->setCaption(QStringLiteral("Block Compare"));
    frBc->setToolTip(tr("Double-click the frame to close it."));
    frBc->hide();
    connect(frBc, &CaptionBox::doubleClicked, this, [this] { showComparison(false); });
    txtHtml->setReadOnly(true);
    txtHtml->setUndoRedoEnabled(false);
    txtHtml->hide(); // for the program's own use

    lvBlock->setColumnShares({2, 3});
    lvBlock->setToolTip(
        tr("Tick a block to hide it in the preview; double-click it to find it in the source."));
    connect(lvBlock, &ListView::rowOpened, this, &SourceTab::lvBlock_DblClick);
    connect(&blocks, &ListRows::checkChanged, this, &SourceTab::ShowPreview);
    connect(txtSnippet, &SourceBox::changed, this, &SourceTab::txtSnippet_Change);
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
    menu.action("mnuFormat")->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F));
    menu.on("mnuCblock", [this] { mnuCblock_Click(); });
    menu.on("mnuC(0)", [this] { mnuC_Click(4, 5); });
    menu.on("mnuC(1)", [this] { mnuC_Click(5, 4); });
    menu.on("mnuTD(0)", [this] { mnuTD_Click(Axis::Top); });
    menu.on("mnuTD(1)", [this] { mnuTD_Click(Axis::Left); });
    menu.on("mnuVCopy", [this] { QGuiApplication::clipboard()->setText(linesOfBlocks(blocks)); });
    menu.on("mnuVPaste", [this] { mnuVPaste_Click(); });
}

void SourceTab::layOut(int height)
{
    const int width = this->width() - 2 * kMargin;
    const int textHeight = toPixels(height - kAboveText);
    const int textTop = this->height() - kMargin - textHeight;
    const int listHeight = textTop - kTop - kMargin;
    const int half = (width - kMargin) / 2;
    place(lvBlock, kMargin, kTop, frBc->isHidden() ? width : half, listHeight);
    place(frBc, kMargin + width - half, kTop - kCaption, half, listHeight + kCaption);
    place(LvBlock2, 0, kCaption, half, listHeight);
    place(txtSnippet, kMargin, textTop, width, textHeight);
}

void SourceTab::txtSnippet_Change()
{
    BuildWidgetHtml(txtSnippet->text());
    emit textChanged();
}

void SourceTab::BuildWidgetHtml(const QString &markup)
{
    m_html = quillmere::BuildWidgetHtml(markup, m_getImg, m_fonts, blocks);
    ShowPreview();
    txtHtml->setPlainText(m_html); // while the browser is at work
}

void SourceTab::ShowPreview()
{
    emit pageReady(BuildPreviewPage(m_html, options, defaultFontSize(m_fonts), blocks));
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
        m_prompts.tell(QStringLiteral("Confirm Size"), QStringLiteral("Terlalu besar"),
                       Prompts::Icon::Critical);
        break;
    case ScaleResult::TooSmall:
        m_prompts.tell(QStringLiteral("Confirm Size"), QStringLiteral("Terlalu kecil"),
                       Prompts::Icon::Critical);
        break;
    case ScaleResult::Scaled:
        txtSnippet->rewrite(text);
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
        m_prompts.input(QStringLiteral("Widget Porition"), QStringLiteral("Input distance"), QString());
    qint64 distance = 0;
    if (!answer || !wholeNumber(*answer, distance))
        return;
    MoveRects(text, axis, distance);
    txtSnippet->rewrite(text);
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
    txtSnippet->showFrom(lineOfBlock(txtSnippet->text(), blocks.sub(row, 1)));
    txtSnippet->setFocus();
    emit blockOpened(blocks.sub(row, 1), blocks.text(row));
}

} // namespace quillmere
