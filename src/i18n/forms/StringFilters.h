#pragma once

#include "i18n/Dictionary.h"

#include <QHash>
#include <QPersistentModelIndex>
#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>
#include <optional>

class QToolButton;

namespace quillmere {

class ListRows;
class ListView;

// What the checks say of a string; the marks go from bad to harmless.
struct StringProblems
{
    enum class Mark { Error, Warning, Note };
    Mark worst = Mark::Note;
    quint32 seal = 0; // another number where the checks say something else

    bool operator==(const StringProblems &) const = default;
};

// A line of choices above the strings of a language, each with the number of strings behind it. A string that
// is selected stays to be seen until another one, or another choice, is: one that has just been translated
// does not vanish under the hand.
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

    // What the checks say of the rows, by row; `messages` is asked for the words.
    void setProblems(QHash<int, StringProblems> problems, std::function<QStringList(int row)> messages);
    std::optional<StringProblems> problemsOf(int row) const;
    QStringList messagesOf(int row) const;

signals:
    // Other rows are to be seen.
    void changed();
    void problemsChanged();

private:
    bool fits(int row) const;

    const ListRows &m_strings;
    QPersistentModelIndex m_kept; // whatever the choice
    std::array<QToolButton *, 4> m_buttons;
    Choice m_choice = All;
    QHash<int, StringProblems> m_problems;
    std::function<QStringList(int row)> m_messages;
};

} // namespace quillmere
