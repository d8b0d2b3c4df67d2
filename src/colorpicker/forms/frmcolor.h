#pragma once

#include "markup/ColourCode.h"

#include <QDialog>

#include <array>
#include <functional>

class QLineEdit;

namespace quillmere {

class ChannelBar;
class ListRows;
class Talk;
class Swatch;

// The colour picker: channels by bar, by number or from a palette, written into the colour rows. It stays on
// top of other windows and open until it is closed.
class frmcolor : public QDialog
{
    Q_OBJECT

public:
    // `colours`: sub-item 1 = name, 2 = code. `selectedRow` says which of them "Edit" writes to, -1 for none.
    frmcolor(ListRows &colours, std::function<int()> selectedRow, Talk &talk, QWidget *parent = nullptr);
    ~frmcolor() override;

    // What the dialog was opened for; shown in its title.
    QString NamaFile;
    QString NamaColor;

    // The current colour: its channels, and all of it with red in the low byte.
    quint8 Selected_R = 0, Selected_G = 0, Selected_B = 0;
    quint32 Selected_Col = 0;

    // Fills in name and code and leaves the colour as it is.
    void setEntry(const QString &name, const QString &code);
    // Shows the dialog with this colour, channels 0 to 255. The code stays as setEntry() was given it.
    void showColour(int red, int green, int blue);

    // Each makes a colour the current one, in every control. Values have red in the low byte.
    void Convert_To_RGB(quint32 colour);
    void Set_Picker_Colour(quint32 colour);
    void Set_Picker_RGB(int red, int green, int blue);

    static void Set_Dialog_On_Top(QWidget &window);
    static void Set_Dialog_Not_On_Top(QWidget &window);

private:
    struct Channel
    {
        Swatch *inColour;
        ChannelBar *adjust;
        QLineEdit *value;
        int Channels::*part;
        const char *cannotSet; // title of the message about a bad value
    };

    QWidget *makePalette();
    QWidget *makeChannels();
    QWidget *makeEntry();
    Channels current() const;
    // The colour into every control but txtCode.
    void showChannels(const Channels &colour);
    void setChannel(const Channel &channel, int value);
    void value_Change(const Channel &channel);
    void txtCode_Edited(const QString &code);
    void Command1_Click();
    void cmbTambah_Click();

    ListRows &m_colours;
    std::function<int()> m_selectedRow;
    Talk &m_talk;
    std::array<Channel, 3> m_channels;
    Swatch *Show_Selected, *m_before; // the colour that the dialog was opened with
    QLineEdit *txtName, *txtCode;
};

} // namespace quillmere
