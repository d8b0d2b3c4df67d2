#include "catalogues/forms/KeymapTab.h"

#include "asking/Talk.h"
#include "catalogues/KeymapCatalogue.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "files/RunTimeError.h"
#include "rows/ListRows.h"

#include <QLabel>
#include <QLineEdit>

namespace quillmere {

namespace {

constexpr int kMargin = 8;        // pixels
constexpr int kGroupHeight = 220; // pixels, Frame2 keeps its height and place
constexpr int kAround = 960;      // twips of the frame's height that neither takes
constexpr int kLine = 26;         // pixels

} // namespace

KeymapTab::KeymapTab(ListRows &groups, ListRows &keys, Document &file, Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(6)"), parent), m_talk(talk), m_groups(groups), m_keys(keys), m_file(file),
      Frame2(new CaptionBox(QStringLiteral("Frame2"), this)),
      lvKeyGroup(new ListView(QStringLiteral("lvKeyGroup"), tr("Key groups"), m_groups, Frame2)),
      txtKeymap(named(new QLineEdit(Frame2), "txtKeymap", tr("Keymap file"))),
      lbKeymap(named(new QLabel(QStringLiteral("File : "), Frame2), "lbKeymap", tr("Keymap file"))),
      lvKeyMap(new ListView(QStringLiteral("lvKeyMap"), tr("Keys"), m_keys, this))
{
    Frame2->setCaption(QStringLiteral(" Group "));
    txtKeymap->setReadOnly(true);
    lbKeymap->setBuddy(txtKeymap);
    connect(lvKeyGroup, &ListView::rowClicked, this, &KeymapTab::lvKeyGroup_Click);
}

void KeymapTab::layOut(int height)
{
    const int inner = width() - 2 * kMargin;
    place(Frame2, kMargin, kMargin, inner, kGroupHeight);
    const int inFrame = inner - 2 * kMargin;
    const int labelWidth = lbKeymap->sizeHint().width();
    place(lbKeymap, kMargin, 2 * kMargin + 4, labelWidth, kLine);
    place(txtKeymap, kMargin + labelWidth, 2 * kMargin + 4, inFrame - labelWidth, kLine);
    const int groupsTop = 3 * kMargin + 4 + kLine;
    place(lvKeyGroup, kMargin, groupsTop, inFrame, kGroupHeight - groupsTop - kMargin);
    place(lvKeyMap, kMargin, 2 * kMargin + kGroupHeight, inner, toPixels(height - kAround) - kGroupHeight);
}

void KeymapTab::showCatalogue()
{
    txtKeymap->setText(m_file.path());
}

void KeymapTab::lvKeyGroup_Click(int row)
{
    try {
        ShowKeyGroup(m_keys, m_file, m_groups.sub(row, 1));
    } catch (const RunTimeError &error) {
        m_talk.say(error.message());
    }
}

} // namespace quillmere
