#include "widgets/forms/WidgetTab.h"

#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PathLabel.h"
#include "files/FileList.h"
#include "files/TextFile.h"
#include "markup/FormatXML.h"
#include "markup/Matching.h"
#include "widgets/WidgetCatalogue.h"

#include <QLabel>

namespace quillmere {

namespace {

constexpr int kMargin = 8;        // pixels
constexpr int kTop = 18;          // pixels, below the caption of the frame
constexpr int kLine = 18;         // pixels, a line of labels
constexpr int kFilesHeight = 150; // pixels, the list of further files
constexpr int kAround = 1260;     // twips of the frame's height that neither list takes

} // namespace

WidgetTab::WidgetTab(WidgetCatalogue &catalogue, FileList &file1, Files &files, Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(1)"), parent), m_catalogue(catalogue), m_file1(file1), m_files(files),
      m_talk(talk), frWidget(new CaptionBox(QStringLiteral("frWidget"), this)),
      LvWidget(new ListView(QStringLiteral("LvWidget"), tr("Windows"), catalogue.LvWidget, frWidget)),
      lvWidgetDel(new ListView(QStringLiteral("lvWidgetDel"), tr("Files not in the catalogue"),
                               catalogue.lvWidgetDel, frWidget))
{
    const auto label = [this](const QString &caption, const char *name) {
        m_captions.append(new QLabel(caption, frWidget));
        auto *value = named(new QLabel(frWidget), name, caption);
        value->setTextFormat(Qt::PlainText);
        return value;
    };
    lblWidth = label(QStringLiteral("Width :"), "lblWidth");
    lblHeight = label(QStringLiteral("Height :"), "lblHeight");
    lblbpp = label(QStringLiteral("Bit Depth :"), "lblbpp");
    LblWidgetPath = new PathLabel(QStringLiteral("LblWidgetPath"), tr("Catalogue folder"), frWidget);

    LvWidget->setSelectionMode(QAbstractItemView::ExtendedSelection);
    LvWidget->setColumnShares({9, 9, 9, 1});
    connect(LvWidget, &ListView::rowOpened, this, [this](int row) {
        emit documentChosen(m_catalogue.LvWidget.text(row), m_catalogue.document.theme());
    });
}

void WidgetTab::addCommands(Commands &menu)
{
    menu.on("mnuWidgetOpen", [this] { mnuWidgetOpen_Click(); });
    menu.on("mnuWidgetSel", [this] { mnuWidgetSel_Click(); });
    menu.on("mnuWidgetDel", [this] { mnuWidgetDel_Click(); });
    menu.on("mnuWidgetFile", [this] { mnuWidgetFile_Click(); });
    menu.on("mnuWidgetDelFile", [this] { mnuWidgetDelFile_Click(); });
    menu.on("mnuInfoChannel", [this] { mnuInfoChannel_Click(); });
}

void WidgetTab::layOut(int height)
{
    place(frWidget, 0, 0, width(), this->height());
    const int inner = width() - 2 * kMargin;
    const int listHeight = toPixels(height - kAround) - kFilesHeight;
    place(LvWidget, kMargin, kTop, inner, listHeight);

    int top = kTop + listHeight + kMargin;
    int left = kMargin;
    const QList<QLabel *> values = {lblWidth, lblHeight, lblbpp};
    for (int i = 0; i < values.size(); ++i) {
        const int captionWidth = m_captions[i]->sizeHint().width() + 6;
        place(m_captions[i], left, top, captionWidth, kLine);
        place(values[i], left + captionWidth, top, inner / 3 - captionWidth, kLine);
        left += inner / 3;
    }
    top += kLine;
    place(LblWidgetPath, kMargin, top, inner, kLine);
    place(lvWidgetDel, kMargin, top + kLine + 4, inner, kFilesHeight);
}

void WidgetTab::showCatalogue()
{
    frWidget->setCaption(m_catalogue.document.path());
    LblWidgetPath->setText(m_catalogue.folder);
    lblWidth->setText(m_catalogue.width);
    lblHeight->setText(m_catalogue.height);
    lblbpp->setText(m_catalogue.bpp);
}

void WidgetTab::mnuWidgetOpen_Click()
{
    m_catalogue.reload(m_files, m_file1);
    showCatalogue();
}

void WidgetTab::mnuWidgetSel_Click()
{
    const ListRows &rows = m_catalogue.LvWidget;
    QItemSelection missing;
    for (int row = 0; row < rows.count(); ++row) {
        if (rows.sub(row, 3) != u"Y")
            missing.select(rows.index(row, 0), rows.index(row, rows.columnCount() - 1));
    }
    LvWidget->selectionModel()->select(missing, QItemSelectionModel::ClearAndSelect);
    if (!missing.isEmpty())
        LvWidget->scrollTo(missing.first().topLeft());
}

bool WidgetTab::maySave(const QString &question, const QString &text)
{
    return askToWrite(m_files, m_talk,
                      {QStringLiteral("Simpan File"), question, m_catalogue.document.path(),
                       m_catalogue.document.theme(), Files::Step::Save, text,
                       m_catalogue.document.encoding().rule},
                      No::Counts);
}

void WidgetTab::mnuWidgetDel_Click()
{
    const ListRows &rows = m_catalogue.LvWidget;
    if (m_catalogue.document.path().isEmpty() || rows.isEmpty())
        return;
    QString text = m_catalogue.document.readAgain();
    for (const ListRows::Row &row : rows.rows()) {
        if (!row.checked)
            continue;
        bool remove = true;
        // Sub-item 2 is the date of the document, so nobody has ever been asked here.
        if (row.sub(2) == u"Y")
            remove = m_talk.ask(QStringLiteral("Delete"), u"Delete widget " + row.sub(1));
        if (remove)
            text = WidgetCatalogue::withoutWindow(text, row.sub(1));
    }
    text += u"\r\n";
    if (maySave(QStringLiteral("Benar mau menyimpan file?"), text))
        m_catalogue.document.save(m_files, text);
    mnuWidgetOpen_Click();
}

void WidgetTab::mnuInfoChannel_Click()
{
    if (m_catalogue.LvWidget.isEmpty())
        return;
    QString info, signal;
    for (const ListRows::Row &row : m_catalogue.LvWidget.rows()) {
        const QString name = row.sub(1);
        if (name != u"wnd_channel_info" && name != u"wnd_channel_info_signal")
            continue;
        QString text = LoadFile(row.text, m_catalogue.document.encoding().rule);
        (name == u"wnd_channel_info" ? info : signal) = FormatXML(text);
    }
    emit markupChosen(info + signal);
}

int WidgetTab::selectedFile()
{
    const int row = lvWidgetDel->selectedRow();
    if (row < 0)
        m_talk.say(tr("Select a file in the lower list of the Widget tab first."));
    return row;
}

void WidgetTab::mnuWidgetFile_Click()
{
    if (m_catalogue.document.path().isEmpty())
        return;
    const int row = selectedFile();
    if (row < 0)
        return;
    QString name = m_catalogue.lvWidgetDel.text(row);
    replaceIgnoringCase(name, u".xml", u"");
    const QString text = WidgetCatalogue::withWindow(m_catalogue.document.readAgain(), name);
    if (maySave(QStringLiteral("Benar mau menambahkan widget file?"), text))
        m_catalogue.document.save(m_files, text);
    mnuWidgetOpen_Click();
}

void WidgetTab::mnuWidgetDelFile_Click()
{
    const int row = selectedFile();
    if (row < 0)
        return;
    const QString path = m_catalogue.unlistedPath(row);
    // The answer does not matter: designers are used to the file being gone, and it is in the backup folder.
    const WriteQuestion question = {QStringLiteral("Delete File"), u"Delete file " + path + u" ?", path,
                                    m_catalogue.document.theme(), Files::Step::Delete};
    if (askToWrite(m_files, m_talk, question, No::IsIgnored))
        m_files.remove(path, m_catalogue.document.theme());
    mnuWidgetOpen_Click();
}

} // namespace quillmere
