#include "naming/forms/frmRename.h"

#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "naming/Rename.h"
#include "naming/forms/PlaceRows.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include <limits>

namespace quillmere {

namespace {
constexpr QSize kFirstSize{1160, 520}; // pixels
}

frmRename::frmRename(const NamedThing &thing, const FoundPlaces &found,
                     std::shared_ptr<const ThemeIndex> index, const QString &folder,
                     std::function<bool(const QString &, const ThemeEdit &)> rename, QWidget *parent)
    : QDialog(parent), m_thing(thing), m_found(found), m_index(std::move(index)), m_folder(folder),
      m_rename(std::move(rename)),
      m_rows({tr("File"), tr("Line"), tr("Before"), tr("After")}, ListRows::Checks::Yes),
      txtRename(named(new QLineEdit(thing.name), "txtRename", tr("New name"))),
      lvRename(new ListView(QStringLiteral("lvRename"), tr("Places of the name"), m_rows)),
      lblRenameWhy(named(new QLabel, "lblRenameWhy", tr("Why not"))),
      lblRenameCount(named(new QLabel, "lblRenameCount", tr("Number of places"))),
      cmdRename(named(new QPushButton(tr("&Rename")), "cmdRename", tr("Rename in the ticked places")))
{
    setObjectName(QStringLiteral("frmRename"));
    setWindowTitle(tr("Rename %1").arg(wordFor(thing.kind)));
    lvRename->setColumnShares({10, 3, 21, 21});
    lvRename->setTextElideMode(Qt::ElideRight);
    markPlaces(*lvRename, m_found);
    lblRenameWhy->setTextFormat(Qt::PlainText);
    lblRenameWhy->setWordWrap(true);
    lblRenameCount->setTextFormat(Qt::PlainText);
    m_rows.assign(rowsOf(m_found, m_folder, &thing.name));
    connect(&m_rows, &ListRows::checkChanged, this, &frmRename::showCount);
    connect(&m_rows, &ListRows::edited, this, &frmRename::showCount); // ticks that are undone
    m_history.addTo(*lvRename);

    auto *column = new QVBoxLayout(this);
    column->addLayout(makeName());
    column->addWidget(lblRenameWhy);
    column->addWidget(lvRename, 1);
    column->addLayout(makeButtons());
    scrollWhereSmall(*this);
    resize(kFirstSize.boundedTo(parent->screen()->availableSize() * 9 / 10));
    txtRename_Change();
    txtRename->selectAll();
    txtRename->setFocus();
}

QLayout *frmRename::makeName()
{
    txtRename->setMaxLength(std::numeric_limits<int>::max()); // a theme's texts are never cut
    connect(txtRename, &QLineEdit::textChanged, this, &frmRename::txtRename_Change);
    txtRename->setToolTip(tr("The name from now on."));
    lvRename->setToolTip(tr("Every place of the name. Those with a tick are changed."));
    auto *label = new QLabel(tr("&New name:"));
    label->setBuddy(txtRename);
    auto *line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(txtRename, 1);
    return line;
}

QLayout *frmRename::makeButtons()
{
    auto *cancel = named(new QPushButton(tr("Cancel")), "cmdRenameCancel", tr("Close without renaming"));
    cmdRename->setDefault(true);
    cmdRename->setToolTip(tr("Renames in the ticked places, in all files at once."));
    cancel->setToolTip(tr("Closes this dialog without renaming."));
    cancel->setAutoDefault(false);
    connect(cmdRename, &QPushButton::clicked, this, &frmRename::cmdRename_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *line = new QHBoxLayout;
    line->addWidget(lblRenameCount, 1);
    line->addWidget(cmdRename);
    line->addWidget(cancel);
    return line;
}

void frmRename::txtRename_Change()
{
    const QString newName = txtRename->text();
    QList<ListRows::Row> rows = rowsOf(m_found, m_folder, &newName);
    for (qsizetype row = 0; row < rows.size(); ++row)
        rows[row].checked = m_rows.isChecked(int(row));
    m_rows.edit(std::move(rows));
    // Why it does not begin with a complaint: the name is still the old one.
    lblRenameWhy->setText(newName == m_thing.name ? tr("Type the new name.")
                                                  : whyNotRename(m_thing, newName, m_found, *m_index));
    showCount();
}

void frmRename::showCount()
{
    const QList<bool> isTaken = ticks();
    lblRenameCount->setText(placesInFiles(m_found, isTaken));
    cmdRename->setEnabled(isTaken.contains(true) && lblRenameWhy->text().isEmpty());
}

QList<bool> frmRename::ticks() const
{
    QList<bool> isTaken;
    for (const ListRows::Row &row : m_rows.rows())
        isTaken.append(row.checked);
    return isTaken;
}

void frmRename::cmdRename_Click()
{
    if (m_rename(txtRename->text(), editOf(m_found, ticks(), txtRename->text())))
        accept();
}

} // namespace quillmere
