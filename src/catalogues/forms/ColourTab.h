#pragma once

#include "controls/TabFrame.h"

namespace quillmere {

class ColourCatalogue;
class Commands;
class Files;
class ListRows;
class ListView;
class Talk;
class Swatch;

// The Color tab: the colours of the theme.
class ColourTab : public TabFrame
{
    Q_OBJECT

public:
    ColourTab(ListRows &colours, ColourCatalogue &catalogue, Files &files, Talk &talk,
              QWidget *parent = nullptr);

    void addCommands(Commands &menu);
    // Shows what the catalogue's loader has read.
    void showCatalogue();
    // The row that is edited from outside; -1 without one. 0-based.
    int selectedRow() const;

signals:
    // A row was opened: its name and code, whatever the code is.
    void entryOpened(const QString &name, const QString &code);
    // Behind entryOpened, where the code stands for a colour: its channels, 0 to 255.
    void colourOpened(int red, int green, int blue);

protected:
    void layOut(int height) override;

private:
    void lvColor_DblClick(int row);
    void lvColor_Delete(int row);
    // Keeps the colour it has where the row's code stands for none.
    void showSwatch(int row);
    // A code of the right length that is no colour is told of; true then.
    bool refused(const QString &code);
    void mnuCOpen_Click();
    void mnuCHapus_Click();
    void mnuCSave_Click();

    ListRows &m_colours;
    ColourCatalogue &m_catalogue;
    Files &m_files;
    Talk &m_talk;
    CaptionBox *frColor;
    ListView *lvColor;
    Swatch *Picture2;
};

} // namespace quillmere
