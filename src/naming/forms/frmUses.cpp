#include "naming/forms/frmUses.h"

#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"

#include <QBoxLayout>
#include <QLabel>

namespace quillmere {

namespace {
constexpr QSize kFirstSize{720, 320}; // pixels
}

frmUses::frmUses(QWidget &owner)
    : ModelessDialog(QStringLiteral("frmUses"), owner), m_rows({tr("Window"), tr("Line"), tr("Text")}),
      lvUses(new ListView(QStringLiteral("lvUses"), tr("Places"), m_rows)),
      lblUses(named(new QLabel, "lblUses", tr("Number of places")))
{
    lvUses->setColumnShares({5, 1, 9});
    lvUses->setTextElideMode(Qt::ElideRight);
    lvUses->setToolTip(tr("Double-click a place, or press Enter, to go there."));
    connect(lvUses, &ListView::rowOpened, this, &frmUses::placeChosen);
    lblUses->setTextFormat(Qt::PlainText);
    lblUses->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->addWidget(lblUses);
    column->addWidget(lvUses, 1);
    scrollWhereSmall(*this);
    resize(kFirstSize);
}

void frmUses::showPlaces(const QString &title, const QString &summary, const QList<ListRows::Row> &rows)
{
    setWindowTitle(title);
    lblUses->setText(summary);
    m_rows.assign(rows);
    if (!rows.isEmpty())
        lvUses->setCurrentIndex(m_rows.index(0, 0));
    lvUses->setFocus();
    present(Keyboard::Takes);
}

} // namespace quillmere
