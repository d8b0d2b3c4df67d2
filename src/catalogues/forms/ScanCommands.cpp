#include "catalogues/forms/ScanCommands.h"

#include "asking/Talk.h"
#include "catalogues/UsageScan.h"
#include "controls/Commands.h"
#include "outline/Document.h"
#include "rows/ListRows.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>

namespace quillmere {

namespace {

int checkedRows(const ListRows &rows)
{
    const auto isChecked = [](const ListRows::Row &row) { return row.checked; };
    return int(std::count_if(rows.rows().cbegin(), rows.rows().cend(), isChecked));
}

} // namespace

ScanCommands::ScanCommands(ListRows &windows, const RowsDocument &images, ListRows &colours, Talk &talk,
                           QObject *parent)
    : QObject(parent), m_images(images), LvWidget(windows), lvImage(images.rows()), lvColor(colours),
      m_talk(talk)
{
}

void ScanCommands::addCommands(Commands &menu)
{
    menu.on("mnuSWidget", [this] { mnuSWidget_Click(); });
    menu.on("mnuSKernel", [this] { mnuSKernel_Click(); });
}

void ScanCommands::mnuSWidget_Click()
{
    m_talk.runLong(tr("Scanning the windows"), [this](const Progress &progress) {
        scanWindows(LvWidget, lvImage, lvColor, progress, m_images.encoding().rule);
    });
    m_talk.say(tr("In use: %1 of %2 images, %3 of %4 colours; they are checked on their tabs.")
                   .arg(checkedRows(lvImage))
                   .arg(lvImage.count())
                   .arg(checkedRows(lvColor))
                   .arg(lvColor.count()));
}

void ScanCommands::mnuSKernel_Click()
{
    const QString text = QApplication::clipboard()->text();
    if (text.isEmpty()) {
        m_talk.say(tr("There is no text on the clipboard to scan."));
        return;
    }
    QList<int> found;
    m_talk.runLong(tr("Scanning the clipboard"), [&](const Progress &progress) {
        found = checkNamesIn(text, {&LvWidget, &lvImage, &lvColor}, progress);
    });
    m_talk.say(tr("Named in the text: %1 windows, %2 images, %3 colours; they are checked on their tabs.")
                   .arg(found[0])
                   .arg(found[1])
                   .arg(found[2]));
}

} // namespace quillmere
