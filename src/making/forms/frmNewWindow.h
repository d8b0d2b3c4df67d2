#pragma once

#include "making/NewWindow.h"
#include "making/WindowTemplate.h"
#include "making/forms/MakingDialog.h"

class QComboBox;
class QLineEdit;

namespace quillmere {

// Asks for the name of a new window, and for the template of one that is no duplicate.
class frmNewWindow : public MakingDialog
{
    Q_OBJECT

public:
    // False where it was not made.
    using Make = std::function<bool(const QString &name, WindowTemplate kind)>;

    // `original` is the window to duplicate, empty for none.
    frmNewWindow(const QString &original, const WindowNames &names, Make make, QWidget *parent);

protected:
    QString whyNot() const override;
    bool make() override;

private:
    WindowNames m_names;
    Make m_make;
    QLineEdit *txtNewName;
    QComboBox *cbNewTemplate;
};

} // namespace quillmere
