#pragma once

#include "making/NewLanguage.h"
#include "making/forms/MakingDialog.h"

class QComboBox;
class QLineEdit;

namespace quillmere {

// Asks what a new language is called, and which texts it is to begin with.
class frmNewLanguage : public MakingDialog
{
    Q_OBJECT

public:
    // False where it was not made. `model` is a row of lvLang, -1 for the texts of the windows.
    using Make = std::function<bool(const NewLanguage &language, int model)>;

    // `models` are the languages of the theme.
    frmNewLanguage(const LanguageNames &names, const QStringList &models, Make make, QWidget *parent);

protected:
    QString whyNot() const override;
    bool make() override;

private:
    void txtNewLangId_Change();
    NewLanguage language() const;

    LanguageNames m_names;
    Make m_make;
    QLineEdit *txtNewLangId, *txtNewLangName, *txtNewLangFile;
    QComboBox *cbNewLangModel;
};

} // namespace quillmere
