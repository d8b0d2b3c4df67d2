#pragma once

#include "controls/FixedChoices.h"
#include "controls/TabFrame.h"
#include "rows/ListRows.h"

#include <optional>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QScrollArea;
class QSlider;

namespace quillmere {

class Talk;
class ListView;
struct PanelChoice;
struct PanelLevel;
struct PanelSettings;

// The Panel tab: the settings that the receiver starts with. Nothing here is written back.
class PanelTab : public TabFrame
{
    Q_OBJECT

public:
    explicit PanelTab(Talk &talk, QWidget *parent = nullptr);

    // A control whose setting is not set stays as it is.
    void showSettings(const PanelSettings &settings);

protected:
    void layOut(int height) override;

private:
    void addSection(const QString &caption, const QList<std::pair<QString, QList<QWidget *>>> &lines);
    void showChoice(QComboBox *box, const std::optional<PanelChoice> &choice);
    void showLevel(QSlider *bar, QLineEdit *percent, const std::optional<PanelLevel> &level);
    void showTimeZone(const QString &value);

    Talk &m_talk;
    ListRows m_noRows;
    ListView *lvPropVol; // an empty list that older habits look for; the volume is a slider
    QScrollArea *m_scroll;
    QWidget *m_page;
    QLineEdit *txtDefault;
    QLineEdit *txtPropHW, *txtPropSW, *txtPropU1, *txtPropU2, *txtPropU3;
    QSlider *sdPropTrans, *sdPropVol;
    QLineEdit *txtPropTrans, *txtPropVol;
    QComboBox *cbPropLang, *cbPropTime, *cbPropSum, *cbProScrat, *cbPropSpdif;
    QStringList m_notShown; // what the last settings had that no control can show
    FixedChoices m_choices;
};

} // namespace quillmere
