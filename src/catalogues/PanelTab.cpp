#include "catalogues/PanelTab.h"

#include "platform/ListView.h"
#include "platform/Named.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>

namespace quillmere {

namespace {

constexpr int kMargin = 8;        // pixels
constexpr int kPercentWidth = 56; // pixels

QLineEdit *value(const char *name, const QString &setting)
{
    auto *box = named(new QLineEdit, name, setting);
    box->setReadOnly(true);
    return box;
}

QSlider *slider(const char *name, const QString &setting, int most)
{
    auto *bar = named(new QSlider(Qt::Horizontal), name, setting);
    bar->setRange(0, most);
    return bar;
}

QHBoxLayout *withPercentage(QSlider *bar, QLineEdit *percent)
{
    auto *line = new QHBoxLayout;
    percent->setFixedWidth(kPercentWidth);
    percent->setAlignment(Qt::AlignRight);
    line->addWidget(bar);
    line->addWidget(percent);
    line->addWidget(new QLabel(QStringLiteral("%")));
    return line;
}

} // namespace

PanelTab::PanelTab(QWidget *parent)
    : TabFrame(QStringLiteral("frYt(7)"), parent), m_noRows({QString()}),
      lvPropVol(new ListView(QStringLiteral("lvPropVol"), tr("Volume"), m_noRows, this)),
      m_page(new QWidget(this)), txtDefault(value("txtDefault", tr("Settings file"))),
      txtPropHW(value("txtPropHW", tr("Hardware version"))),
      txtPropSW(value("txtPropSW", tr("Software version"))),
      txtPropU1(value("txtPropU1", tr("User field 1"))), txtPropU2(value("txtPropU2", tr("User field 2"))),
      txtPropU3(value("txtPropU3", tr("User field 3"))),
      sdPropTrans(slider("sdPropTrans", tr("Transparency"), 255)),
      sdPropVol(slider("sdPropVol", tr("Volume"), 25)),
      txtPropTrans(value("txtPropTrans", tr("Transparency in percent"))),
      txtPropVol(value("txtPropVol", tr("Volume in percent"))),
      cbPropLang(named(new QComboBox, "cbPropLang", tr("Language"))),
      cbPropTime(named(new QComboBox, "cbPropTime", tr("Time zone"))),
      cbPropSum(named(new QComboBox, "cbPropSum", tr("Summer time"))),
      cbProScrat(named(new QComboBox, "cbProScrat", tr("SCART"))),
      cbPropSpdif(named(new QComboBox, "cbPropSpdif", tr("S/PDIF")))
{
    lvPropVol->hide();
    for (int offset = -12; offset <= 12; ++offset)
        cbPropTime->addItem(offset > 0 ? u'+' + QString::number(offset) : QString::number(offset));
    cbPropSum->addItems({QStringLiteral("Off"), QStringLiteral("On")});

    auto *form = new QFormLayout(m_page);
    form->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("Settings file"), txtDefault);
    form->addRow(tr("Language"), cbPropLang);
    form->addRow(tr("Hardware version"), txtPropHW);
    form->addRow(tr("Software version"), txtPropSW);
    form->addRow(tr("User field 1"), txtPropU1);
    form->addRow(tr("User field 2"), txtPropU2);
    form->addRow(tr("User field 3"), txtPropU3);
    form->addRow(tr("Transparency"), withPercentage(sdPropTrans, txtPropTrans));
    form->addRow(tr("Volume"), withPercentage(sdPropVol, txtPropVol));
    form->addRow(tr("Time zone"), cbPropTime);
    form->addRow(tr("Summer time"), cbPropSum);
    form->addRow(tr("SCART"), cbProScrat);
    form->addRow(tr("S/PDIF"), cbPropSpdif);
}

void PanelTab::layOut(int)
{
    place(m_page, 0, 0, width(), m_page->sizeHint().height());
}

} // namespace quillmere
