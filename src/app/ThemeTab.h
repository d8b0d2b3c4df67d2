#pragma once

#include "controls/TabFrame.h"

class QComboBox;
class QListView;

namespace quillmere {

class DirListBox;
class FileList;
class ListRows;
class ListView;

// The Theme tab: drive, folder and the entries of theme.xml.
class ThemeTab : public TabFrame
{
    Q_OBJECT

public:
    ThemeTab(ListRows &entries, FileList &files, QWidget *parent = nullptr);

    DirListBox *Dir1;

protected:
    void layOut(int height) override;

private:
    QComboBox *Drive1;
    QListView *File1;
    ListView *lvTheme;
};

} // namespace quillmere
