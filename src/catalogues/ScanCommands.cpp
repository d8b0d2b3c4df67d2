#include "catalogues/ScanCommands.h"

#include "catalogues/BusyHint.h"
#include "catalogues/UsageScan.h"
#include "platform/Commands.h"
#include "platform/ListRows.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>
#include <functional>

namespace quillmere {

namespace {

int checkedRows(const ListRows &rows)
{
    const auto isChecked = [](const ListRows::Row &row) { return row.checked; };
    return int(std::count_if(rows.rows().cbegin(), rows.rows().cend(), isChecked));
}

} // namespace

ScanCommands::ScanCommands(ListRows &windows, ListRows &images, ListRows &colours, QObject *parent)
    : QObject(parent), LvWidget(windows), lvImage(images), lvColor(colours)
{
}

void ScanCommands::addCommands(Commands &menu)
{
    menu.on("mnuSWidget", [this] { mnuSWidget_Click(); });
    menu.on("mnuSKernel", [this] { mnuSKernel_Click(); });
}

void ScanCommands::mnuSWidget_Click()
{
    BusyHint progress([this](const QString &text) { emit hint(text); });
    scanWindows(LvWidget, lvImage, lvColor, std::ref(progress));
    emit hint(tr("In use: %1 of %2 images, %3 of %4 colours; they are checked on their tabs.")
                  .arg(checkedRows(lvImage))
                  .arg(lvImage.count())
                  .arg(checkedRows(lvColor))
                  .arg(lvColor.count()));
}

void ScanCommands::mnuSKernel_Click()
{
    const QString text = QApplication::clipboard()->text();
    if (text.isEmpty()) {
        emit hint(tr("There is no text on the clipboard to scan."));
        return;
    }
    const BusyHint waiting([](const QString &) {});
    QList<int> found;
    for (ListRows *rows : {&LvWidget, &lvImage, &lvColor}) {
        emit hint(tr("Scanning the text on the clipboard, list %1 of 3...").arg(found.size() + 1));
        found.append(checkNamesIn(text, *rows));
    }
    emit hint(tr("Named in the text: %1 windows, %2 images, %3 colours; they are checked on their tabs.")
                  .arg(found[0])
                  .arg(found[1])
                  .arg(found[2]));
}

} // namespace quillmere
