#pragma once

#include "i18n/LanguageTable.h"

#include <QAbstractTableModel>
#include <QPersistentModelIndex>

#include <functional>

namespace quillmere {

// Sources with what several languages say, a column a language, to be typed into. The model itself changes
// nothing: what is typed is handed on, and comes back with another table.
class CompareModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // The rows of the table that are shown.
    void show(const LanguageTable &table, const QList<int> &rows);
    const LanguageTable &table() const { return m_table; }
    // In lines that end in LF.
    QString textAt(const QModelIndex &index) const;

    // Puts a translation, lines ending in LF, into a language; false where that fails, after telling why.
    std::function<bool(const QString &language, const QString &source, const QString &translation)> put;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    // What was typed could not be put, and is what the cell begins with when it is typed into again.
    void refused(const QModelIndex &index);

private:
    LanguageTable m_table;
    QList<int> m_rows;
    QPersistentModelIndex m_refused;
    QString m_refusedText;
};

} // namespace quillmere
