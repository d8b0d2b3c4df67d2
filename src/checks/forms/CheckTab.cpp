#include "checks/forms/CheckTab.h"

#include "controls/EmptyHint.h"
#include "controls/ListView.h"
#include "controls/Named.h"

#include <QAction>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolButton>

#include <utility>

namespace quillmere {

namespace {

constexpr int kMargin = 8; // pixels
constexpr int kLine = 26;
constexpr int kDetail = 76;
constexpr int kIcon = 16;

QString counted(Severity severity, int count)
{
    switch (severity) {
    case Severity::Error:
        return count == 1 ? CheckTab::tr("1 error") : CheckTab::tr("%1 errors").arg(count);
    case Severity::Warning:
        return count == 1 ? CheckTab::tr("1 warning") : CheckTab::tr("%1 warnings").arg(count);
    default:
        return count == 1 ? CheckTab::tr("1 note") : CheckTab::tr("%1 notes").arg(count);
    }
}

} // namespace

CheckTab::CheckTab(LiveCheck &check, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(9)"), parent), m_check(check),
      txtCheckFilter(named(new QLineEdit(this), "txtCheckFilter", tr("Filter problems"))),
      lvCheck(new ListView(QStringLiteral("lvCheck"), tr("Problems"), m_rows, this)),
      m_detail(named(new QLabel(this), "lblCheck", tr("The selected problem")))
{
    txtCheckFilter->setPlaceholderText(tr("Filter by message, place or rule"));
    txtCheckFilter->setClearButtonEnabled(true);
    connect(txtCheckFilter, &QLineEdit::textChanged, this, &CheckTab::showChosen);
    const char *names[] = {"tglCheck(0)", "tglCheck(1)", "tglCheck(2)"};
    const QString captions[] = {tr("Errors"), tr("Warnings"), tr("Notes")};
    QWidget *before = txtCheckFilter;
    for (size_t severity = 0; severity < m_toggles.size(); ++severity) {
        auto *toggle = named(new QToolButton(this), names[severity], captions[severity]);
        toggle->setCheckable(true);
        toggle->setChecked(true);
        toggle->setIcon(ProblemRows::iconOf(Severity(severity)));
        toggle->setIconSize({kIcon, kIcon});
        toggle->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        toggle->setFocusPolicy(Qt::StrongFocus);
        toggle->setToolTip(tr("Show %1").arg(captions[severity].toLower()));
        connect(toggle, &QToolButton::toggled, this, &CheckTab::showChosen);
        setTabOrder(before, toggle);
        before = m_toggles[severity] = toggle;
    }
    setTabOrder(before, lvCheck);

    lvCheck->setColumnShares({13, 8, 9});
    lvCheck->setTextElideMode(Qt::ElideRight);
    lvCheck->setColumnElideMode(1, Qt::ElideMiddle); // the line stands at the end of a place
    lvCheck->setIconSize({kIcon, kIcon});
    connect(lvCheck, &ListView::rowOpened, this, &CheckTab::open);
    connect(lvCheck->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &CheckTab::showDetail);
    connect(&m_rows, &QAbstractItemModel::modelAboutToBeReset, this, [this] { m_isShowing = true; });
    connect(&m_rows, &QAbstractItemModel::modelReset, this, [this] {
        const int row = m_current ? m_rows.rowOf(*m_current) : -1;
        if (row >= 0)
            lvCheck->setCurrentIndex(m_rows.index(row, 0));
        m_isShowing = false;
        showDetail();
    });

    lvCheck->installEventFilter(this);
    lvCheck->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(lvCheck, &QWidget::customContextMenuRequested, this, &CheckTab::askForMenu);
    auto *mend = new QAction(tr("Mend"), lvCheck);
    mend->setShortcuts({Qt::ALT | Qt::Key_Return, Qt::ALT | Qt::Key_Enter});
    mend->setShortcutContext(Qt::WidgetShortcut);
    lvCheck->addAction(mend);
    connect(mend, &QAction::triggered, this, [this] {
        askForMenu(lvCheck->visualRect(lvCheck->currentIndex().siblingAtColumn(0)).bottomLeft());
    });

    m_detail->setWordWrap(true);
    m_detail->setTextFormat(Qt::PlainText);
    m_detail->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_detail->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(&check, &LiveCheck::changed, this, &CheckTab::checked);
    checked();
}

void CheckTab::layOut(int height)
{
    const int inner = width() - 2 * kMargin;
    place(txtCheckFilter, kMargin, kMargin, inner, kLine);
    const int third = (inner - 2 * kMargin) / 3;
    for (int i = 0; i < 3; ++i)
        place(m_toggles[size_t(i)], kMargin + i * (third + kMargin), 2 * kMargin + kLine, third, kLine);
    const int top = 3 * kMargin + 2 * kLine;
    const int listHeight = toPixels(height) - top - kDetail - 2 * kMargin;
    place(lvCheck, kMargin, top, inner, listHeight);
    place(m_detail, kMargin, top + listHeight + kMargin, inner, kDetail);
}

// Who comes by the keyboard has a row to press Enter on.
bool CheckTab::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && lvCheck->selectedRow() < 0 &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::MouseFocusReason) {
        const QModelIndex current = lvCheck->currentIndex();
        lvCheck->setCurrentIndex(current.isValid() ? current : m_rows.index(0, 0));
    }
    return TabFrame::eventFilter(object, event);
}

QString CheckTab::summary() const
{
    if (!m_check.isReady())
        return {};
    const auto &counts = m_check.counts();
    return tr("%1, %2, %3")
        .arg(counted(Severity::Error, counts[0]), counted(Severity::Warning, counts[1]),
             counted(Severity::Note, counts[2]));
}

void CheckTab::checked()
{
    for (size_t severity = 0; severity < m_toggles.size(); ++severity)
        m_toggles[severity]->setText(counted(Severity(severity), m_check.counts()[severity]));
    showChosen();
    emit summaryChanged(summary());
}

void CheckTab::showChosen()
{
    ProblemFilter filter = {txtCheckFilter->text(), {}};
    for (size_t severity = 0; severity < m_toggles.size(); ++severity)
        filter.severities[severity] = m_toggles[severity]->isChecked();
    m_rows.show(m_check.problems(), filter);
    const bool areProblems = !m_check.problems()->isEmpty();
    setEmptyHint(*lvCheck, areProblems && !filter.text.isEmpty()
                               ? tr("No problem contains \"%1\".").arg(filter.text)
                           : areProblems ? tr("The buttons above hide all problems.")
                           : m_check.isReady()
                               ? tr("Nothing is wrong with this theme.")
                               : tr("What is wrong with the theme is listed here once a theme is open."));
}

void CheckTab::showDetail()
{
    if (m_isShowing)
        return; // the rows are becoming others
    const Problem *problem = m_rows.problem(lvCheck->currentIndex().row());
    m_current = problem ? std::optional(*problem) : std::nullopt;
    if (problem)
        m_detail->setText(problem->message() + u'\n' + QLatin1String(textOf(problem->rule).id) + u": " +
                          QLatin1String(textOf(problem->rule).explanation));
    else if (!m_check.isReady())
        m_detail->clear();
    else if (m_check.problems()->isEmpty())
        m_detail->setText(tr("Nothing is wrong with this theme."));
    else
        m_detail->setText(
            tr("Double-click a problem, or press Enter, to go to its place. Alt+Enter offers mends."));
}

void CheckTab::askForMenu(const QPoint &at)
{
    const Problem *problem = m_rows.problem(lvCheck->selectedRow());
    emit menuWanted(problem ? QList<Problem>{*problem} : QList<Problem>(),
                    lvCheck->viewport()->mapToGlobal(at), lvCheck);
}

void CheckTab::open(int row)
{
    if (const Problem *problem = m_rows.problem(row)) {
        const Problem at = *problem; // the rows may become others on the way
        emit placeChosen(at.file, at.range, at.row);
    }
}

} // namespace quillmere
