#pragma once

#include "controls/LateWork.h"
#include "controls/ModelessDialog.h"
#include "rows/ListRows.h"

#include <QList>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace quillmere {

class CaptionBox;
class ColourCombo;
class ListView;
class SourceBox;

// The names that the theme offers for a property, as the rows of its catalogues: sub-item 1 of each; sub-item
// 2 of a colour is its code.
struct PropertyChoices
{
    const ListRows &lvFont;
    const ListRows &lvImage;
    const ListRows &lvColor;
};

// The properties of one block of the source, each with an editor that suits it. What is set is written back
// into the source at once, as one undo step.
class frmWidget : public ModelessDialog
{
    Q_OBJECT

public:
    frmWidget(SourceBox &source, const PropertyChoices &choices, QWidget &owner);

    // Turns to another block: its name and class go into the caption, its properties into the list.
    void turnTo(const QString &name, const QString &className);
    // Fills lvBlock and the captured text from the source. Where the block has no properties, the captured
    // text is empty and the list stays as it was.
    void GetProperty(const QString &name);

private:
    QLineEdit *numberBox(const char *name, const QString &accessibleName);
    QPushButton *setButton(const char *name, void (frmWidget::*click)());
    QWidget *makeRect();
    QWidget *makeColour();
    QWidget *makeCombo();
    QWidget *makeText();
    void showEditor(CaptionBox *editor, QPushButton *button, const QString &property);
    void showHint();
    void lvBlock_DblClick(int row);
    void chooseFrom(const QStringList &choices, const QString &value);
    void cmdRec_Click();
    void cmdColor_Click();
    void CmdCombo_Click();
    void cmdTxt_Click();
    // Sets the content of the selected row, where that still is the property of the editor, and writes the
    // block back.
    void setContent(const QString &content);
    void SaveProperty();
    void source_Change();
    // Where the source is ahead: before anything is written back into it.
    void catchUp();

    SourceBox &m_source;
    PropertyChoices m_choices;
    QString m_name; // of the block; the caption holds it too, but a name may hold what divides the caption
    QString m_property; // that the editor is for
    bool m_saving = false;
    LateWork m_capture; // waits while the rows are those of an older text
    ListRows m_rows;    // text = element name, sub-item 1 = content
    ListView *lvBlock;
    SourceBox *txtSnippet; // hidden: the text that a write-back replaces
    QStackedWidget *m_editors;
    QLabel *m_hint;
    CaptionBox *frRect, *frColor, *frCombo, *frTxt;
    QLineEdit *txtL, *txtT, *txtW, *txtH, *txtTxt;
    QList<ColourCombo *> cmbColor;
    QComboBox *CmbVal;
    QPushButton *cmdRec, *cmdColor, *CmdCombo, *cmdTxt;
};

} // namespace quillmere
