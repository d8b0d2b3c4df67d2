#include "widgets/forms/frmWidget.h"

#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "controls/Tips.h"
#include "markup/Matching.h"
#include "source/forms/SourceBox.h"
#include "widgets/BlockProperties.h"
#include "widgets/CommonProperties.h"
#include "widgets/forms/PropertyEditors.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{420, 460}; // pixels
constexpr double kMostInKey = 5;      // ms that a capture may take of a key

constexpr Tip kTips[] = {
    {"cmdEditInSource", "Goes to the block in the source, where nothing gets lost."},
    {"txtL", "Pixels from the left edge of the block around it."},
    {"txtT", "Pixels from the top edge of the block around it."},
    {"txtW", "The width of the block in pixels."},
    {"txtH", "The height of the block in pixels."},
    {"cmbColor(0)", "The block's colour, as a name of the theme or a code."},
    {"cmbColor(1)", "The colour in the second state, as when the block has the focus."},
    {"cmbColor(2)", "The colour in the third state."},
    {"CmbVal", "The value of the property. Choose one, or type your own."},
    {"txtTxt", "The value of the property."},
    {"cmdRec", "Writes the rectangle into the source."},
    {"cmdColor", "Writes the colours into the source."},
    {"CmdCombo", "Writes the value into the source."},
    {"cmdTxt", "Writes the value into the source."},
};

} // namespace

frmWidget::frmWidget(SourceBox &source, const PropertyChoices &choices, QWidget &owner)
    : ModelessDialog(QStringLiteral("frmWidget"), owner), m_source(source),
      m_capture(kMostInKey, [this] { capture(); }), m_rows({tr("Property"), tr("Value")}),
      lvBlock(new ListView(QStringLiteral("lvBlock"), tr("Properties"), m_rows)),
      txtSnippet(new SourceBox(QStringLiteral("txtSnippet"), tr("Captured text"), this)),
      m_editors(new PropertyEditors(choices))
{
    txtSnippet->setReadOnly(true);
    txtSnippet->hide();
    lvBlock->setColumnShares({1, 2});
    lvBlock->setTextElideMode(Qt::ElideRight);
    lvBlock->setOpenCaption(tr("Change..."));
    lvBlock->setToolTip(tr("Double-click a property, or press Enter, to edit it."));
    connect(lvBlock, &ListView::rowOpened, this, &frmWidget::lvBlock_DblClick);
    connect(&m_source, &SourceBox::changed, this, &frmWidget::source_Change);

    connect(m_editors, &PropertyEditors::contentSet, this, &frmWidget::setContent);

    auto *column = new QVBoxLayout(this);
    column->addWidget(lvBlock, 1);
    column->addWidget(makeLost());
    column->addWidget(m_editors);
    addKeys();
    giveTips(*this, kTips);
    scrollWhereSmall(*this);
    resize(kFirstSize);
}

QWidget *frmWidget::makeLost()
{
    lblLost = named(new QLabel, "lblLost", tr("What would be lost"));
    lblLost->setTextFormat(Qt::PlainText); // it names elements of the theme
    lblLost->setWordWrap(true);
    auto *edit = named(new QPushButton(tr("&Edit in Source")), "cmdEditInSource", tr("Edit in Source"));
    connect(edit, &QPushButton::clicked, this, &frmWidget::editInSource);
    m_lost = new QWidget;
    auto *line = new QHBoxLayout(m_lost);
    line->setContentsMargins({});
    line->addWidget(lblLost, 1);
    line->addWidget(edit);
    m_lost->hide();
    return m_lost;
}

void frmWidget::addKeys()
{
    const auto add = [this](const char *name, QKeySequence::StandardKey keys, auto &&command) {
        auto *action = new QAction(this);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        addAction(action);
        connect(action, &QAction::triggered, this, command);
    };
    add("save", QKeySequence::Save, [this] { emit saveWanted(); });
    add("undo", QKeySequence::Undo, [this] { m_source.stepBack(); });
    add("redo", QKeySequence::Redo, [this] { m_source.stepForward(); });
}

void frmWidget::turnTo(const QString &name, const QString &className, const ShownBlocks &blocks)
{
    setWindowTitle(u" Property :: " + name + u" :: " + className);
    m_name = name;
    m_blocks = blocks;
    lvBlock->clearSelection();
    lvBlock->setCurrentIndex({});
    capture();
    if (m_isSeveral) // of no one class
        setWindowTitle(u" Property :: " + name);
    showHint();
}

void frmWidget::capture()
{
    m_isSeveral = false;
    m_start = -1;
    if (!m_blocks.rows) {
        GetProperty(m_name);
        return;
    }
    m_capture.forget();
    const QList<int> blocks = m_blocks.rows();
    m_isSeveral = blocks.size() > 1;
    if (m_isSeveral)
        captureSeveral(blocks);
    else
        captureAt(blocks.value(0, -1));
}

void frmWidget::captureAt(int block)
{
    const Range head = headOfBlock(m_blocks.outline(), block);
    m_start = head.start;
    take(head.isEmpty() ? std::nullopt : propertiesAt(m_source.text(), head));
}

void frmWidget::captureSeveral(const QList<int> &blocks)
{
    txtSnippet->setText(QString());
    m_lost->hide();
    showRows(commonProperties(m_blocks.outline(), blocks));
}

void frmWidget::GetProperty(const QString &name)
{
    m_capture.forget();
    take(quillmere::GetProperty(m_source.text(), name));
}

void frmWidget::take(const std::optional<BlockProperties> &block)
{
    txtSnippet->setText(block ? block->segment : QString());
    const LostElements lost = block ? elementsLost(block->segment, block->rows) : LostElements();
    m_lostAt = lost.at;
    lblLost->setText(tr("Set would remove <%1>, which this list does not show.")
                         .arg(lost.names.join(QStringLiteral(">, <"))));
    m_lost->setHidden(lost.names.isEmpty());
    if (block)
        showRows(block->rows);
}

void frmWidget::showRows(const QList<ListRows::Row> &rows)
{
    const int row = lvBlock->selectedRow();
    const QString selected = row >= 0 ? m_rows.text(row) : QString();
    m_rows.assign(rows);
    if (row >= 0 && row < m_rows.count() && m_rows.text(row) == selected)
        lvBlock->setCurrentIndex(m_rows.index(row, 0));
}

void frmWidget::showHint()
{
    m_editors->showHint(m_isSeveral && m_rows.isEmpty()
                            ? tr("There is no property that all these blocks have.")
                        : m_isSeveral ? tr("Double-click a property to set it in all blocks.")
                        : txtSnippet->document()->isEmpty()
                            ? tr("No properties of this block were found, so nothing can be written back.")
                            : tr("Double-click a property to edit it."));
}

void frmWidget::lvBlock_DblClick(int row)
{
    const QString name = m_rows.text(row);
    catchUp();
    if (row >= m_rows.count() || m_rows.text(row) != name)
        return; // it was the row of a property that is there no longer
    const bool isInPart = m_isSeveral && m_rows.sub(row, 1).isEmpty();
    m_editors->edit(name, m_rows.sub(row, isInPart ? 2 : 1));
}

void frmWidget::setContent(const QString &content)
{
    catchUp();
    const int row = lvBlock->selectedRow();
    const bool isRow = row >= 0 && m_rows.text(row) == m_editors->property();
    if (m_isSeveral) {
        if (isRow)
            setForAll(row, content);
    } else {
        if (isRow)
            m_rows.setSub(row, 1, content);
        SaveProperty();
    }
    m_editors->forgetTyping(); // what can be undone now is the write-back
}

void frmWidget::setForAll(int row, const QString &content)
{
    const bool isInPart = m_rows.sub(row, 1).isEmpty();
    const QList<TextChange> changes =
        propertyChanges(m_blocks.outline(), m_blocks.rows(), m_rows.text(row), content, isInPart);
    const QScopedValueRollback saving(m_saving, true);
    m_blocks.write(changes);
    capture();
}

void frmWidget::editInSource()
{
    const QString segment = txtSnippet->text();
    const qsizetype start = m_start >= 0 ? m_start : indexOfIgnoringCase(m_source.text(), segment);
    emit sourceWanted();
    m_source.showFrom(start + m_lostAt);
    m_source.window()->activateWindow();
    m_source.setFocus();
}

void frmWidget::SaveProperty()
{
    const QScopedValueRollback saving(m_saving, true);
    const QString source = m_source.text(), segment = txtSnippet->text();
    m_source.rewrite(m_start < 0 ? quillmere::SaveProperty(source, segment, m_rows.rows())
                                 : savePropertyAt(source, m_start, segment, m_rows.rows()));
    capture();
}

// Typed over, undone, or another window opened: what was captured would no longer be found there.
void frmWidget::source_Change()
{
    if (!isVisible() || m_saving)
        return;
    m_capture.changed(m_source.document()->characterCount(),
                      m_source.isTyping() ? LateWork::Wait::IfLong : LateWork::Wait::Never);
}

void frmWidget::catchUp()
{
    if (m_capture.isWaiting())
        capture();
}

} // namespace quillmere
