#pragma once

#include "platform/ListRows.h"
#include "platform/TabFrame.h"

class QLabel;
class QLineEdit;

namespace quillmere {

class ListView;

// The Keymap tab: the key groups of the remote control and the keys of one group.
class KeymapTab : public TabFrame
{
    Q_OBJECT

public:
    explicit KeymapTab(QWidget *parent = nullptr);

protected:
    void layOut(int height) override;

private:
    ListRows m_groups; // text = display name, sub-item 1 = group name
    ListRows m_keys;   // text = key name, sub-item 1 = code
    CaptionBox *Frame2;
    ListView *lvKeyGroup;
    QLineEdit *txtKeymap;
    QLabel *lbKeymap;
    ListView *lvKeyMap;
};

} // namespace quillmere
