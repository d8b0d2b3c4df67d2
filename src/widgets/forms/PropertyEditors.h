#pragma once

#include "rows/ListRows.h"

#include <QStackedWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quillmere {

class CaptionBox;
class ColourCombo;

// The names that the theme offers for a property, as the rows of its catalogues: sub-item 1 of each; sub-item
// 2 of a colour is its code.
struct PropertyChoices
{
    const ListRows &lvFont;
    const ListRows &lvImage;
    const ListRows &lvColor;
};

// The editors of the properties dialog, one in sight: four numbers for a rect, three colours, a choice, or a
// text; or a hint while no property is edited.
class PropertyEditors : public QStackedWidget
{
    Q_OBJECT

public:
    explicit PropertyEditors(const PropertyChoices &choices);

    void showHint(const QString &hint);
    // Shows the editor that suits a property, with its value, and gives it the keyboard.
    void edit(const QString &name, const QString &value);
    // Of which what is set is the content.
    const QString &property() const { return m_property; }
    // What is typed stays, and cannot be undone any more.
    void forgetTyping();

signals:
    void contentSet(const QString &content);

protected:
    // Up and Down count in the boxes of numbers; a box that has nothing to undo leaves that to the source.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *numberBox(const char *name, const QString &accessibleName);
    QPushButton *setButton(const char *name, void (PropertyEditors::*click)());
    QWidget *makeRect();
    QWidget *makeColour();
    QWidget *makeCombo();
    QWidget *makeText();
    void showEditor(CaptionBox *editor, QPushButton *button, const QString &property);
    void chooseFrom(const QStringList &choices, const QString &value);
    void cmdRec_Click();
    void cmdColor_Click();
    void CmdCombo_Click();
    void cmdTxt_Click();

    PropertyChoices m_choices;
    QString m_property;
    QLabel *m_hint;
    CaptionBox *frRect, *frColor, *frCombo, *frTxt;
    QLineEdit *txtL, *txtT, *txtW, *txtH, *txtTxt;
    QList<ColourCombo *> cmbColor;
    QComboBox *CmbVal;
    QPushButton *cmdRec, *cmdColor, *CmdCombo, *cmdTxt;
};

} // namespace quillmere
