#include "i18n/forms/frmImport.h"

#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "controls/Tips.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSet>

#include <algorithm>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{1000, 560}; // pixels
constexpr int kLeftOutHeight = 120;    // pixels
constexpr int kMostLeftOut = 1000;     // lines that are shown
constexpr int kMostInTitle = 60;       // characters of the language

constexpr Tip kTips[] = {
    {"lvImport", "What the file would change. Rows with a tick are imported."},
    {"txtImportLeftOut", "Lines of the file that cannot be imported, and why."},
    {"cmdImport", "Puts the ticked translations into the language. Save Trans writes them."},
    {"cmdImportCancel", "Closes this dialog without importing."},
};

QString nameOf(ImportChange::Kind kind)
{
    switch (kind) {
    case ImportChange::Kind::New:
        return frmImport::tr("new");
    case ImportChange::Kind::Changed:
        return frmImport::tr("changed");
    case ImportChange::Kind::Gone:
        break;
    }
    return frmImport::tr("gone");
}

QString nameOf(const ImportChange &change, bool isChoice)
{
    const QString name = isChoice ? frmImport::tr("conflicting") : nameOf(change.kind());
    return change.isFuzzy ? frmImport::tr("%1, fuzzy").arg(name) : name;
}

// All rows are as high as the first.
QString inCell(QString text)
{
    return inOneLine(text.replace(u'\n', QChar(0x21B5)));
}

} // namespace

frmImport::frmImport(const QString &file, const QString &language, const ImportPlan &plan,
                     std::function<void(const QList<ImportChange> &)> take, QWidget *parent)
    : QDialog(parent), m_changes(plan.changes + plan.choices), m_choices(plan.changes.size()),
      m_absent(plan.absent), m_take(std::move(take)),
      m_rows({tr("Source"), tr("Now"), tr("New"), tr("Change")}, ListRows::Checks::Yes),
      lvImport(new ListView(QStringLiteral("lvImport"), tr("What the file changes"), m_rows)),
      lblImportNone(named(new QLabel(tr("The file changes no translation of this language.")),
                          "lblImportNone", tr("Why the list is empty"))),
      lblImportCount(named(new QLabel, "lblImportCount", tr("Number of translations"))),
      cmdImport(named(new QPushButton(tr("&Import")), "cmdImport", tr("Take the ticked translations"))),
      cmdImportCancel(named(new QPushButton, "cmdImportCancel", tr("Close without importing")))
{
    setObjectName(QStringLiteral("frmImport"));
    setWindowTitle(tr("Import %1 into %2").arg(file, inOneLine(language.left(kMostInTitle))));
    lvImport->setColumnShares({6, 6, 6, 2});
    lvImport->setTextElideMode(Qt::ElideRight);
    lblImportCount->setTextFormat(Qt::PlainText);
    lblImportNone->setAlignment(Qt::AlignCenter);
    QList<ListRows::Row> rows;
    for (qsizetype i = 0; i < m_changes.size(); ++i) {
        const ImportChange &change = m_changes[i];
        const bool isChoice = i >= m_choices;
        rows.append({inCell(change.source),
                     {inCell(change.before), inCell(change.after), nameOf(change, isChoice)},
                     !isChoice});
    }
    m_rows.assign(rows);
    connect(&m_rows, &ListRows::checkChanged, this, &frmImport::lvImport_Check);
    connect(&m_rows, &ListRows::edited, this, &frmImport::showCount); // ticks that are undone
    m_history.addTo(*lvImport);

    auto *column = new QVBoxLayout(this);
    column->addWidget(lvImport, 1);
    column->addWidget(lblImportNone, 1);
    lvImport->setVisible(!m_rows.isEmpty());
    lblImportNone->setVisible(m_rows.isEmpty());
    makeLeftOut(plan, *column);
    column->addLayout(makeButtons());
    giveTips(*this, kTips);
    scrollWhereSmall(*this);
    resize(kFirstSize.boundedTo(parent->screen()->availableSize() * 9 / 10));
    showCount();
    if (!m_rows.isEmpty()) {
        lvImport->setCurrentIndex(m_rows.index(0, 0));
        lvImport->setFocus();
    }
}

QLayout *frmImport::makeButtons()
{
    cmdImportCancel->setText(m_rows.isEmpty() ? tr("Close") : tr("Cancel"));
    cmdImportCancel->setAutoDefault(false);
    (m_rows.isEmpty() ? cmdImportCancel : cmdImport)->setDefault(true);
    connect(cmdImport, &QPushButton::clicked, this, &frmImport::cmdImport_Click);
    connect(cmdImportCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *line = new QHBoxLayout;
    line->addWidget(lblImportCount, 1);
    const struct
    {
        const char *name;
        QString caption, says;
        bool ticks;
    } ticks[] = {{"cmdImportAll", tr("Tick &All"), tr("Tick every translation"), true},
                 {"cmdImportNone", tr("Tick &None"), tr("Tick no translation"), false}};
    for (const auto &each : ticks) {
        auto *button = named(new QPushButton(each.caption), each.name, each.says);
        button->setToolTip(each.says);
        button->setAutoDefault(false);
        button->setVisible(!m_rows.isEmpty());
        connect(button, &QPushButton::clicked, this, [this, on = each.ticks] { tickAll(on); });
        line->addWidget(button);
    }
    line->addWidget(cmdImport);
    line->addWidget(cmdImportCancel);
    return line;
}

// What the file says beside that, and cannot be taken.
void frmImport::makeLeftOut(const ImportPlan &plan, QLayout &column)
{
    QStringList lines;
    for (const QList<LineNote> *notes : {&plan.refused, &plan.unknown}) {
        for (const LineNote &note : *notes)
            lines.append(tr("Line %1: %2").arg(note.line).arg(inOneLine(note.text)));
    }
    if (const qsizetype more = lines.size() - kMostLeftOut; more > 0) {
        lines.resize(kMostLeftOut);
        lines.append(tr("and %1 more").arg(more));
    }
    if (lines.isEmpty())
        return;
    auto *leftOut = named(new QPlainTextEdit(lines.join(u'\n')), "txtImportLeftOut", tr("What is left out"));
    leftOut->setReadOnly(true);
    leftOut->setTabChangesFocus(true);
    leftOut->setFixedHeight(kLeftOutHeight);
    auto *label = new QLabel(tr("&Left out:"));
    label->setBuddy(leftOut);
    column.addWidget(label);
    column.addWidget(leftOut);
}

// A string has one translation: a tick at one takes it from the others for the same string.
void frmImport::lvImport_Check(int row)
{
    if (m_rows.isChecked(row)) {
        for (int other = int(m_choices); other < m_rows.count(); ++other) {
            if (other != row && m_changes[other].row == m_changes[row].row && m_rows.isChecked(other))
                m_rows.setChecked(other, false);
        }
    }
    showCount();
}

// Of several translations of one string the first is ticked, where none is.
void frmImport::tickAll(bool on)
{
    QList<ListRows::Row> rows = m_rows.rows();
    QSet<int> ticked; // strings
    for (int row = int(m_choices); row < rows.size(); ++row) {
        if (rows.at(row).checked)
            ticked.insert(m_changes[row].row);
    }
    for (int row = 0; row < rows.size(); ++row) {
        bool &checked = rows[row].checked;
        if (!on || row < m_choices) {
            checked = on;
        } else if (!checked && !ticked.contains(m_changes[row].row)) {
            checked = true;
            ticked.insert(m_changes[row].row);
        }
    }
    m_rows.edit(rows);
}

void frmImport::showCount()
{
    const auto ticked = std::count_if(m_rows.rows().cbegin(), m_rows.rows().cend(),
                                      [](const ListRows::Row &row) { return row.checked; });
    QStringList counts;
    if (!m_rows.isEmpty())
        counts.append(tr("%1 of %2 translations").arg(ticked).arg(m_rows.count()));
    if (m_absent > 0)
        counts.append(tr("strings that the file lacks, and that stay: %1").arg(m_absent));
    lblImportCount->setText(counts.join(QStringLiteral("; ")));
    cmdImport->setEnabled(ticked > 0);
}

void frmImport::cmdImport_Click()
{
    QList<ImportChange> taken;
    for (int row = 0; row < m_rows.count(); ++row) {
        if (m_rows.isChecked(row))
            taken.append(m_changes[row]);
    }
    m_take(taken);
    accept();
}

} // namespace quillmere
