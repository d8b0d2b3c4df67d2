#pragma once

#include <QTest>

#include <initializer_list>

// The table of a test whose columns are all texts: the names of the columns, then the rows, each behind a
// name of its own. Cells left out at the end are empty. Markup is full of double quotes; back quotes stand
// for them.
inline void textTable(std::initializer_list<const char *> columns,
                      std::initializer_list<std::initializer_list<QStringView>> rows)
{
    for (const char *column : columns)
        QTest::addColumn<QString>(column);
    for (const auto &row : rows) {
        QTestData &data = QTest::newRow(qPrintable(row.begin()->toString()));
        for (size_t cell = 1; cell <= columns.size(); ++cell)
            data << (cell < row.size() ? row.begin()[cell].toString().replace(u'`', u'"') : QString());
    }
}
