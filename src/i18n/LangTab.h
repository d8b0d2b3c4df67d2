#pragma once

#include "platform/ListRows.h"
#include "platform/TabFrame.h"

class QLineEdit;

namespace quillmere {

class ListView;

// The Lang tab: the languages of the theme and the strings of one of them.
class LangTab : public TabFrame
{
    Q_OBJECT

public:
    explicit LangTab(QWidget *parent = nullptr);

protected:
    void layOut(int height) override;

private:
    ListRows m_languages; // text = full path, sub-item 1 = id, 2 = file name
    ListRows m_strings;   // text empty, sub-item 1 = source, 2 = translation
    QLineEdit *txtLang;
    ListView *lvLang;
    QLineEdit *txtLangFile;
    ListView *LvBhs;
};

} // namespace quillmere
