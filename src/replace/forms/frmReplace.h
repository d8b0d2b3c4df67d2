#pragma once

#include "controls/ModelessDialog.h"
#include "markup/Matching.h"
#include "outline/Document.h"
#include "rows/ListRows.h"

#include <QUndoStack>

#include <functional>

class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace quillmere {

class Files;
class ListView;
class Talk;

// The source text as the dialog sees it. Positions are 0-based and count CR LF as two.
struct SourceAccess
{
    std::function<QString()> text;
    std::function<void(const QString &text)> rewrite; // one undo step
    std::function<qsizetype()> selectionStart;
    std::function<qsizetype()> selectionLength;
    std::function<void(qsizetype start, qsizetype length)>
        select;                         // scrolls there and gives the box the focus of its window
    std::function<CodePageRule()> rule; // by which the text's bytes became text
    std::function<void()> save, undo, redo;
};

// The list of texts to replace, kept in replace.ini, and finding and replacing in the source.
class frmReplace : public ModelessDialog
{
    Q_OBJECT

public:
    frmReplace(SourceAccess source, Files &files, Talk &talk, QWidget &owner);

    // Shows the dialog with the list as the file has it; one that is open already keeps its list.
    void open() override;
    // Selects every pair.
    void SelectRepAll();
    // Applies the selected pairs to the source, in list order.
    void ReplaceText();
    // Selects the next place of the find text; at the end a message, and the next search begins at the top.
    // False where there is no find text.
    bool findNext();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Button;
    class Step;
    QGroupBox *makeFrame(const char *name, const char *caption);
    void addButtons(QLayout *layout, std::initializer_list<Button> buttons);
    QGroupBox *makeTexts();
    QGroupBox *makeNavigation();
    QGroupBox *makeFinds();
    QGroupBox *makeReplacements();
    QString replaceIni() const;
    QList<Replacement> pairs() const;
    void setPairs(const QList<Replacement> &pairs);
    // What is in the boxes, with the line ends of the source.
    Replacement typed() const;
    int currentPair() const;
    void makeCurrent(int row);
    void List_Click(int row);
    void LoadReplaceList();
    void Added();
    void Edit();
    void Delete();
    void Save();
    void Deselect();
    void ReplaceAll();
    void rewrite(const QList<Replacement> &pairs); // and says how much has changed
    void Replace();

    SourceAccess m_source;
    Files &m_files;
    Document m_file; // replace.ini
    Talk &m_talk;
    ListRows m_finds, m_replacements; // row i of one belongs to row i of the other
    QUndoStack m_steps;               // of the pairs, since the dialog was opened
    QLineEdit *Text1, *Text2;
    ListView *List1, *List2;
    QLabel *m_hint;
};

} // namespace quillmere
