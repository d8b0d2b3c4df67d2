#pragma once

#include "platform/ListRows.h"
#include "platform/TabFrame.h"

namespace quillmere {

class ListView;

// The Color tab: the colours of the theme.
class ColorTab : public TabFrame
{
    Q_OBJECT

public:
    explicit ColorTab(QWidget *parent = nullptr);

protected:
    void layOut(int height) override;

private:
    ListRows m_colours; // text empty, sub-item 1 = name, 2 = code
    CaptionBox *frColor;
    ListView *lvColor;
    QFrame *Picture2;
};

} // namespace quillmere
