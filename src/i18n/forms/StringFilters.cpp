#include "i18n/forms/StringFilters.h"

#include "controls/ListView.h"
#include "controls/Named.h"
#include "rows/ListRows.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QToolButton>

namespace quillmere {

namespace {

const struct
{
    const char *caption, *tip;
} kChoices[] = {
    {QT_TRANSLATE_NOOP("quillmere::StringFilters", "All"),
     QT_TRANSLATE_NOOP("quillmere::StringFilters", "All strings")},
    {QT_TRANSLATE_NOOP("quillmere::StringFilters", "Untranslated"),
     QT_TRANSLATE_NOOP("quillmere::StringFilters",
                       "Strings without a translation. Ctrl+Down goes to the next")},
    {QT_TRANSLATE_NOOP("quillmere::StringFilters", "Unchecked"),
     QT_TRANSLATE_NOOP("quillmere::StringFilters", "Strings without a check mark")},
    {QT_TRANSLATE_NOOP("quillmere::StringFilters", "Problems"),
     QT_TRANSLATE_NOOP("quillmere::StringFilters", "Strings of which the Check tab has something to say")},
};

} // namespace

StringFilters::StringFilters(const ListRows &strings, const ListView &list, QWidget *parent)
    : QWidget(parent), m_strings(strings)
{
    named(this, "stringFilters", tr("Strings that are shown"));
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(2);
    auto *group = new QButtonGroup(this);
    for (int choice = 0; choice < int(m_buttons.size()); ++choice) {
        auto *button = new QToolButton;
        m_buttons[size_t(choice)] = button;
        button->setObjectName(QStringLiteral("cmdStrings(%1)").arg(choice));
        button->setToolTip(tr(kChoices[choice].tip));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        group->addButton(button, choice);
        line->addWidget(button);
    }
    line->addStretch(1);
    m_buttons[All]->setChecked(true);
    connect(group, &QButtonGroup::idToggled, this, [this](int choice, bool isOn) {
        if (!isOn)
            return;
        m_choice = Choice(choice);
        m_kept = QModelIndex(); // the number on the button is that of the rows that come
        emit changed();
    });
    connect(list.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &now) {
                m_kept = now;
                if (m_choice != All)
                    emit changed();
            });
    count();
}

bool StringFilters::fits(int row) const
{
    switch (m_choice) {
    case Untranslated:
        return QStringView(m_strings.sub(row, 2)).trimmed().isEmpty();
    case Unchecked:
        return !m_strings.isChecked(row);
    case Problems:
        return m_problems.contains(row);
    case All:
        break;
    }
    return true;
}

bool StringFilters::shows(int row) const
{
    return fits(row) || (m_kept.isValid() && row == m_kept.row());
}

void StringFilters::count()
{
    const StringCounts counts = countStrings(m_strings);
    const int problems = int(
        std::count_if(m_problems.keyBegin(), m_problems.keyEnd(), [&](int row) { return row < counts.all; }));
    const int numbers[] = {counts.all, counts.untranslated, counts.all - counts.checked, problems};
    for (size_t choice = 0; choice < m_buttons.size(); ++choice) {
        const QString caption = tr(kChoices[choice].caption) + u' ' + locale().toString(numbers[choice]);
        m_buttons[choice]->setText(caption);
        m_buttons[choice]->setAccessibleName(caption);
    }
}

std::optional<StringProblems> StringFilters::problemsOf(int row) const
{
    const auto problems = m_problems.constFind(row);
    return problems == m_problems.constEnd() ? std::nullopt : std::optional(*problems);
}

QStringList StringFilters::messagesOf(int row) const
{
    return m_problems.contains(row) ? m_messages(row) : QStringList();
}

void StringFilters::setProblems(QHash<int, StringProblems> problems,
                                std::function<QStringList(int row)> messages)
{
    m_messages = std::move(messages);
    if (m_problems == problems)
        return;
    m_problems = std::move(problems);
    count();
    emit problemsChanged();
    if (m_choice == Problems)
        emit changed();
}

} // namespace quillmere
