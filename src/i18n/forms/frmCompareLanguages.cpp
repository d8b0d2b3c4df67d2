#include "i18n/forms/frmCompareLanguages.h"

#include "controls/EmptyHint.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "i18n/forms/SpellMarks.h"
#include "i18n/forms/Spelling.h"
#include "i18n/forms/TranslationEdit.h"

#include <QAction>
#include <QBoxLayout>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>
#include <QStyledItemDelegate>
#include <QTableView>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{1000, 600}; // pixels
constexpr int kLanguagesWidth = 150;   // pixels
constexpr int kFirstColumn = 220;      // pixels, each
constexpr int kLinesTyped = 3;         // that a cell shows while one types in it

const QString kLeftOut = QStringLiteral("language/notCompared");

// Cells are typed into like the translation in the panel.
class CellDelegate : public QStyledItemDelegate
{
public:
    CellDelegate(Speller &speller, QObject *parent) : QStyledItemDelegate(parent), m_speller(speller) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                          const QModelIndex &index) const override
    {
        const QString language = index.model()->headerData(index.column(), Qt::Horizontal).toString();
        auto *edit = named(new TranslationEdit(parent), "txtCompared", language);
        m_speller.setLanguage(Spelling::isOn() ? language : QString());
        (new SpellMarks(m_speller, *edit))->setOn(Spelling::isOn()); // the document's
        edit->setTabChangesFocus(false);                             // the table goes to the next cell
        auto *self = const_cast<CellDelegate *>(this);
        connect(edit, &TranslationEdit::taken, self, [self, edit] {
            emit self->commitData(edit);
            emit self->closeEditor(edit);
        });
        connect(edit, &TranslationEdit::takenAndOn, self, [self, edit] {
            emit self->commitData(edit);
            emit self->closeEditor(edit, EditNextItem);
        });
        return edit;
    }
    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        auto *edit = static_cast<TranslationEdit *>(editor);
        // The table may tell of other cells while one types in this one.
        if (edit->document()->isModified())
            return;
        edit->begin(index.data(Qt::EditRole).toString());
        edit->selectAll();
        edit->document()->setModified(false);
    }
    void setModelData(QWidget *editor, QAbstractItemModel *rows, const QModelIndex &index) const override
    {
        rows->setData(index, static_cast<TranslationEdit *>(editor)->text(), Qt::EditRole);
    }
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &) const override
    {
        QRect place = option.rect;
        place.setHeight(kLinesTyped * option.fontMetrics.lineSpacing() + 12);
        place.moveBottom(std::min(place.bottom(), editor->parentWidget()->height()));
        place.moveTop(std::max(place.top(), 0));
        editor->setGeometry(place);
    }

private:
    Speller &m_speller;
};

} // namespace

frmCompareLanguages::frmCompareLanguages(QWidget &owner)
    : ModelessDialog(QStringLiteral("frmCompareLanguages"), owner),
      m_languages({tr("Language")}, ListRows::Checks::Yes),
      lvCompareLanguages(new ListView(QStringLiteral("lvCompareLanguages"), tr("Languages"), m_languages)),
      tblCompare(named(new QTableView, "tblCompare", tr("Strings in several languages"))),
      txtCompareFilter(named(new QLineEdit, "txtCompareFilter", tr("Filter"))),
      chkCompareMissing(named(new QCheckBox(tr("Only where &one is missing")), "chkCompareMissing",
                              tr("Only strings that one of the ticked languages does not translate"))),
      lblCompareFound(named(new QLabel, "lblCompareFound", tr("Number of strings"))),
      m_undo(new QAction(tr("Undo"), this)), m_redo(new QAction(tr("Redo"), this))
{
    setWindowTitle(tr("Compare Languages"));
    lvCompareLanguages->setFixedWidth(kLanguagesWidth);
    lvCompareLanguages->setToolTip(tr("The languages that have a column"));
    connect(&m_languages, &ListRows::checkChanged, &m_soon, qOverload<>(&QTimer::start));
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &frmCompareLanguages::chooseColumns);
    makeTable();
    makeSteps();
    auto *page = new QVBoxLayout(this);
    page->addLayout(makeFilter());
    auto *line = new QHBoxLayout;
    line->addWidget(lvCompareLanguages);
    line->addWidget(tblCompare, 1);
    page->addLayout(line, 1);
    setTabOrder(txtCompareFilter, chkCompareMissing);
    setTabOrder(chkCompareMissing, lvCompareLanguages);
    setTabOrder(lvCompareLanguages, tblCompare);
    scrollWhereSmall(*this);
    resize(kFirstSize.boundedTo(owner.screen()->availableSize() * 9 / 10));
}

QLayout *frmCompareLanguages::makeFilter()
{
    txtCompareFilter->setPlaceholderText(tr("Filter"));
    txtCompareFilter->setClearButtonEnabled(true);
    txtCompareFilter->setToolTip(tr("Shows only the strings that contain this in any language."));
    chkCompareMissing->setToolTip(tr("Shows only the strings that a ticked language does not translate."));
    connect(txtCompareFilter, &QLineEdit::textChanged, this, &frmCompareLanguages::filter);
    connect(chkCompareMissing, &QCheckBox::toggled, this, &frmCompareLanguages::filter);
    auto *line = new QHBoxLayout;
    line->addWidget(txtCompareFilter, 1);
    line->addWidget(chkCompareMissing);
    line->addWidget(lblCompareFound);
    return line;
}

void frmCompareLanguages::makeTable()
{
    tblCompare->setModel(&model);
    setEmptyHint(*tblCompare, tr("No string matches."));
    tblCompare->setItemDelegate(new CellDelegate(m_speller, tblCompare));
    tblCompare->setAlternatingRowColors(true);
    tblCompare->setWordWrap(false);
    tblCompare->verticalHeader()->hide();
    tblCompare->verticalHeader()->setDefaultSectionSize(tblCompare->fontMetrics().height() + 6);
    tblCompare->horizontalHeader()->setDefaultSectionSize(kFirstColumn);
    tblCompare->horizontalHeader()->setHighlightSections(false);
    tblCompare->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    tblCompare->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                QAbstractItemView::AnyKeyPressed);
    tblCompare->setToolTip(tr("Type in a cell to change it. Enter puts it into its language, Shift+Enter "
                              "breaks the line, Ctrl+Z takes it back."));
    connect(&model, &CompareModel::refused, this, [this](const QModelIndex &index) {
        const QPersistentModelIndex cell = index;
        QTimer::singleShot(0, this, [this, cell] {
            tblCompare->setCurrentIndex(cell);
            tblCompare->edit(cell);
        });
    });
}

void frmCompareLanguages::makeSteps()
{
    m_undo->setObjectName(QStringLiteral("compareUndo"));
    m_undo->setShortcut(QKeySequence::Undo);
    m_redo->setObjectName(QStringLiteral("compareRedo"));
    m_redo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    connect(m_undo, &QAction::triggered, this, &frmCompareLanguages::undoWanted);
    connect(m_redo, &QAction::triggered, this, &frmCompareLanguages::redoWanted);
    tblCompare->addActions({m_undo, m_redo});
    tblCompare->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (QAction *action : {m_undo, m_redo})
        action->setShortcutContext(Qt::WidgetShortcut); // a cell that is typed into has its own
    setSteps(false, false);
}

void frmCompareLanguages::setSteps(bool canUndo, bool canRedo)
{
    m_undo->setEnabled(canUndo);
    m_redo->setEnabled(canRedo);
}

void frmCompareLanguages::showEvent(QShowEvent *event)
{
    ModelessDialog::showEvent(event);
    txtCompareFilter->setFocus();
    emit shown();
}

void frmCompareLanguages::showLanguages(const QList<ComparedLanguage> &languages)
{
    m_table = LanguageTable(languages);
    QStringList before, now;
    for (const ListRows::Row &row : m_languages.rows())
        before.append(row.text);
    for (const ComparedLanguage &language : languages)
        now.append(language.name);
    if (before == now) {
        filter();
        return;
    }
    const QStringList leftOut = QSettings().value(kLeftOut).toStringList();
    QList<ListRows::Row> rows;
    for (const QString &name : std::as_const(now))
        rows.append({name, {}, !leftOut.contains(name)});
    m_languages.assign(rows);
    filter();
    chooseColumns();
}

QList<int> frmCompareLanguages::chosenLanguages() const
{
    QList<int> chosen;
    for (int language = 0; language < m_languages.count(); ++language) {
        if (m_languages.isChecked(language))
            chosen.append(language);
    }
    return chosen;
}

void frmCompareLanguages::chooseColumns()
{
    QStringList leftOut = QSettings().value(kLeftOut).toStringList();
    for (int language = 0; language < m_languages.count(); ++language) {
        const bool isChosen = m_languages.isChecked(language);
        tblCompare->setColumnHidden(language + 1, !isChosen);
        leftOut.removeAll(m_languages.text(language));
        if (!isChosen)
            leftOut.append(m_languages.text(language));
    }
    QSettings().setValue(kLeftOut, leftOut);
    filter();
}

void frmCompareLanguages::filter()
{
    const QList<int> rows =
        m_table.matching(txtCompareFilter->text(), chosenLanguages(), chkCompareMissing->isChecked());
    model.show(m_table, rows);
    lblCompareFound->setText(tr("%1 of %2").arg(rows.size()).arg(m_table.rows()));
}

} // namespace quillmere
