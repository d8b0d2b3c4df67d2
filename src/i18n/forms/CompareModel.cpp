#include "i18n/forms/CompareModel.h"

#include "i18n/ExchangeUnits.h"
#include "rows/ToolTip.h"

namespace quillmere {

void CompareModel::show(const LanguageTable &table, const QList<int> &rows)
{
    bool isSame = table.languages() == m_table.languages();
    for (int language = 0; isSame && language < table.languages(); ++language)
        isSame = table.name(language) == m_table.name(language);
    const bool areSame = isSame && rows == m_rows;
    if (!areSame)
        beginResetModel();
    m_table = table;
    m_rows = rows;
    if (!areSame)
        endResetModel();
    else if (!m_rows.isEmpty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString CompareModel::textAt(const QModelIndex &index) const
{
    const int row = m_rows.at(index.row());
    return withLineFeeds(
        (index.column() == 0 ? m_table.source(row) : m_table.translation(row, index.column() - 1))
            .toString());
}

int CompareModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CompareModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1 + m_table.languages();
}

QVariant CompareModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole: // all rows are as high as the first
        return inOneLine(textAt(index).replace(u'\n', QChar(0x21B5)));
    case Qt::EditRole:
        return index == m_refused ? m_refusedText : textAt(index);
    case Qt::ToolTipRole:
        return plainToolTip(textAt(index));
    default:
        return {};
    }
}

bool CompareModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::EditRole || index.column() == 0)
        return false;
    const QString typed = value.toString();
    m_refused = QModelIndex();
    if (typed == textAt(index))
        return true;
    const int row = m_rows.at(index.row());
    if (put && put(m_table.name(index.column() - 1), m_table.source(row).toString(), typed))
        return true;
    m_refused = index;
    m_refusedText = typed;
    emit refused(index);
    return false;
}

QVariant CompareModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount())
        return {};
    return section == 0 ? tr("Source") : m_table.name(section - 1);
}

Qt::ItemFlags CompareModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.column() > 0 ? flags | Qt::ItemIsEditable : flags;
}

} // namespace quillmere
