#pragma once

#include <QObject>

namespace quillmere {

class Commands;
class ListRows;
class RowsDocument;
class Talk;

// The commands of the Scan menu, which check the rows in use.
class ScanCommands : public QObject
{
    Q_OBJECT

public:
    // The rows of the lists with those names. Windows are read as the images were.
    ScanCommands(ListRows &LvWidget, const RowsDocument &images, ListRows &lvColor, Talk &talk,
                 QObject *parent = nullptr);

    void addCommands(Commands &menu);

private:
    void mnuSWidget_Click();
    void mnuSKernel_Click();

    const RowsDocument &m_images;
    ListRows &LvWidget;
    ListRows &lvImage;
    ListRows &lvColor;
    Talk &m_talk;
};

} // namespace quillmere
