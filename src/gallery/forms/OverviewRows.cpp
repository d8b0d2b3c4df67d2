#include "gallery/forms/OverviewRows.h"

#include "markup/Matching.h"
#include "rows/ToolTip.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace quillmere {

QList<int> OverviewRows::setWindows(const ListRows &catalogue)
{
    beginResetModel();
    QHash<std::pair<QString, QString>, int> before;
    for (qsizetype number = m_windows.size() - 1; number >= 0; --number)
        before.insert({m_windows[number].name, m_windows[number].path}, int(number));
    const QList<Window> old = std::exchange(m_windows, {});
    QList<int> numbers;
    for (const ListRows::Row &row : catalogue.rows()) {
        const QString name = row.sub(1);
        const int known = before.value({name, row.text}, -1);
        numbers.append(known);
        if (known >= 0) {
            m_windows.append(old[known]);
        } else {
            Window window;
            window.name = name;
            window.path = row.text;
            window.look = row.sub(3) == u"Y" ? Look::Waiting : Look::NoDocument; // as far as is known
            m_windows.append(window);
        }
    }
    choose();
    endResetModel();
    return numbers;
}

void OverviewRows::setFilter(const QString &part)
{
    if (part == m_filter)
        return;
    beginResetModel();
    m_filter = part;
    choose();
    endResetModel();
}

void OverviewRows::choose()
{
    m_shown.clear();
    for (qsizetype number = 0; number < m_windows.size(); ++number) {
        if (m_filter.isEmpty() || containsIgnoringCase(m_windows[number].name, m_filter))
            m_shown.append(int(number));
    }
}

QModelIndex OverviewRows::indexOf(int number) const
{
    const auto at = std::ranges::lower_bound(m_shown, number);
    return at != m_shown.end() && *at == number ? index(int(at - m_shown.begin())) : QModelIndex();
}

void OverviewRows::tell(int number)
{
    const QModelIndex at = indexOf(number);
    if (at.isValid())
        emit dataChanged(at, at);
}

void OverviewRows::setWindow(int number, const Window &window)
{
    m_windows[number] = window;
    tell(number);
}

void OverviewRows::setProblems(const QList<WindowProblems> &problems)
{
    for (qsizetype number = 0; number < m_windows.size(); ++number)
        m_windows[number].problems = problems.value(number);
    if (!m_shown.isEmpty())
        emit dataChanged(index(0), index(int(m_shown.size()) - 1));
}

void OverviewRows::dropPicture(int number)
{
    Window &window = m_windows[number];
    window.picture = {};
    window.mark.clear();
    window.look = Look::Waiting;
    tell(number);
}

int OverviewRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant OverviewRows::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Window &window = m_windows.at(m_shown.at(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return window.name;
    case Qt::DecorationRole:
        return window.picture.isNull() ? QVariant() : window.picture;
    case Qt::ToolTipRole:
        return plainToolTip(window.problems.first.isEmpty()
                                ? describe(window)
                                : QString(describe(window) + u'\n' + window.problems.first));
    case Qt::AccessibleTextRole:
        return describe(window);
    default:
        return {};
    }
}

QString textOf(const WindowProblems &problems)
{
    QStringList parts;
    const auto add = [&](int count, const QString &one, const QString &many) {
        if (count > 0)
            parts.append(count == 1 ? one : many.arg(count));
    };
    add(problems.errors, OverviewRows::tr("1 error"), OverviewRows::tr("%1 errors"));
    add(problems.warnings, OverviewRows::tr("1 warning"), OverviewRows::tr("%1 warnings"));
    add(problems.notes, OverviewRows::tr("1 note"), OverviewRows::tr("%1 notes"));
    return parts.join(QStringLiteral(", "));
}

QString describe(const OverviewRows::Window &window)
{
    QString text = window.name.isEmpty() ? OverviewRows::tr("A window without a name") : window.name;
    if (window.look == OverviewRows::Look::NoDocument)
        return OverviewRows::tr("%1: no document").arg(text);
    if (window.look == OverviewRows::Look::NotDrawn)
        text = OverviewRows::tr("%1: not drawn, %2").arg(text, window.reason);
    else if (const auto &place = window.place)
        text = OverviewRows::tr("%1: %2 x %3 pixels at %4, %5")
                   .arg(text)
                   .arg(place->w)
                   .arg(place->h)
                   .arg(place->x)
                   .arg(place->y);
    if (window.isHidden)
        text += OverviewRows::tr(", hidden at first");
    const QString problems = textOf(window.problems);
    return problems.isEmpty() ? text : QString(text + u"; " + problems);
}

} // namespace quillmere
