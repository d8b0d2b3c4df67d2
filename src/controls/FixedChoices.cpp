#include "controls/FixedChoices.h"

#include <QComboBox>
#include <QLineEdit>
#include <QStyledItemDelegate>

namespace quillmere {

namespace {

// What cannot be chosen looks so.
class FixedDelegate : public QStyledItemDelegate
{
public:
    explicit FixedDelegate(QComboBox &box) : QStyledItemDelegate(&box), m_box(box) {}

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.row() != m_box.currentIndex())
            option->state &= ~(QStyle::State_Enabled | QStyle::State_Selected);
    }

private:
    QComboBox &m_box;
};

} // namespace

void FixedChoices::add(QComboBox &box)
{
    box.setItemDelegate(new FixedDelegate(box));
    if (box.lineEdit())
        box.lineEdit()->setReadOnly(true);
    m_choices.insert(&box, {box.currentIndex(), box.currentText()});
    connect(&box, &QComboBox::activated, this, [this, &box] {
        const Choice kept = m_choices.value(&box);
        box.setCurrentIndex(kept.index);
        if (box.isEditable())
            box.setCurrentText(kept.text);
    });
}

void FixedChoices::note()
{
    for (auto choice = m_choices.begin(); choice != m_choices.end(); ++choice)
        *choice = {choice.key()->currentIndex(), choice.key()->currentText()};
}

} // namespace quillmere
