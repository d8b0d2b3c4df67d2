#pragma once

#include <QHash>
#include <QObject>
#include <QString>

namespace quillmere {

class ListRows;

// Finds rows by a sub-item in constant time, whatever has changed them since. Names are compared stripped of
// control characters, letter case minded. The rows must outlive the index.
class RowIndex
{
public:
    RowIndex(const ListRows &rows, int subItem);

    // 0-based; the first of several rows with the name, -1 without one.
    int find(const QString &name) const;

    // Finds names as the rows stand now, whatever becomes of them, and on any thread.
    class Snapshot
    {
    public:
        int find(const QString &name) const;

    private:
        friend class RowIndex;
        QHash<QString, int> m_rowOfName;
    };
    Snapshot snapshot() const;

private:
    const ListRows &m_rows;
    int m_subItem;
    QObject m_listener; // ends the connections with the index
    mutable Snapshot m_names;
    mutable bool m_indexed = false;
};

} // namespace quillmere
