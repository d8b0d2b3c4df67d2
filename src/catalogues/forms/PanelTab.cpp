#include "catalogues/forms/PanelTab.h"

#include "asking/Talk.h"
#include "catalogues/PanelSettings.h"
#include "controls/ListView.h"
#include "controls/Named.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSlider>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMargin = 8;        // pixels
constexpr int kLabelWidth = 120;  // pixels, so that the fields of all sections stand in one column
constexpr int kPercentWidth = 48; // pixels
constexpr int kMostSaid = 40;     // characters of a value

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
    bar->setEnabled(false);
    return bar;
}

QComboBox *choices(const char *name, const QString &setting)
{
    auto *box = named(new QComboBox, name, setting);
    // A long text of a theme must not widen the page.
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

// A setting and its value, as a part of a sentence.
QString said(const QComboBox *box, const QString &value)
{
    const QString cut = value.size() > kMostSaid ? QString(value.left(kMostSaid) + u'\u2026') : value;
    return box->accessibleName() + u" \"" + cut + u'"';
}

QLineEdit *percentage(const char *name, const QString &setting)
{
    auto *box = value(name, setting);
    box->setFixedWidth(kPercentWidth);
    box->setAlignment(Qt::AlignRight);
    return box;
}

} // namespace

PanelTab::PanelTab(Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(7)"), parent), m_talk(talk), m_noRows({QString()}),
      lvPropVol(new ListView(QStringLiteral("lvPropVol"), tr("Volume"), m_noRows, this)),
      m_scroll(new QScrollArea(this)), m_page(new QWidget),
      txtDefault(value("txtDefault", tr("Settings file"))),
      txtPropHW(value("txtPropHW", tr("Hardware version"))),
      txtPropSW(value("txtPropSW", tr("Software version"))), txtPropU1(value("txtPropU1", tr("Userdefine1"))),
      txtPropU2(value("txtPropU2", tr("Userdefine2"))), txtPropU3(value("txtPropU3", tr("Userdefine3"))),
      sdPropTrans(slider("sdPropTrans", tr("Transparence"), PanelSettings::kMostTransparence)),
      sdPropVol(slider("sdPropVol", tr("Volume"), PanelSettings::kMostVolume)),
      txtPropTrans(percentage("txtPropTrans", tr("Transparence in percent"))),
      txtPropVol(percentage("txtPropVol", tr("Volume in percent"))),
      cbPropLang(choices("cbPropLang", tr("Language"))), cbPropTime(choices("cbPropTime", tr("Time zone"))),
      cbPropSum(choices("cbPropSum", tr("Summer time"))),
      cbProScrat(choices("cbProScrat", tr("Scart config"))),
      cbPropSpdif(choices("cbPropSpdif", tr("Spdif config")))
{
    lvPropVol->hide();
    cbPropTime->addItems(timeZones());
    cbPropSum->addItems({QStringLiteral("Off"), QStringLiteral("On")});
    for (const auto &[bar, percent] :
         {std::pair(sdPropTrans, txtPropTrans), std::pair(sdPropVol, txtPropVol)})
        connect(bar, &QSlider::valueChanged, this, [bar = bar, percent = percent](int level) {
            percent->setText(QString::number(level * 100 / bar->maximum()));
        });

    for (QComboBox *box : {cbPropLang, cbPropTime, cbPropSum, cbProScrat, cbPropSpdif})
        m_choices.add(*box);

    auto *column = new QVBoxLayout(m_page);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    auto *readOnly =
        named(new QLabel(tr("These settings are read-only: they show what the settings file says, "
                            "and the lists what it offers.")),
              "lblPanelReadOnly", tr("These settings are read-only."));
    readOnly->setWordWrap(true);
    column->addWidget(readOnly);
    addSection(tr("File"), {{tr("Settings file"), {txtDefault}}});
    addSection(
        tr("Language and time"),
        {{tr("Language"), {cbPropLang}}, {tr("Time zone"), {cbPropTime}}, {tr("Summer time"), {cbPropSum}}});
    addSection(tr("Picture and sound"),
               {{tr("Transparence"), {sdPropTrans, txtPropTrans, new QLabel(QStringLiteral("%"))}},
                {tr("Volume"), {sdPropVol, txtPropVol, new QLabel(QStringLiteral("%"))}},
                {tr("Scart config"), {cbProScrat}},
                {tr("Spdif config"), {cbPropSpdif}}});
    addSection(tr("Receiver"), {{tr("Hardware version"), {txtPropHW}},
                                {tr("Software version"), {txtPropSW}},
                                {tr("Userdefine1"), {txtPropU1}},
                                {tr("Userdefine2"), {txtPropU2}},
                                {tr("Userdefine3"), {txtPropU3}}});
    column->addStretch();
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus); // the keyboard has the fields to go to
    m_scroll->setWidgetResizable(true);
    m_scroll->setWidget(m_page);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_page->setAutoFillBackground(false); // which setWidget() has switched on
}

void PanelTab::addSection(const QString &caption, const QList<std::pair<QString, QList<QWidget *>>> &lines)
{
    auto *section = new QGroupBox(caption);
    auto *form = new QFormLayout(section);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const auto &[name, fields] : lines) {
        auto *label = new QLabel(name);
        label->setFixedWidth(kLabelWidth);
        label->setBuddy(fields.first());
        auto *line = new QHBoxLayout;
        for (QWidget *field : fields)
            line->addWidget(field);
        form->addRow(label, line);
    }
    m_page->layout()->addWidget(section);
}

void PanelTab::layOut(int)
{
    place(m_scroll, 0, kMargin, width(), height() - 2 * kMargin);
}

void PanelTab::showSettings(const PanelSettings &settings)
{
    m_notShown.clear();
    txtDefault->setText(settings.path);
    showChoice(cbPropLang, settings.language);
    for (const auto &[box, text] :
         {std::pair(txtPropHW, &settings.hardwareVersion), std::pair(txtPropSW, &settings.softwareVersion),
          std::pair(txtPropU1, &settings.userdefine1), std::pair(txtPropU2, &settings.userdefine2),
          std::pair(txtPropU3, &settings.userdefine3)}) {
        if (*text)
            box->setText(**text);
    }
    showLevel(sdPropTrans, txtPropTrans, settings.transparence);
    showLevel(sdPropVol, txtPropVol, settings.volume);
    if (settings.timeZone)
        showTimeZone(*settings.timeZone);
    if (settings.summerTime)
        cbPropSum->setCurrentIndex(*settings.summerTime ? 1 : 0);
    showChoice(cbProScrat, settings.scart);
    showChoice(cbPropSpdif, settings.spdif);
    m_choices.note();
    if (!m_notShown.isEmpty())
        m_talk.say(
            tr("Not among the choices of the Panel tab: %1.").arg(m_notShown.join(QStringLiteral(", "))));
}

void PanelTab::showChoice(QComboBox *box, const std::optional<PanelChoice> &choice)
{
    if (!choice)
        return;
    box->clear();
    box->addItems(choice->entries);
    const bool found = choice->selected < choice->entries.size();
    box->setCurrentIndex(found ? int(choice->selected) : -1);
    if (!found)
        m_notShown.append(said(box, choice->value));
}

void PanelTab::showLevel(QSlider *bar, QLineEdit *percent, const std::optional<PanelLevel> &level)
{
    if (!level)
        return;
    bar->setValue(int(std::clamp<qint64>(level->value, bar->minimum(), bar->maximum())));
    percent->setText(QString::number(level->percent)); // of the value itself, which may be beyond the bar
}

void PanelTab::showTimeZone(const QString &value)
{
    QStringList zones;
    for (int entry = 0; entry < cbPropTime->count(); ++entry)
        zones.append(cbPropTime->itemText(entry));
    const qsizetype entry = timeZoneEntry(zones, value);
    cbPropTime->setCurrentIndex(int(std::min(entry, zones.size() - 1)));
    if (entry == zones.size())
        m_notShown.append(said(cbPropTime, value));
}

} // namespace quillmere
