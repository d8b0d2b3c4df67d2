#pragma once

#include "making/forms/MakingDialog.h"

#include <QSize>

class QComboBox;

namespace quillmere {

// Asks for the screen that a theme is to be converted to.
class frmConvertTheme : public MakingDialog
{
    Q_OBJECT

public:
    // False where it was not converted.
    using Make = std::function<bool(const QSize &screen)>;

    // `screen` is that of the theme, pixels.
    frmConvertTheme(const QSize &screen, Make make, QWidget *parent);

protected:
    QString whyNot() const override;
    bool make() override;

private:
    QSize screen() const; // as typed; empty where that is no size

    QSize m_screen;
    Make m_make;
    QComboBox *cbConvertScreen;
};

} // namespace quillmere
