#pragma once

#include "i18n/Dictionary.h"

#include <QHash>
#include <QStringList>
#include <QWidget>

#include <array>

class QToolButton;

namespace quillmere {

class ListRows;
class ListView;

// A line of choices above the strings of a language, each with the number of strings behind it. The string
// that is selected stays to be seen until another is: one that has just been translated does not vanish under
// the hand.
class StringFilters : public QWidget
{
    Q_OBJECT

public:
    enum Choice { All, Untranslated, Unchecked, Problems };

    // The list shows the rows.
    StringFilters(const ListRows &strings, const ListView &list, QWidget *parent);

    // Whether a row, 0-based, is to be seen.
    bool shows(int row) const;
    // The rows have changed.
    void count();

    // What the checks say of the rows, by row.
    void setProblems(QHash<int, QStringList> problems);
    QStringList problemsOf(int row) const { return m_problems.value(row); }

signals:
    // Other rows are to be seen.
    void changed();
    void problemsChanged();

private:
    bool fits(int row) const;

    const ListRows &m_strings;
    const ListView &m_list;
    std::array<QToolButton *, 4> m_buttons;
    Choice m_choice = All;
    QHash<int, QStringList> m_problems;
};

} // namespace quillmere
