#include "catalogues/forms/ColourTab.h"

#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "catalogues/ColourCatalogue.h"
#include "catalogues/forms/ColourDelegate.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "controls/Swatch.h"
#include "markup/ColourCode.h"
#include "rows/ListRows.h"

#include <QScrollBar>

namespace quillmere {

namespace {

constexpr int kMargin = 8;        // pixels
constexpr int kTop = 18;          // pixels, below the caption of the frame
constexpr int kSwatchHeight = 48; // pixels
constexpr int kAround = 900;      // twips of the frame's height that neither list nor swatch takes

} // namespace

ColourTab::ColourTab(ListRows &colours, ColourCatalogue &catalogue, Files &files, Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(3)"), parent), m_colours(colours), m_catalogue(catalogue), m_files(files),
      m_talk(talk), frColor(new CaptionBox(QStringLiteral("frColor"), this)),
      lvColor(new ListView(QStringLiteral("lvColor"), tr("Colours"), colours, frColor)),
      Picture2(new Swatch("Picture2", tr("Selected colour"), frColor))
{
    lvColor->setColumnShares({1, 8, 5});
    lvColor->setItemDelegateForColumn(2, new ColourDelegate(this));
    connect(lvColor, &ListView::rowClicked, this, &ColourTab::showSwatch);
    // Only the mouse is told of a bad code: the arrow keys must be able to walk past it.
    connect(lvColor, &ListView::clicked, this,
            [this](const QModelIndex &index) { refused(m_colours.sub(index.row(), 2)); });
    connect(lvColor, &ListView::rowOpened, this, &ColourTab::lvColor_DblClick);
    connect(lvColor, &ListView::deletePressed, this, &ColourTab::lvColor_Delete);
    connect(&colours, &QAbstractItemModel::rowsInserted, lvColor, [this](const QModelIndex &, int, int last) {
        lvColor->scrollTo(m_colours.index(last, 0)); // which need not be the last where they are sorted
    });
    connect(&colours, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &changed) {
        if (changed.row() == lvColor->selectedRow())
            showSwatch(changed.row());
    });
}

void ColourTab::addCommands(Commands &menu)
{
    menu.on("mnuCOpen", [this] { mnuCOpen_Click(); });
    menu.on("mnuCHapus", [this] { mnuCHapus_Click(); });
    menu.on("mnuCSave", [this] { mnuCSave_Click(); });
}

void ColourTab::layOut(int height)
{
    place(frColor, 0, 0, width(), this->height());
    const int inner = width() - 2 * kMargin;
    const int listHeight = toPixels(height - kAround) - kSwatchHeight;
    place(lvColor, kMargin, kTop, inner, listHeight);
    place(Picture2, kMargin, kTop + listHeight + kMargin, inner, kSwatchHeight);
}

void ColourTab::showCatalogue()
{
    frColor->setCaption(m_catalogue.document.path());
}

int ColourTab::selectedRow() const
{
    return lvColor->selectedRow();
}

void ColourTab::showSwatch(int row)
{
    if (const auto colour = channelsOf(m_colours.sub(row, 2)))
        Picture2->setColour(QColor(colour->red, colour->green, colour->blue));
}

bool ColourTab::refused(const QString &code)
{
    if (code.size() != kColourCodeLength || channelsOf(code))
        return false;
    m_talk.tell(
        QStringLiteral("Quillmere"),
        tr("\"%1\" is not a colour: after its first character a code has six hexadecimal digits.").arg(code),
        Talk::Icon::Critical);
    return true;
}

void ColourTab::lvColor_DblClick(int row)
{
    const QString code = m_colours.sub(row, 2);
    if (refused(code))
        return;
    emit entryOpened(m_colours.sub(row, 1), code);
    if (const auto colour = channelsOf(code))
        emit colourOpened(colour->red, colour->green, colour->blue);
    else
        m_talk.say(tr("\"%1\" is kept as it is: only codes such as #RRGGBB open in the colour dialog.")
                       .arg(code.left(40)));
}

void ColourTab::lvColor_Delete(int row)
{
    m_colours.remove(row);
    if (const int next = lvColor->selectedRow(); next >= 0)
        showSwatch(next);
}

void ColourTab::mnuCOpen_Click()
{
    if (m_catalogue.document.path().isEmpty())
        return;
    m_catalogue.reload(m_files);
    showCatalogue();
    m_talk.say(tr("%1: %2 colours.").arg(m_catalogue.document.path()).arg(m_colours.count()));
}

void ColourTab::mnuCHapus_Click()
{
    const int scrolled = lvColor->verticalScrollBar()->value();
    const int removed = RemoveCheckedRows(m_colours);
    lvColor->verticalScrollBar()->setValue(scrolled);
    m_talk.say(removed == 1  ? tr("1 colour removed from the list.")
               : removed > 0 ? tr("%1 colours removed from the list.").arg(removed)
                             : tr("Tick the colours to remove first."));
}

void ColourTab::mnuCSave_Click()
{
    if (m_catalogue.document.path().isEmpty()) {
        m_talk.tell(QStringLiteral("Simpan File"),
                    tr("There is no colour file to save to: open a theme that names one first."),
                    Talk::Icon::Information);
        return;
    }
    // The answer does not matter: saving has always meant saving, and the old file is in the backup folder.
    const WriteQuestion question = {QStringLiteral("Simpan File"),
                                    QStringLiteral("Benar mau menyimpan file?"),
                                    m_catalogue.document.path(),
                                    m_catalogue.document.theme(),
                                    Files::Step::Save,
                                    ColourFileText(m_colours),
                                    m_catalogue.document.encoding().rule};
    if (!askToWrite(m_files, m_talk, question, No::IsIgnored))
        return;
    m_catalogue.save(m_files);
    m_talk.sayUntilEdit(tr("%1 saved.").arg(m_catalogue.document.path()));
}

} // namespace quillmere
