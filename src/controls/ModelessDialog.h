#pragma once

#include <QDialog>

namespace quillmere {

// A dialog that stays open beside a window. It lies above its owner and is hidden and minimised with it, but
// is none of its children: both have controls of the same names, and each is to find its own.
class ModelessDialog : public QDialog
{
    Q_OBJECT

public:
    // Whether the keyboard goes to the dialog or stays in the owner.
    enum class Keyboard { Takes, Leaves };

    ModelessDialog(const QString &name, QWidget &owner);
    // Shows the dialog, the first time in the lower right corner of its owner, or brings it to the front.
    void present(Keyboard keyboard);

private:
    QWidget &m_owner;
};

} // namespace quillmere
