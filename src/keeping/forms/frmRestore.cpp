#include "keeping/forms/frmRestore.h"

#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "controls/Scheme.h"
#include "keeping/VersionPreview.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>

#include <algorithm>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{960, 720}; // pixels
const QString kIgnoreIndentation = QStringLiteral("restore/ignoreIndentation");

// The grounds of lines that go and of lines that come, readable under the palette's own text.
QColor groundOf(VersionPreview::Kind kind, bool dark)
{
    if (kind == VersionPreview::Kind::Removed)
        return dark ? QColor(0x5C, 0x24, 0x24) : QColor(0xFF, 0xDD, 0xDD);
    return dark ? QColor(0x1E, 0x4A, 0x26) : QColor(0xD8, 0xF5, 0xD8);
}

void showLines(QPlainTextEdit &box, const QList<VersionPreview::Line> &lines)
{
    using Kind = VersionPreview::Kind;
    const QPalette &palette = box.palette();
    const bool dark = isDark(palette);
    box.clear();
    QTextCursor cursor(box.document());
    cursor.beginEditBlock();
    for (const VersionPreview::Line &line : lines) {
        QTextBlockFormat block;
        QTextCharFormat text;
        text.setForeground(
            palette.color(line.kind == Kind::Place ? QPalette::PlaceholderText : QPalette::Text));
        // Who cannot tell red from green has the signs.
        QString sign = QStringLiteral("  ");
        if (line.kind == Kind::Removed || line.kind == Kind::Added) {
            sign = line.kind == Kind::Removed ? QStringLiteral("- ") : QStringLiteral("+ ");
            block.setBackground(groundOf(line.kind, dark));
        }
        if (!cursor.atStart())
            cursor.insertBlock();
        cursor.setBlockFormat(block);
        cursor.insertText(line.kind == Kind::Place ? line.text : QString(sign + line.text), text);
    }
    cursor.endEditBlock();
    box.moveCursor(QTextCursor::Start);
    box.horizontalScrollBar()->setValue(0);
}

} // namespace

frmRestore::frmRestore(const QString &theme, const QStringList &leadsTo, Files &files, Talk &talk,
                       QWidget *parent)
    : QDialog(parent), m_theme(theme), m_outside(Files::placesOutside(leadsTo, theme)), m_files(files),
      m_talk(talk), m_rows({tr("File"), tr("Date"), tr("Bytes")}),
      txtFilter(named(new QLineEdit, "txtFilter", tr("Show only files whose names contain this text"))),
      lvVersions(new ListView(QStringLiteral("lvVersions"), tr("Backed-up versions, newest first"), m_rows)),
      m_difference(new QWidget), lblEmpty(named(new QLabel, "lblEmpty", tr("Why the list is empty"))),
      lblDifference(named(new QLabel, "lblDifference", tr("What restoring changes"))),
      chkIndentation(named(new QCheckBox(tr("Ignore &Indentation")), "chkIndentation",
                           tr("Leave out lines that differ only in their indentation"))),
      txtDifference(named(new QPlainTextEdit, "txtDifference", tr("Lines that restoring changes"))),
      cmdRestore(named(new QPushButton(tr("&Restore")), "cmdRestore", tr("Restore the selected version"))),
      cmdClose(named(new QPushButton(tr("&Close")), "cmdClose", tr("Close")))
{
    setObjectName(QStringLiteral("frmRestore"));
    setWindowTitle(tr("Restore"));
    auto *parts = new QSplitter(Qt::Vertical);
    parts->addWidget(makeList());
    makeDifference();
    parts->addWidget(m_difference);
    parts->setChildrenCollapsible(false);
    auto *column = new QVBoxLayout(this);
    column->addWidget(parts, 1);
    column->addLayout(makeButtons());
    scrollWhereSmall(*this);
    resize(kFirstSize.boundedTo(parent->screen()->availableSize() * 9 / 10));
    loadVersions();
    (m_rows.isEmpty() ? static_cast<QWidget *>(cmdClose) : lvVersions)->setFocus();
}

QWidget *frmRestore::makeList()
{
    txtFilter->setClearButtonEnabled(true);
    txtFilter->setPlaceholderText(tr("Part of a file name"));
    txtFilter->installEventFilter(this);
    connect(txtFilter, &QLineEdit::textChanged, this, &frmRestore::showVersions);
    lvVersions->setColumnShares({6, 2, 1});
    lvVersions->setOpenCaption(tr("Restore"));
    lvVersions->setSortable(false); // by what is behind the texts of the rows
    QHeaderView *header = lvVersions->header();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    connect(header, &QHeaderView::sectionClicked, this, &frmRestore::sortBy);
    connect(lvVersions, &ListView::rowOpened, this, &frmRestore::cmdRestore_Click);
    connect(lvVersions->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmRestore::showDifference);
    txtFilter->setToolTip(tr("Shows only the files whose names contain this."));
    lvVersions->setToolTip(tr("Backed-up versions of the theme's files. Double-click one to restore it."));
    lblEmpty->setWordWrap(true);
    lblEmpty->setTextFormat(Qt::PlainText);
    lblEmpty->setAlignment(Qt::AlignCenter);

    auto *label = new QLabel(tr("&File:"));
    label->setBuddy(txtFilter);
    auto *line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(txtFilter, 1);
    auto *list = new QWidget;
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins({});
    column->addLayout(line);
    column->addWidget(lvVersions, 1);
    column->addWidget(lblEmpty, 1);
    return list;
}

void frmRestore::makeDifference()
{
    lblDifference->setTextFormat(Qt::PlainText);
    lblDifference->setWordWrap(true);
    chkIndentation->setToolTip(chkIndentation->accessibleName());
    chkIndentation->setChecked(QSettings().value(kIgnoreIndentation, true).toBool());
    connect(chkIndentation, &QCheckBox::toggled, this, [this](bool ignored) {
        QSettings().setValue(kIgnoreIndentation, ignored);
        showDifference();
    });
    txtDifference->setReadOnly(true);
    txtDifference->setToolTip(tr("The lines that restoring adds and removes."));
    cmdRestore->setToolTip(tr("Restores the selected version. The current file is backed up."));
    cmdClose->setToolTip(tr("Closes this dialog and restores nothing."));
    txtDifference->setUndoRedoEnabled(false);
    txtDifference->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtDifference->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtDifference->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtDifference->setTabChangesFocus(true);
    auto *column = new QVBoxLayout(m_difference);
    column->setContentsMargins({});
    auto *line = new QHBoxLayout;
    line->addWidget(lblDifference, 1);
    line->addWidget(chkIndentation, 0, Qt::AlignTop);
    column->addLayout(line);
    column->addWidget(txtDifference, 1);
}

QLayout *frmRestore::makeButtons()
{
    auto *what =
        new QLabel(tr("At most %1 versions of a file are kept, and %2 MB of a theme; the oldest go first.")
                       .arg(kMostVersions)
                       .arg(kMostBytes / 1'000'000));
    cmdRestore->setDefault(true);
    cmdClose->setAutoDefault(false);
    connect(cmdRestore, &QPushButton::clicked, this, &frmRestore::cmdRestore_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    auto *line = new QHBoxLayout;
    line->addWidget(what, 1);
    line->addWidget(cmdRestore);
    line->addWidget(cmdClose);
    return line;
}

void frmRestore::loadVersions()
{
    if (!m_theme.isEmpty())
        m_talk.runLong(tr("Looking for versions"), [this](const Progress &progress) {
            m_versions = m_files.backups().versionsBelow(m_theme, progress, m_outside);
        });
    m_all.clear();
    for (const Version &version : std::as_const(m_versions))
        m_all.append({version.name, {timeText(version), QString::number(version.size)}});
    showVersions();
}

void frmRestore::showVersions()
{
    m_shown.clear();
    for (qsizetype i = 0; i < m_versions.size(); ++i) {
        if (m_versions[i].name.contains(txtFilter->text(), Qt::CaseInsensitive))
            m_shown.append(i);
    }
    // Versions alike in the column stay newest first.
    std::stable_sort(m_shown.begin(), m_shown.end(), [this](qsizetype i, qsizetype j) {
        if (m_order == Qt::DescendingOrder)
            std::swap(i, j);
        if (m_sortColumn == 0)
            return m_versions[i].name.compare(m_versions[j].name, Qt::CaseInsensitive) < 0;
        return m_sortColumn == 1 ? i > j : m_versions[i].size < m_versions[j].size;
    });
    QList<ListRows::Row> rows;
    for (const qsizetype i : std::as_const(m_shown))
        rows.append(m_all[i]);
    m_rows.assign(rows);
    lvVersions->header()->setSortIndicator(m_sortColumn, m_order);

    if (m_theme.isEmpty())
        lblEmpty->setText(tr("No theme is open. Press Ctrl+O in the main window to open one."));
    else if (m_versions.isEmpty())
        lblEmpty->setText(tr("No file of this theme has been backed up yet.\n\nWhenever Quillmere writes or "
                             "deletes a file, it backs up the old one and lists it here."));
    else
        lblEmpty->setText(tr("No file name contains \"%1\".").arg(txtFilter->text()));
    lblEmpty->setVisible(rows.isEmpty());
    lvVersions->setVisible(!rows.isEmpty());
    m_difference->setVisible(!rows.isEmpty());
    txtFilter->setEnabled(!m_versions.isEmpty());
    if (rows.isEmpty())
        showDifference();
    else
        lvVersions->setCurrentIndex(m_rows.index(0, 0));
}

void frmRestore::sortBy(int column)
{
    // First what one looks for: names from A, the newest, the largest.
    const Qt::SortOrder first = column == 0 ? Qt::AscendingOrder : Qt::DescendingOrder;
    const Qt::SortOrder second = column == 0 ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_order = column == m_sortColumn && m_order == first ? second : first;
    m_sortColumn = column;
    showVersions();
}

const Version *frmRestore::selected() const
{
    const int row = lvVersions->selectedRow();
    return row < 0 ? nullptr : &m_versions[m_shown[row]];
}

void frmRestore::showDifference()
{
    const Version *version = selected();
    const VersionPreview preview =
        version
            ? previewOf(*version, chkIndentation->isChecked() ? Indentation::Ignored : Indentation::Counts)
            : VersionPreview();
    lblDifference->setText(preview.heading);
    showLines(*txtDifference, preview.lines);
    cmdRestore->setEnabled(version && !preview.same);
}

void frmRestore::cmdRestore_Click()
{
    if (!cmdRestore->isEnabled())
        return;
    const Version version = *selected();
    const QString kept = QFileInfo::exists(version.path)
                             ? tr("The current file is backed up and can be restored in turn.")
                             : tr("The file does not exist now; it is created again.");
    const WriteQuestion question = {
        tr("Restore"), tr("Restore %1 as it was on %2?\n\n%3").arg(version.name, timeText(version), kept),
        version.path, m_theme, Files::Step::Restore};
    if (!askToWrite(m_files, m_talk, question, No::Counts))
        return;
    m_talk.run([&] {
        m_files.restore(version.path, version.copy, m_theme);
        emit restored(version.path);
        loadVersions();
    });
}

void frmRestore::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showDifference();
}

bool frmRestore::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != txtFilter || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool goesOn = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down;
    if (goesOn && lvVersions->isVisible())
        lvVersions->setFocus();
    else if (key == Qt::Key_Escape && !txtFilter->text().isEmpty())
        txtFilter->clear(); // and the dialog stays
    else if (!goesOn)
        return QDialog::eventFilter(watched, event);
    return true;
}

} // namespace quillmere
