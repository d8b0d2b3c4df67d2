#pragma once

#include "making/NewTheme.h"
#include "making/forms/MakingDialog.h"

class QComboBox;
class QLineEdit;

namespace quillmere {

// Asks where a new theme is to be, how large its screen is, and for a font that goes along.
class frmNewTheme : public MakingDialog
{
    Q_OBJECT

public:
    // False where it was not made.
    using Make = std::function<bool(const QString &folder, const NewTheme &theme)>;

    // `folder` is one to begin with.
    frmNewTheme(const QString &folder, Make make, QWidget *parent);

protected:
    QString whyNot() const override;
    bool make() override;

private:
    void txtNewThemeFolder_Change();
    void cmdNewThemeFolder_Click();
    void cmdNewThemeFont_Click();
    QString folder() const; // of the theme; empty while none is typed

    Make m_make;
    QLineEdit *txtNewThemeFolder, *txtNewThemeFont;
    QLabel *lblNewThemePath;
    QComboBox *cbNewThemeScreen;
};

} // namespace quillmere
