#pragma once

#include "controls/TabFrame.h"

class QLabel;
class QLineEdit;

namespace quillmere {

class Document;
class ListRows;
class ListView;
class Talk;

// The Keymap tab: the key groups of the remote control and the keys of one group. Read-only.
class KeymapTab : public TabFrame
{
    Q_OBJECT

public:
    // `file` is the keymap; a click on a group reads its keys from there.
    KeymapTab(ListRows &groups, ListRows &keys, Document &file, Talk &talk, QWidget *parent = nullptr);

    // Shows the path of the keymap.
    void showCatalogue();

protected:
    void layOut(int height) override;

private:
    void lvKeyGroup_Click(int row);

    Talk &m_talk;
    ListRows &m_groups;
    ListRows &m_keys;
    Document &m_file;
    CaptionBox *Frame2;
    ListView *lvKeyGroup;
    QLineEdit *txtKeymap;
    QLabel *lbKeymap;
    ListView *lvKeyMap;
};

} // namespace quillmere
