#include "checks/forms/ProblemRows.h"

#include "files/Paths.h"
#include "markup/Matching.h"
#include "rows/ToolTip.h"

#include <QApplication>
#include <QStyle>

#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kMostShown = 10'000; // nobody reads more, and views lay all rows out at once

enum Column { Message, Place, RuleId, Columns };

bool isSame(const Problem &a, const Problem &b)
{
    return a.rule == b.rule && a.file == b.file && a.name == b.name && a.text() == b.text() &&
           a.bytes == b.bytes && a.line == b.line && a.column == b.column && a.row == b.row;
}

} // namespace

ProblemRows::ProblemRows(QObject *parent) : QAbstractTableModel(parent)
{
    m_worker.setMaxThreadCount(1);
    for (size_t severity = 0; severity < m_icons.size(); ++severity)
        m_icons[severity] = iconOf(Severity(severity));
}

ProblemRows::~ProblemRows()
{
    if (m_givenUp)
        *m_givenUp = true;
    m_worker.waitForDone();
}

QIcon ProblemRows::iconOf(Severity severity)
{
    constexpr QStyle::StandardPixmap icons[] = {QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxWarning,
                                                QStyle::SP_MessageBoxInformation};
    return QApplication::style()->standardIcon(icons[int(severity)]);
}

QString ProblemRows::placeOf(const Problem &problem)
{
    const QString file = fileNameOf(problem.file).toString();
    if (problem.line <= 0)
        return tr("%1, row %2").arg(file).arg(problem.row + 1); // not written yet
    const bool isXml = file.endsWith(u".xml", Qt::CaseInsensitive);
    return tr("%1:%2").arg(isXml ? file.chopped(4) : file).arg(problem.line);
}

std::pair<ProblemRows::Chosen, qsizetype> ProblemRows::choose(const QList<Problem> &problems,
                                                              const ProblemFilter &filter,
                                                              const std::atomic_bool &givenUp)
{
    std::array<Chosen, 3> bySeverity;
    for (qsizetype number = 0; number < problems.size() && !givenUp; ++number) {
        const Problem &each = problems.at(number);
        const auto severity = size_t(each.severity());
        if (!filter.severities[severity])
            continue;
        const auto holds = [&](QStringView text) { return containsIgnoringCase(text, filter.text); };
        if (filter.text.isEmpty() || holds(each.message()) || holds(placeOf(each)) ||
            holds(QString(QLatin1String(textOf(each.rule).id))))
            bySeverity[severity].push_back(qint32(number));
    }
    Chosen chosen;
    for (const Chosen &part : bySeverity)
        chosen.insert(chosen.end(), part.begin(), part.end());
    const qsizetype others = std::max<qsizetype>(0, qsizetype(chosen.size()) - kMostShown);
    chosen.resize(chosen.size() - size_t(others));
    return {chosen, others};
}

void ProblemRows::show(std::shared_ptr<const QList<Problem>> problems, const ProblemFilter &filter)
{
    if (m_givenUp)
        *m_givenUp = true;
    m_givenUp = std::make_shared<std::atomic_bool>(false);
    m_worker.start([this, problems = std::move(problems), filter, givenUp = m_givenUp] {
        const auto made = std::make_shared<std::pair<Chosen, qsizetype>>(choose(*problems, filter, *givenUp));
        const auto take = [this, made, problems, givenUp]() mutable {
            if (!*givenUp) {
                beginResetModel();
                m_problems.swap(problems);
                m_chosen = std::move(made->first);
                m_others = made->second;
                endResetModel();
            }
            // Many problems take their time to go.
            m_worker.start([old = std::move(problems)]() mutable { old.reset(); });
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    });
}

const Problem *ProblemRows::problem(int row) const
{
    return row >= 0 && size_t(row) < m_chosen.size() ? &m_problems->at(m_chosen[size_t(row)]) : nullptr;
}

int ProblemRows::rowOf(const Problem &problem) const
{
    for (size_t row = 0; row < m_chosen.size(); ++row) {
        if (isSame(m_problems->at(m_chosen[row]), problem))
            return int(row);
    }
    return -1;
}

int ProblemRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_chosen.size()) + (m_others > 0);
}

int ProblemRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant ProblemRows::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Problem *at = problem(index.row());
    if (!at) {
        const bool shown = role == Qt::DisplayRole && index.column() == Message;
        return shown ? tr("%1 more; filter the list to see them").arg(m_others) : QVariant();
    }
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == Message)
            return at->message();
        return index.column() == Place ? placeOf(*at) : QString(QLatin1String(textOf(at->rule).id));
    case Qt::DecorationRole:
        return index.column() == Message ? m_icons[size_t(at->severity())] : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(at->message() + u'\n' + at->file);
    case Qt::AccessibleTextRole:
        if (index.column() == Message)
            return QString(nameOf(at->severity()) + u": " + at->message());
        return {};
    default:
        return {};
    }
}

QVariant ProblemRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Message:
        return tr("Message");
    case Place:
        return tr("Place");
    default:
        return tr("Rule");
    }
}

} // namespace quillmere
