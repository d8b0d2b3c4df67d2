#pragma once

#include <QColor>
#include <QComboBox>

class QAction;

namespace quillmere {

class ListRows;

// Turns a combo box into one for a value of the person's own: typing never changes what is typed, and the
// entries that hold it are offered.
void takeOwnValues(QComboBox *combo);

// A choice of colour names with a chip of each colour; the chip in the box is that of the text in it.
class ColourCombo : public QComboBox
{
    Q_OBJECT

public:
    explicit ColourCombo(QWidget *parent = nullptr);

    // The colours: sub-item 1 is the name, sub-item 2 the code.
    void setColours(const ListRows &colours);

private:
    void showChip(const QString &text);

    QAction *m_chip;
};

} // namespace quillmere
