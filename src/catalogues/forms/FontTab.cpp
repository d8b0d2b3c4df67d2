#include "catalogues/forms/FontTab.h"

#include "catalogues/forms/FontView.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "rows/ListRows.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quillmere {

namespace {

constexpr int kMargin = 8;         // pixels
constexpr int kPathHeight = 26;    // pixels
constexpr int kEditorHeight = 300; // pixels
constexpr int kSample = 104;       // pixels of it
constexpr int kAround = 1080;      // twips of the frame's height that neither list nor editor takes

} // namespace

FontTab::FontTab(ListRows &fonts, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(5)"), parent), sample(new FontView), m_fonts(fonts),
      m_pathRow(new QWidget(this)), txtFont(named(new QLineEdit, "txtFont", tr("Font catalogue"))),
      lvFont(new ListView(QStringLiteral("lvFont"), tr("Fonts"), fonts, this)),
      Frame1(new CaptionBox(QStringLiteral("Frame1"), this)),
      txtNama(named(new QLineEdit, "txtNama", tr("Font name"))),
      txtSize(named(new QLineEdit, "txtSize", tr("Font size"))),
      cbFont(named(new QComboBox, "cbFont", tr("Font file"))),
      cbStyle(named(new QComboBox, "cbStyle", tr("Font style")))
{
    auto *pathLine = new QHBoxLayout(m_pathRow);
    pathLine->setContentsMargins(0, 0, 0, 0);
    pathLine->addWidget(new QLabel(QStringLiteral("File : ")));
    pathLine->addWidget(txtFont);
    txtFont->setReadOnly(true);

    lvFont->setColumnShares({0, 4, 6, 2, 3});
    connect(lvFont, &ListView::rowClicked, this, &FontTab::lvFont_Click);

    Frame1->setCaption(QStringLiteral(" Font Editor "));
    cbStyle->setEditable(true); // a catalogue may name a style that the list does not
    cbStyle->addItems({QStringLiteral("normal"), QStringLiteral("bold"), QStringLiteral("italic")});
    auto *simpan = named(new QPushButton(QStringLiteral(" &Simpan")), "Command1", tr("Save the font"));
    simpan->setEnabled(false);
    simpan->setToolTip(tr("The font catalogue is read-only."));
    auto *readOnly = named(new QLabel(simpan->toolTip()), "lblFontReadOnly", simpan->toolTip());
    auto *saving = new QHBoxLayout;
    saving->addWidget(simpan);
    saving->addWidget(readOnly, 1);
    for (QLineEdit *box : {txtNama, txtSize})
        box->setReadOnly(true);
    for (QComboBox *box : {cbFont, cbStyle})
        m_choices.add(*box);
    auto *form = new QFormLayout(Frame1);
    form->addRow(QStringLiteral("Name : "), txtNama);
    form->addRow(QStringLiteral("File : "), cbFont);
    form->addRow(QStringLiteral("Size : "), txtSize);
    form->addRow(QStringLiteral("Style :"), cbStyle);
    form->addRow(QString(), saving);
    sample->setFixedHeight(kSample);
    form->addRow(sample);
}

void FontTab::layOut(int height)
{
    const int inner = width() - 2 * kMargin;
    place(m_pathRow, kMargin, kMargin, inner, kPathHeight);
    const int listHeight = toPixels(height - kAround) - kEditorHeight;
    place(lvFont, kMargin, 2 * kMargin + kPathHeight, inner, listHeight);
    place(Frame1, kMargin, 3 * kMargin + kPathHeight + listHeight, inner, kEditorHeight);
}

void FontTab::showCatalogue(const QString &path, const QStringList &fontFiles)
{
    txtFont->setText(path);
    cbFont->clear();
    cbFont->addItems(fontFiles);
    m_choices.note();
}

void FontTab::lvFont_Click(int row)
{
    if (m_fonts.isEmpty())
        return;
    sample->showFont({m_fonts.sub(row, 2), m_fonts.sub(row, 3), m_fonts.sub(row, 4)});
    txtNama->setText(m_fonts.sub(row, 1));
    txtSize->setText(m_fonts.sub(row, 3));
    cbStyle->setCurrentText(m_fonts.sub(row, 4));
    // The first entry that is the file; the last one where none is.
    const int entry = cbFont->findText(m_fonts.sub(row, 2), Qt::MatchExactly | Qt::MatchCaseSensitive);
    cbFont->setCurrentIndex(entry >= 0 ? entry : cbFont->count() - 1);
    m_choices.note();
}

} // namespace quillmere
