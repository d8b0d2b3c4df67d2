#include "stage/forms/PictureCommands.h"

#include "asking/Talk.h"
#include "source/forms/SourceBox.h"
#include "widgets/forms/SourceTab.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSet>

#include <algorithm>

namespace quillmere {

namespace {
constexpr qint64 kRun = 1000; // ms
} // namespace

PictureCommands::PictureCommands(Stage &stage, SourceTab &tab, Talk &talk, QObject *parent)
    : QObject(parent), m_stage(stage), m_tab(tab), m_talk(talk)
{
}

// The preview hides a ticked block by its name, with all that is in it.
QList<int> PictureCommands::drawn() const
{
    const Outline &outline = m_stage.outline();
    QSet<QString> hiddenNames;
    for (const ListRows::Row &row : m_tab.blocks.rows()) {
        if (row.checked)
            hiddenNames.insert(row.sub(1));
    }
    QList<int> rows;
    std::vector<bool> isHidden(outline.blocks().size());
    for (size_t row = 0; row < isHidden.size(); ++row) {
        const qint32 block = outline.blocks()[row];
        const Element &element = outline.element(block);
        const int parent = parentOf(outline, int(row));
        const std::optional<Attribute> name = outline.nameAttribute(block);
        isHidden[row] = element.inComment || element.inSignal || (parent >= 0 && isHidden[size_t(parent)]) ||
                        (name && hiddenNames.contains(outline.at(name->value).toString()));
        if (!isHidden[row])
            rows.append(int(row));
    }
    return rows;
}

bool PictureCommands::selectNothing()
{
    if (m_stage.selection().isEmpty())
        return false;
    m_stage.select({}, Stage::By::Picture);
    return true;
}

void PictureCommands::selectAll()
{
    m_stage.select(drawn(), Stage::By::Picture);
}

void PictureCommands::selectNext(Way way)
{
    const QList<int> rows = drawn();
    if (rows.isEmpty())
        return;
    const QList<int> &selection = m_stage.selection();
    qsizetype next = way == Way::On ? 0 : rows.size() - 1;
    if (!selection.isEmpty() && way == Way::On) {
        const int last = *std::ranges::max_element(selection);
        next = std::ranges::upper_bound(rows, last) - rows.begin();
    } else if (!selection.isEmpty()) {
        const int first = *std::ranges::min_element(selection);
        next = std::ranges::lower_bound(rows, first) - rows.begin() - 1;
    }
    m_stage.select({rows[(next + rows.size()) % rows.size()]}, Stage::By::Picture);
}

void PictureCommands::selectParent()
{
    const QList<int> &selection = m_stage.selection();
    const int parent = selection.isEmpty() ? -1 : parentOf(m_stage.outline(), selection.first());
    if (parent >= 0)
        m_stage.select({parent}, Stage::By::Picture);
}

void PictureCommands::arrow(QPoint by, Arrow arrow)
{
    const Outline &outline = m_stage.outline();
    const QList<int> selection = m_stage.selection();
    QList<BlockBox> boxes;
    for (const int block : arrow == Arrow::Moves ? outermost(outline, selection) : selection) {
        const std::optional<RectValue> rect = rectOfRow(outline, block);
        if (!rect) {
            m_talk.say(whyFixed(outline, block));
            continue;
        }
        Box box = rect->box;
        if (arrow == Arrow::Moves) {
            box.x += by.x();
            box.y += by.y();
        } else {
            if (by.x() != 0)
                box.w = std::max<qint64>(0, box.w + by.x());
            if (by.y() != 0)
                box.h = std::max<qint64>(0, box.h + by.y());
        }
        boxes.append({block, box});
    }
    const QList<TextChange> changes = rectChanges(outline, boxes);
    if (changes.isEmpty())
        return;
    const bool isRun = m_arrowRevision == m_stage.revision() && m_arrowed == selection &&
                       m_sinceArrow.isValid() && m_sinceArrow.elapsed() <= kRun;
    m_stage.write(changes, m_stage.revision(), selection,
                  isRun ? SourceBox::Step::OfLast : SourceBox::Step::Own);
    m_arrowRevision = m_stage.revision();
    m_arrowed = selection;
    m_sinceArrow.start();
}

void PictureCommands::write(const Edited &edited)
{
    if (!edited.changes.isEmpty())
        m_stage.write(edited.changes, m_stage.revision(), edited.selection);
}

// Says why where a block is no whole element.
bool PictureCommands::canTakeOut()
{
    for (const int block : m_stage.selection()) {
        if (const QString why = whyNotWhole(m_stage.outline(), block); !why.isEmpty()) {
            m_talk.say(why);
            break;
        }
    }
    return !m_stage.selection().isEmpty();
}

void PictureCommands::remove()
{
    if (canTakeOut())
        write(deleted(m_stage.outline(), m_stage.selection()));
}

void PictureCommands::duplicate()
{
    if (canTakeOut())
        write(duplicated(m_stage.outline(), m_stage.selection()));
}

void PictureCommands::copy()
{
    const QString elements = canTakeOut() ? copied(m_stage.outline(), m_stage.selection()) : QString();
    if (!elements.isEmpty())
        QGuiApplication::clipboard()->setText(elements);
}

void PictureCommands::cut()
{
    copy();
    write(deleted(m_stage.outline(), m_stage.selection()));
}

void PictureCommands::paste()
{
    write(pasted(m_stage.outline(), m_stage.selection(), QGuiApplication::clipboard()->text()));
}

void PictureCommands::bringForward()
{
    if (canTakeOut())
        write(moved(m_stage.outline(), m_stage.selection(), Toward::Front));
}

void PictureCommands::sendBack()
{
    if (canTakeOut())
        write(moved(m_stage.outline(), m_stage.selection(), Toward::Back));
}

void PictureCommands::undo()
{
    if (!stepsBackElsewhere || !stepsBackElsewhere())
        m_tab.txtSnippet->stepBack();
}

void PictureCommands::redo()
{
    if (!stepsForwardElsewhere || !stepsForwardElsewhere())
        m_tab.txtSnippet->stepForward();
}

void PictureCommands::openProperties()
{
    if (!m_stage.selection().isEmpty())
        emit blockOpened(m_stage.selection().first());
}

void PictureCommands::goToSource()
{
    if (m_stage.selection().isEmpty())
        return;
    const Outline &outline = m_stage.outline();
    const qint32 block = outline.blocks()[size_t(m_stage.selection().first())];
    emit sourceWanted();
    m_tab.txtSnippet->showFrom(outline.element(block).tag.start);
    m_tab.txtSnippet->setFocus();
}

void PictureCommands::hide()
{
    const QList<int> selection = m_stage.selection();
    for (const int block : selection) {
        if (!m_tab.isBehind() && block < m_tab.blocks.count())
            m_tab.blocks.setData(m_tab.blocks.index(block, 0), Qt::Checked, Qt::CheckStateRole);
    }
}

} // namespace quillmere
