#include "controls/FixedChoices.h"

#include <QComboBox>
#include <QLineEdit>

namespace quillmere {

void FixedChoices::add(QComboBox &box)
{
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
