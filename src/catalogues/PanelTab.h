#pragma once

#include "platform/ListRows.h"
#include "platform/TabFrame.h"

class QComboBox;
class QLineEdit;
class QSlider;

namespace quillmere {

class ListView;

// The Panel tab: the receiver's default settings.
class PanelTab : public TabFrame
{
    Q_OBJECT

public:
    explicit PanelTab(QWidget *parent = nullptr);

protected:
    void layOut(int height) override;

private:
    ListRows m_noRows;
    ListView *lvPropVol; // an empty list that older habits look for; the volume is a slider
    QWidget *m_page;
    QLineEdit *txtDefault;
    QLineEdit *txtPropHW, *txtPropSW, *txtPropU1, *txtPropU2, *txtPropU3;
    QSlider *sdPropTrans, *sdPropVol;
    QLineEdit *txtPropTrans, *txtPropVol;
    QComboBox *cbPropLang, *cbPropTime, *cbPropSum, *cbProScrat, *cbPropSpdif;
};

} // namespace quillmere
