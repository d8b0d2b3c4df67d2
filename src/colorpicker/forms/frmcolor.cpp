#include "colorpicker/forms/frmcolor.h"

#include "asking/Talk.h"
#include "colorpicker/ColourValue.h"
#include "colorpicker/forms/ChannelBar.h"
#include "colorpicker/forms/ColourPalette.h"
#include "controls/CaptionBox.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "controls/Swatch.h"
#include "files/Paths.h"
#include "rows/ListRows.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QWindow>

namespace quillmere {

namespace {

constexpr int kGap = 12;                 // pixels between the parts of the dialog
constexpr QSize kChannelSwatch(52, 22);  // pixels
constexpr int kSelectedWidth = 130;      // pixels
constexpr int kLongestText = 0x7fffffff; // a catalogue's names may be of any length

void setOnTop(QWidget &window, bool onTop)
{
    // Through the native window: setting the flag of a widget hides it, and showing it again flickers.
    window.overrideWindowFlags(window.windowFlags().setFlag(Qt::WindowStaysOnTopHint, onTop));
    if (QWindow *native = window.windowHandle())
        native->setFlag(Qt::WindowStaysOnTopHint, onTop);
}

} // namespace

frmcolor::frmcolor(ListRows &colours, std::function<int()> selectedRow, Talk &talk, QWidget *parent)
    : QDialog(parent), m_colours(colours), m_selectedRow(std::move(selectedRow)), m_talk(talk)
{
    setObjectName(QStringLiteral("frmcolor"));
    setAccessibleName(tr("Colour picker"));
    setWindowTitle(tr("Colour"));
    Set_Dialog_On_Top(*this);

    auto *grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setSpacing(kGap);
    grid->addWidget(makePalette(), 0, 0);
    grid->addWidget(makeChannels(), 0, 1);
    grid->addWidget(makeEntry(), 1, 0, 1, 2);
    scrollWhereSmall(*this);
    Set_Picker_RGB(255, 255, 255);
}

// A box that loses the focus tidies its number; it must find the dialog alive.
frmcolor::~frmcolor()
{
    hide();
}

QWidget *frmcolor::makePalette()
{
    auto *frame = new CaptionBox(QStringLiteral("Palette_Frame"), this);
    frame->setCaption(tr("Palette"));
    auto *picture = new ColourPalette;
    auto *box = new QVBoxLayout(frame);
    box->addWidget(picture);
    connect(picture, &ColourPalette::pointed, this, &frmcolor::Set_Picker_Colour);
    return frame;
}

QWidget *frmcolor::makeChannels()
{
    auto *frame = new CaptionBox(QStringLiteral("Channels_Frame"), this);
    frame->setCaption(tr("Channels"));
    auto *grid = new QGridLayout(frame);
    grid->setRowStretch(2, 1);
    auto *digits = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this);
    const auto make = [&](int column, const QString &name, const char *inColour, const char *adjust,
                          const char *value, int Channels::*part, const char *cannotSet) {
        Channel &channel = m_channels[size_t(column)];
        channel = {new Swatch(inColour, name), named(new ChannelBar, adjust, name),
                   named(new QLineEdit, value, name), part, cannotSet};
        channel.inColour->setFixedSize(kChannelSwatch);
        channel.value->setFixedWidth(kChannelSwatch.width());
        channel.value->setAlignment(Qt::AlignHCenter);
        channel.value->setValidator(digits);
        channel.value->setToolTip(tr("How much %1 is in the colour, from 0 to 255.").arg(name.toLower()));
        grid->addWidget(new QLabel(name), 0, column, Qt::AlignHCenter);
        grid->addWidget(channel.inColour, 1, column);
        grid->addWidget(channel.adjust, 2, column, Qt::AlignHCenter);
        grid->addWidget(channel.value, 3, column);
        connect(channel.adjust, &ChannelBar::valueChanged, this,
                [this, &channel](int now) { setChannel(channel, now); });
        connect(channel.value, &QLineEdit::textChanged, this, [this, &channel] { value_Change(channel); });
        connect(channel.value, &QLineEdit::editingFinished, this,
                [&channel] { channel.value->setText(QString::number(channel.adjust->value())); });
    };
    make(0, tr("Red"), "R_In_Colour", "Adjust_R", "R_Value", &Channels::red, "Can't Set Red");
    make(1, tr("Green"), "G_In_Colour", "Adjust_G", "G_Value", &Channels::green, "Can't Set Green");
    make(2, tr("Blue"), "B_In_Colour", "Adjust_B", "B_Value", &Channels::blue, "Can't Set Blue");
    return frame;
}

QWidget *frmcolor::makeEntry()
{
    auto *part = new QWidget(this);
    auto *selected = new CaptionBox(QStringLiteral("Sel_Col_Frame"), part);
    selected->setCaption(QStringLiteral("Selected Colour"));
    selected->setFixedWidth(kSelectedWidth);
    Show_Selected = new Swatch("Show_Selected", tr("Selected colour"));
    m_before = new Swatch("Show_Before", tr("Colour before"));
    m_before->setToolTip(tr("The colour that was opened"));
    Show_Selected->setToolTip(tr("The colour as it is now"));
    auto *swatches = new QGridLayout(selected);
    swatches->setHorizontalSpacing(0); // side by side, the eye tells them apart best
    swatches->addWidget(new QLabel(tr("Before")), 0, 0, Qt::AlignHCenter);
    swatches->addWidget(new QLabel(tr("Now")), 0, 1, Qt::AlignHCenter);
    swatches->addWidget(m_before, 1, 0);
    swatches->addWidget(Show_Selected, 1, 1);
    swatches->setRowStretch(1, 1);

    txtName = named(new QLineEdit, "txtName", tr("Colour name"));
    txtCode = named(new QLineEdit, "txtCode", tr("Colour code"));
    txtName->setToolTip(tr("The name by which windows use the colour."));
    txtCode->setToolTip(tr("\"#\" and two hexadecimal digits each for red, green and blue."));
    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Name : "), txtName);
    form->addRow(QStringLiteral("Code : "), txtCode);
    for (QLineEdit *box : {txtName, txtCode})
        box->setMaxLength(kLongestText);
    connect(txtCode, &QLineEdit::textEdited, this, &frmcolor::txtCode_Edited);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    const auto button = [&](const QString &caption, const char *name, const QString &says,
                            void (frmcolor::*click)()) {
        auto *made = named(new QPushButton(caption), name, says);
        made->setToolTip(says);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, click);
        buttons->addWidget(made);
        return made;
    };
    button(QStringLiteral("&Edit"), "Command1", tr("Write into the selected colour"),
           &frmcolor::Command1_Click)
        ->setDefault(true);
    button(QStringLiteral("&Add"), "cmbTambah", tr("Add as a new colour"), &frmcolor::cmbTambah_Click);
    form->addRow(buttons);

    auto *line = new QHBoxLayout(part);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kGap);
    line->addWidget(selected);
    line->addLayout(form);
    return part;
}

void frmcolor::Set_Dialog_On_Top(QWidget &window)
{
    setOnTop(window, true);
}

void frmcolor::Set_Dialog_Not_On_Top(QWidget &window)
{
    setOnTop(window, false);
}

void frmcolor::setEntry(const QString &name, const QString &code)
{
    txtName->setText(name);
    txtCode->setText(code);
}

void frmcolor::showColour(int red, int green, int blue)
{
    showChannels({red, green, blue});
    m_before->setColour(QColor(red, green, blue));
    setWindowTitle(tr("Colour: %1 (%2)").arg(NamaColor.left(40), fileNameOf(NamaFile).toString()));
    show();
    raise();
    activateWindow();
}

void frmcolor::Convert_To_RGB(quint32 colour)
{
    const Channels channels = channelsOf(colour);
    showChannels(channels);
    txtCode->setText(colourCode(channels));
}

void frmcolor::Set_Picker_Colour(quint32 colour)
{
    Convert_To_RGB(colour);
}

void frmcolor::Set_Picker_RGB(int red, int green, int blue)
{
    Convert_To_RGB(colourValue({red, green, blue}));
}

Channels frmcolor::current() const
{
    return {Selected_R, Selected_G, Selected_B};
}

void frmcolor::showChannels(const Channels &colour)
{
    Selected_R = quint8(colour.red);
    Selected_G = quint8(colour.green);
    Selected_B = quint8(colour.blue);
    Selected_Col = colourValue(colour);
    for (const Channel &channel : m_channels) {
        const int value = colour.*channel.part;
        Channels alone;
        alone.*channel.part = value;
        channel.inColour->setColour(QColor(alone.red, alone.green, alone.blue));
        const QSignalBlocker quietBar(channel.adjust);
        channel.adjust->setValue(value);
        // A box that says the value already keeps what was typed: nothing, while a new number is begun.
        const QSignalBlocker quietBox(channel.value);
        if (channelValue(channel.value->text()) != value || !channel.value->hasFocus())
            channel.value->setText(QString::number(value));
    }
    Show_Selected->setColour(QColor(colour.red, colour.green, colour.blue));
}

void frmcolor::setChannel(const Channel &channel, int value)
{
    Channels colour = current();
    colour.*channel.part = value;
    Convert_To_RGB(colourValue(colour));
}

void frmcolor::value_Change(const Channel &channel)
{
    const QString text = channel.value->text();
    const qsizetype valid = validLength(text);
    if (valid == text.size()) {
        setChannel(channel, channelValue(text));
        return;
    }
    Set_Dialog_Not_On_Top(*this);
    m_talk.tell(QLatin1String(channel.cannotSet),
                QStringLiteral("Invalid value. Range must be within (0-255)."), Talk::Icon::Information);
    Set_Dialog_On_Top(*this);
    channel.value->setText(text.left(valid));
    activateWindow(); // the message box gives the focus back to the main window
}

// A code that is typed is a colour as soon as it is whole; it is not rewritten under the person's hands.
void frmcolor::txtCode_Edited(const QString &code)
{
    if (const auto colour = channelsOf(code))
        showChannels(*colour);
}

void frmcolor::Command1_Click()
{
    const int row = m_selectedRow();
    if (row < 0)
        return;
    m_colours.setSub(row, 1, txtName->text());
    m_colours.setSub(row, 2, txtCode->text());
}

void frmcolor::cmbTambah_Click()
{
    m_colours.add(QString(), {txtName->text(), txtCode->text()});
}

} // namespace quillmere
