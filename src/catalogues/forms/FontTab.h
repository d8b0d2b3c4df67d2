#pragma once

#include "controls/FixedChoices.h"
#include "controls/TabFrame.h"

class QComboBox;
class QLineEdit;

namespace quillmere {

class FontView;
class ListRows;
class ListView;

// The Font tab: the fonts of the theme, and the Font Editor that shows the one selected. Read-only.
class FontTab : public TabFrame
{
    Q_OBJECT

public:
    explicit FontTab(ListRows &fonts, QWidget *parent = nullptr);

    // Shows the path of the catalogue and the font files beside it.
    void showCatalogue(const QString &path, const QStringList &fontFiles);

    FontView *const sample; // of the selected font

protected:
    void layOut(int height) override;

private:
    void lvFont_Click(int row);

    ListRows &m_fonts;
    QWidget *m_pathRow;
    QLineEdit *txtFont;
    ListView *lvFont;
    CaptionBox *Frame1;
    QLineEdit *txtNama, *txtSize;
    QComboBox *cbFont, *cbStyle;
    FixedChoices m_choices;
};

} // namespace quillmere
