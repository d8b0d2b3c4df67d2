#include "replace/forms/frmReplace.h"

#include "asking/LineCount.h"
#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "controls/EditingKeys.h"
#include "controls/EmptyHint.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "controls/RowsHistory.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "replace/ReplaceList.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include <limits>
#include <utility>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{720, 520}; // pixels
const QString kTitle = QStringLiteral("Simpan Text");

} // namespace

struct frmReplace::Button
{
    const char *name;
    const char *caption;
    QString what; // what a screen reader says, and the tooltip
    void (frmReplace::*click)();
};

// What one button has made of the pairs. They stand in two lists, which go back together.
class frmReplace::Step : public QUndoCommand
{
public:
    Step(frmReplace &dialog, QList<Replacement> before, QList<Replacement> after)
        : m_dialog(dialog), m_before(std::move(before)), m_after(std::move(after))
    {
    }
    void undo() override { m_dialog.setPairs(m_before); }
    void redo() override
    {
        if (m_dialog.pairs() != m_after) // they are there when the step is made
            m_dialog.setPairs(m_after);
    }

private:
    frmReplace &m_dialog;
    QList<Replacement> m_before, m_after;
};

frmReplace::frmReplace(SourceAccess source, Files &files, Talk &talk, QWidget &owner)
    : ModelessDialog(QStringLiteral("frmReplace"), owner), m_source(std::move(source)), m_files(files),
      m_talk(talk), m_finds({QStringLiteral("Text Find")}), m_replacements({QStringLiteral("Text Replace")}),
      Text1(named(new QLineEdit, "Text1", QStringLiteral("Text Find"))),
      Text2(named(new QLineEdit, "Text2", QStringLiteral("Text Replace"))),
      List1(new ListView(QStringLiteral("List1"), tr("Find texts"), m_finds)),
      List2(new ListView(QStringLiteral("List2"), tr("Replacement texts"), m_replacements)),
      m_hint(new QLabel)
{
    setWindowTitle(tr("Replace"));
    for (QLineEdit *box : {Text1, Text2}) {
        box->setMaxLength(std::numeric_limits<int>::max());
        box->setClearButtonEnabled(true);
        box->installEventFilter(this);
    }
    Text1->setToolTip(tr("The text to find in the source."));
    Text2->setToolTip(tr("The text to put in its place."));
    List1->setToolTip(tr("The texts of the list to find. Click one to see the pair above."));
    List2->setToolTip(tr("What each text of the list is replaced by."));
    setEmptyHint(*List1, tr("Texts to find. Type one above and add it, or load a list."));
    setEmptyHint(*List2, tr("What each is replaced by."));
    List1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (ListView *list : {List1, List2}) {
        list->setTextElideMode(Qt::ElideRight);
        list->setSortable(false); // the two of a pair stand side by side
        addUndo(m_steps, *list);
        connect(list, &ListView::rowClicked, this, &frmReplace::List_Click);
    }
    connect(List1->verticalScrollBar(), &QScrollBar::valueChanged, List2->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(List2->verticalScrollBar(), &QScrollBar::valueChanged, List1->verticalScrollBar(),
            &QScrollBar::setValue);
    m_hint->setWordWrap(true);
    m_hint->hide();

    auto *grid = new QGridLayout(this);
    grid->addWidget(makeTexts(), 0, 0, 1, 2);
    grid->addWidget(makeNavigation(), 1, 0, 1, 2);
    grid->addWidget(makeFinds(), 2, 0);
    grid->addWidget(makeReplacements(), 2, 1);
    grid->addWidget(m_hint, 3, 0, 1, 2);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    scrollWhereSmall(*this);
    new EditingKeys(*this, {m_source.save, m_source.undo, m_source.redo});
    resize(kFirstSize);
}

QGroupBox *frmReplace::makeFrame(const char *name, const char *caption)
{
    auto *frame = new QGroupBox(QLatin1String(caption), this);
    frame->setObjectName(QLatin1String(name));
    return frame;
}

void frmReplace::addButtons(QLayout *layout, std::initializer_list<Button> buttons)
{
    for (const Button &button : buttons) {
        auto *made = named(new QPushButton(QLatin1String(button.caption)), button.name, button.what);
        made->setToolTip(button.what);
        connect(made, &QPushButton::clicked, this, [this, click = button.click] {
            m_hint->hide();
            const QList<Replacement> before = pairs();
            m_talk.run([this, click] { (this->*click)(); });
            if (const QList<Replacement> after = pairs(); after != before)
                m_steps.push(new Step(*this, before, after));
        });
        layout->addWidget(made);
    }
}

QGroupBox *frmReplace::makeTexts()
{
    QGroupBox *frame = makeFrame("Frame1", "Text Properties ");
    auto *grid = new QGridLayout(frame);
    int line = 0;
    for (QLineEdit *box : {Text1, Text2}) {
        grid->addWidget(new QLabel(box->accessibleName()), line, 0);
        grid->addWidget(box, line++, 1);
    }
    return frame;
}

QGroupBox *frmReplace::makeNavigation()
{
    QGroupBox *frame = makeFrame("Frame2", " Navigation ");
    addButtons(
        new QHBoxLayout(frame),
        {{"Command1", "&Added", tr("Add the two texts to the end of the list"), &frmReplace::Added},
         {"Command2", "&Edit", tr("Replace the current pair with the two texts, at the end of the list"),
          &frmReplace::Edit},
         {"Command3", "&Delete", tr("Remove the current pair from the list"), &frmReplace::Delete},
         {"Command4", "&Save", tr("Save the list"), &frmReplace::Save},
         {"Command8", "Re&frash", tr("Read the saved list again"), &frmReplace::LoadReplaceList}});
    return frame;
}

QGroupBox *frmReplace::makeFinds()
{
    QGroupBox *frame = makeFrame("Frame3", "List Replace ");
    auto *column = new QVBoxLayout(frame);
    column->addWidget(List1, 1);
    auto *line = new QHBoxLayout;
    column->addLayout(line);
    addButtons(line,
               {{"Command6", "Se&lect All", tr("Select every pair"), &frmReplace::SelectRepAll},
                {"Command5", "Desele&ct", tr("Select no pair"), &frmReplace::Deselect},
                {"Command7", "&Replace All", tr("Apply the selected pairs to the source, in their order"),
                 &frmReplace::ReplaceText}});
    return frame;
}

QGroupBox *frmReplace::makeReplacements()
{
    QGroupBox *frame = makeFrame("Frame4", "Clear Text ");
    auto *column = new QVBoxLayout(frame);
    column->addWidget(List2, 1);
    auto *line = new QHBoxLayout;
    column->addLayout(line);
    addButtons(line, {{"Command9", "R&eplace All", tr("Replace the find text everywhere in the source"),
                       &frmReplace::ReplaceAll},
                      {"Command12", "&Replace", tr("Replace what is selected in the source"),
                       &frmReplace::Replace}});
    auto *next =
        named(new QPushButton(QStringLiteral("&Find Next")), "Command13", tr("Find the next place (F3)"));
    next->setToolTip(next->accessibleName());
    next->setDefault(true); // Enter in a text box
    connect(next, &QPushButton::clicked, this, [this] {
        if (!findNext())
            Text1->setFocus();
    });
    line->addWidget(next);
    return frame;
}

void frmReplace::open()
{
    if (!isVisible()) {
        m_hint->hide();
        LoadReplaceList();
        m_steps.clear();
    }
    present(Keyboard::Takes);
    Text1->setFocus();
    Text1->selectAll();
}

bool frmReplace::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QLineEdit *>(watched);
    if (!box || event->type() != QEvent::KeyPress || box->text().isEmpty() ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return ModelessDialog::eventFilter(watched, event);
    box->clear(); // and the dialog stays
    return true;
}

QString frmReplace::replaceIni() const
{
    return joinPath(m_files.programFolder(), u"replace.ini");
}

QList<Replacement> frmReplace::pairs() const
{
    QList<Replacement> pairs;
    for (int row = 0; row < m_finds.count(); ++row)
        pairs.append({m_finds.text(row), m_replacements.text(row)});
    return pairs;
}

void frmReplace::setPairs(const QList<Replacement> &pairs)
{
    QList<ListRows::Row> finds, replacements;
    for (const Replacement &pair : pairs) {
        finds.append({pair.from, {}});
        replacements.append({pair.to, {}});
    }
    m_finds.assign(finds);
    m_replacements.assign(replacements);
}

Replacement frmReplace::typed() const
{
    return {withSourceLineEnds(Text1->text()), withSourceLineEnds(Text2->text())};
}

int frmReplace::currentPair() const
{
    return List1->currentIndex().row();
}

// The selection says which pairs are applied, so being current must not change it. -1 for none.
void frmReplace::makeCurrent(int row)
{
    List1->selectionModel()->setCurrentIndex(m_finds.index(row, 0), QItemSelectionModel::NoUpdate);
    List2->setCurrentIndex(m_replacements.index(row, 0));
}

void frmReplace::List_Click(int row)
{
    makeCurrent(row);
    Text1->setText(m_finds.text(row));
    Text2->setText(m_replacements.text(row));
}

void frmReplace::LoadReplaceList()
{
    m_file = Document::open(m_files, replaceIni(), {}, m_source.rule());
    setPairs(readReplaceList(m_file.text()));
}

void frmReplace::Added()
{
    const Replacement pair = typed();
    m_finds.add(pair.from);
    m_replacements.add(pair.to);
    List1->scrollToBottom();
}

void frmReplace::Edit()
{
    if (currentPair() < 0)
        return;
    Delete();
    Added();
    makeCurrent(m_finds.count() - 1);
}

void frmReplace::Delete()
{
    const int row = currentPair();
    if (row < 0)
        return;
    m_finds.remove(row);
    m_replacements.remove(row);
    makeCurrent(-1); // or the boxes would hold another pair than the current one, and Edit would replace it
}

void frmReplace::Save()
{
    const QList<Replacement> saved = pairs();
    const QString question =
        m_files.loaded().savingQuestion(QStringLiteral("Benar akan menyimapn text replace?"), replaceIni());
    const bool write = m_talk.askAbout(
        kTitle, question, savingFacts(replaceIni(), replaceListText(saved), m_file.encoding().rule));
    if (write) {
        m_file.setPath(replaceIni(), {});
        m_file.saveOwn(m_files, replaceListText(saved));
        m_talk.tell(kTitle, QStringLiteral("Tersimpan"), Talk::Icon::Information);
    }
    LoadReplaceList();
    if (write && pairs() != saved) {
        m_hint->setText(
            tr("Some texts came back changed: the file keeps one line of 254 characters for a text, "
               "without blanks or a pair of quotes around it."));
        m_hint->show();
    }
}

void frmReplace::SelectRepAll()
{
    List1->selectAll();
}

void frmReplace::Deselect()
{
    List1->clearSelection();
}

void frmReplace::ReplaceText()
{
    QList<Replacement> selected;
    for (int row = 0; row < m_finds.count(); ++row) {
        if (List1->selectionModel()->isRowSelected(row, {}))
            selected.append({m_finds.text(row), m_replacements.text(row)});
    }
    makeCurrent(m_finds.count() - 1);
    if (selected.isEmpty())
        m_talk.say(tr("No pair is selected: nothing is replaced."));
    rewrite(selected);
}

void frmReplace::ReplaceAll()
{
    rewrite({typed()});
}

void frmReplace::rewrite(const QList<Replacement> &pairs)
{
    const QString before = m_source.text();
    QString after = before;
    m_source.rewrite(replaceAllIgnoringCase(after, pairs));
    if (pairs.isEmpty())
        return;
    const QString said =
        after == before ? tr("Nothing was found to replace.") : changedLinesText(before, after);
    m_talk.sayUntilEdit(said);
    m_hint->setText(said); // the dialog may lie over the status line
    m_hint->show();
}

void frmReplace::Replace()
{
    const QString to = typed().to;
    const qsizetype start = m_source.selectionStart();
    m_source.rewrite(m_source.text().replace(start, m_source.selectionLength(), to));
    m_source.select(start, to.size());
}

bool frmReplace::findNext()
{
    const QString find = typed().from;
    if (find.isEmpty())
        return false;
    const qsizetype behind = m_source.selectionStart() + m_source.selectionLength();
    const qsizetype hit = indexOfIgnoringCase(m_source.text(), find, behind);
    if (hit < 0)
        m_talk.tell(u"Find " + find, u"End of find " + find, Talk::Icon::Information);
    m_source.select(std::max<qsizetype>(hit, 0), hit < 0 ? 0 : find.size());
    return true;
}

} // namespace quillmere
