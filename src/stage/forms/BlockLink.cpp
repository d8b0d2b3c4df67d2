#include "stage/forms/BlockLink.h"

#include "controls/Commands.h"
#include "controls/ListView.h"
#include "source/forms/SourceBox.h"
#include "stage/CaretBlock.h"
#include "widgets/forms/SourceTab.h"

#include <QAction>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSettings>

#include <algorithm>

namespace quillmere {

namespace {
const QString kSetting = QStringLiteral("stage/link");
}

BlockLink::BlockLink(Stage &stage, SourceTab &tab, QObject *parent)
    : QObject(parent), m_stage(stage), m_tab(tab), m_pause(0, [this] { settle(); })
{
    for (QTimer *timer : {&m_soon, &m_changing}) {
        timer->setSingleShot(true);
        timer->setInterval(0);
    }
    connect(&m_soon, &QTimer::timeout, this, [this] { followCaret(true); });
    connect(&stage, &Stage::outlined, this, [this] {
        if (std::exchange(m_isLate, false))
            settle();
    });
    connect(&stage, &Stage::selectionChanged, this, &BlockLink::onSelected);
    connect(tab.lvBlock->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &BlockLink::onListSelected);
    connect(&tab, &SourceTab::blocksListed, this, &BlockLink::onListed);
    connect(tab.txtSnippet, &SourceBox::changed, this, &BlockLink::onTextChanged);
    connect(tab.txtSnippet, &SourceBox::cursorPositionChanged, this, &BlockLink::onCaretMoved);
    connect(tab.txtSnippet, &SourceBox::keyHandled, this, &BlockLink::onKeyHandled);
}

void BlockLink::addCommands(Commands &menu, QWidget &window)
{
    QAction *item = menu.action("mnuLink");
    m_isOn = QSettings().value(kSetting, true).toBool();
    item->setChecked(m_isOn);
    window.addAction(item);
    menu.on("mnuLink", [this, item] {
        m_isOn = item->isChecked();
        QSettings().setValue(kSetting, m_isOn);
        if (m_isOn)
            onSelected(Stage::By::Picture);
    });
}

QList<int> BlockLink::listed() const
{
    QList<int> rows;
    for (const QItemSelectionRange &range : m_tab.lvBlock->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

QList<int> BlockLink::chosen() const
{
    return !m_isOn && m_tab.lvBlock->hasFocus() && isListOfText() ? listed() : m_stage.selection();
}

// The list may also be that of a window which is shown without being opened.
bool BlockLink::isListOfText() const
{
    return m_tab.pageRevision() == m_stage.revision();
}

void BlockLink::onSelected(Stage::By by)
{
    if (m_isOn && by != Stage::By::List)
        showInList();
    if (m_isOn && (by == Stage::By::Picture || by == Stage::By::List || by == Stage::By::Dialog))
        showInSource();
    emit chosenChanged();
}

void BlockLink::onListSelected()
{
    if (m_showing || m_tab.isListing())
        return;
    if (!m_isOn) {
        emit chosenChanged();
        return;
    }
    m_listWaits = !isListOfText();
    if (m_listWaits)
        return;
    const QList<int> rows = listed();
    QList<int> blocks;
    for (const int block : m_stage.selection()) { // what was selected first stays first
        if (std::binary_search(rows.begin(), rows.end(), block))
            blocks.append(block);
    }
    m_stage.select(blocks + rows, Stage::By::List);
}

void BlockLink::onListed()
{
    if (!isListOfText())
        return;
    if (std::exchange(m_listWaits, false))
        onListSelected();
    else if (!m_pause.isWaiting() && !m_tab.txtSnippet->isTyping())
        showInList();
}

void BlockLink::onTextChanged()
{
    m_documentRevision = m_tab.txtSnippet->document()->revision();
    const bool isTyping = m_tab.txtSnippet->isTyping();
    if (!isTyping)
        m_changing.start();
    if (isTyping || m_stage.isOutlineSlow()) {
        m_pause.changed(0, LateWork::Wait::Always);
        return;
    }
    m_pause.forget();
    showInList();
    emit textSettled();
}

void BlockLink::onCaretMoved()
{
    const SourceBox &source = *m_tab.txtSnippet;
    if (m_showing || m_tab.isOpening() || source.isRewriting() || m_pause.isWaiting())
        return;
    if (source.isTyping())
        m_caretMoved = true;
    else if (source.document()->revision() == m_documentRevision)
        followCaret(m_changing.isActive());
    else
        m_soon.start();
}

void BlockLink::onKeyHandled(bool isText)
{
    if (std::exchange(m_caretMoved, false) && !isText && !m_pause.isWaiting())
        followCaret(false);
}

void BlockLink::settle()
{
    m_isLate = m_stage.isOutlineLate();
    if (m_isLate)
        return;
    m_stage.outline(); // made here where nobody else makes it
    followCaret(true);
    showInList();
    emit textSettled();
}

void BlockLink::followCaret(bool byText)
{
    if (!m_isOn || m_isLate || m_pause.isWaiting())
        return;
    if (m_stage.isOutlineSlow()) {
        m_pause.changed(0, LateWork::Wait::Always);
        return;
    }
    const int block = blockAtCaret(m_stage.outline(), m_tab.txtSnippet->caretPosition());
    if (byText && (block < 0 || m_stage.selection().contains(block)))
        return;
    m_stage.select(block < 0 ? QList<int>{} : QList<int>{block}, Stage::By::Source);
}

void BlockLink::showInList()
{
    if (!m_isOn || !isListOfText())
        return;
    const QList<int> blocks = m_stage.selection();
    QList<int> rows = blocks;
    std::sort(rows.begin(), rows.end());
    const QAbstractItemModel *model = m_tab.lvBlock->model();
    QItemSelectionModel *selection = m_tab.lvBlock->selectionModel();
    const QScopedValueRollback showing(m_showing, true);
    if (rows != listed()) {
        QItemSelection ranges;
        for (qsizetype first = 0, next = 1; first < rows.size(); first = next++) {
            while (next < rows.size() && rows[next] == rows[next - 1] + 1)
                ++next;
            ranges.append(
                {model->index(rows[first], 0), model->index(rows[next - 1], model->columnCount() - 1)});
        }
        selection->select(ranges, QItemSelectionModel::ClearAndSelect);
    }
    if (!blocks.isEmpty() && !rows.contains(selection->currentIndex().row()))
        selection->setCurrentIndex(model->index(blocks.first(), 0), QItemSelectionModel::NoUpdate);
}

void BlockLink::showInSource()
{
    const QList<int> blocks = m_stage.selection();
    SourceBox &source = *m_tab.txtSnippet;
    const Outline &outline = m_stage.outline();
    if (blocks.isEmpty())
        return;
    if (blocks.contains(blockAtCaret(outline, source.caretPosition()))) {
        if (!source.hasFocus()) {
            const int across = source.horizontalScrollBar()->value();
            source.ensureCursorVisible();
            source.horizontalScrollBar()->setValue(across); // the lines are wanted, from where they begin
        }
        return;
    }
    const QScopedValueRollback showing(m_showing, true);
    const qsizetype start = outline.element(outline.blocks()[size_t(blocks.first())]).tag.start;
    const int scrolled = source.verticalScrollBar()->value();
    source.select(start, 0);
    if (source.verticalScrollBar()->value() != scrolled) // which brings in no more than the first line
        source.showFrom(start);
}

} // namespace quillmere
