#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QString>
#include <QStringList>

namespace quillmere {

// The one store of a catalogue: rows of an item text, numbered sub-items (1, 2, ...) and a check mark. Column
// 0 shows the item text and carries the check, column k shows sub-item k. Rows are counted from 0 here.
// Reading a sub-item that a row does not have gives an empty text.
class ListRows : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Row
    {
        QString text;
        QStringList subItems; // sub-item 1 is subItems[0]
        bool checked = false;

        QString sub(int number) const { return subItems.value(number - 1); }
    };

    enum class Checks { No, Yes };

    // One caption per column; the number of captions is the number of columns.
    explicit ListRows(const QStringList &captions, Checks checks = Checks::No, QObject *parent = nullptr);

    int count() const { return int(m_rows.size()); }
    bool isEmpty() const { return m_rows.isEmpty(); }
    const QList<Row> &rows() const { return m_rows; }
    const Row &row(int index) const { return m_rows.at(index); }
    const QString &text(int row) const { return m_rows.at(row).text; }
    QString sub(int row, int number) const { return m_rows.at(row).sub(number); }
    bool isChecked(int row) const { return m_rows.at(row).checked; }

    void clear();
    void add(const QString &text, const QStringList &subItems = {});
    // Replaces all rows at once; views are told once.
    void assign(QList<Row> rows);
    // The same for rows of which most are there already, none of them ticked: views are told of the others
    // alone, and keep their place and selection.
    void update(QList<Row> rows);
    // The same for an edit: ticks are those of the rows given.
    void edit(QList<Row> rows);
    void remove(int row);
    void setSub(int row, int number, const QString &text);
    void setChecked(int row, bool checked);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    // The person or a command changed a check mark. Not sent by assign() and clear().
    void checkChanged(int row);
    // A text was changed, or a row added or removed. Check marks do not count, nor does assign().
    void edited();

private:
    void untickAll();
    void replaceDifferent(QList<Row> rows);

    QStringList m_captions;
    Checks m_checks;
    QList<Row> m_rows;
};

} // namespace quillmere
