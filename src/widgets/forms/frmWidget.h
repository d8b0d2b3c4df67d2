#pragma once

#include "controls/LateWork.h"
#include "controls/ModelessDialog.h"
#include "outline/Outline.h"
#include "rows/ListRows.h"
#include "source/TextChanges.h"

#include <QList>

#include <functional>
#include <optional>

class QLabel;

namespace quillmere {

class ListView;
class PropertyEditors;
struct PropertyChoices;
class SourceBox;
struct BlockProperties;

// Where the blocks that a dialog shows are now.
struct ShownBlocks
{
    std::function<const Outline &()> outline;                    // of the source
    std::function<QList<int>()> rows;                            // of the block list
    std::function<void(const QList<TextChange> &changes)> write; // as one step
};

// The properties of one block of the source, each with an editor that suits it. What is set is written back
// into the source at once, as one undo step.
class frmWidget : public ModelessDialog
{
    Q_OBJECT

public:
    frmWidget(SourceBox &source, const PropertyChoices &choices, QWidget &owner);

    // Turns to another block: its name and class go into the caption, its properties into the list.
    // Blocks that are given are known by their place; otherwise a block is the first place that holds its
    // name in quotes. Of several the list shows what all have, and what is set goes to all.
    void turnTo(const QString &name, const QString &className, const ShownBlocks &blocks = {});
    // Fills lvBlock and the captured text from the source. Where the block has no properties, the captured
    // text is empty and the list stays as it was.
    void GetProperty(const QString &name);

signals:
    // The Source tab is to be shown, with the caret where the dialog has put it.
    void sourceWanted();
    void saveWanted();

private:
    void addKeys();
    QWidget *makeLost();
    // The block or blocks anew, from the source as it is.
    void capture();
    void captureAt(int block);
    void captureSeveral(const QList<int> &blocks);
    void take(const std::optional<BlockProperties> &block);
    void showRows(const QList<ListRows::Row> &rows);
    void editInSource();
    void showHint();
    void lvBlock_DblClick(int row);
    // Sets the content of the selected row, where that still is the property of the editor, and writes the
    // block back.
    void setContent(const QString &content);
    void setForAll(int row, const QString &content);
    void SaveProperty();
    void source_Change();
    // Where the source is ahead: before anything is written back into it.
    void catchUp();

    SourceBox &m_source;
    QString m_name; // of the block; the caption holds it too, but a name may hold what divides the caption
    ShownBlocks m_blocks;     // with functions where they are known by their place
    bool m_isSeveral = false; // of them
    qsizetype m_start = -1;   // of the captured text in the source, where the block is known by its place
    qsizetype m_lostAt = -1;  // in the captured text
    bool m_saving = false;
    LateWork m_capture; // waits while the rows are those of an older text
    ListRows m_rows;    // text = element name, sub-item 1 = content
    ListView *lvBlock;
    SourceBox *txtSnippet; // hidden: the text that a write-back replaces
    PropertyEditors *m_editors;
    QWidget *m_lost; // what is said there is about what a write-back would take out
    QLabel *lblLost;
};

} // namespace quillmere
