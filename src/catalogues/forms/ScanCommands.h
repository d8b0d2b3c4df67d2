#pragma once

#include "files/Progress.h"

#include <QObject>

namespace quillmere {

class Commands;
class ListRows;
class RowsDocument;

// The commands of the Scan menu, which check the rows in use.
class ScanCommands : public QObject
{
    Q_OBJECT

public:
    // The rows of the lists with those names. Windows are read as the images were.
    ScanCommands(ListRows &LvWidget, const RowsDocument &images, ListRows &lvColor, LongRun runLong,
                 QObject *parent = nullptr);

    void addCommands(Commands &menu);

signals:
    // What a scan has found.
    void hint(const QString &text);

private:
    void mnuSWidget_Click();
    void mnuSKernel_Click();

    const RowsDocument &m_images;
    ListRows &LvWidget;
    ListRows &lvImage;
    ListRows &lvColor;
    LongRun m_runLong;
};

} // namespace quillmere
