#include "naming/forms/frmUses.h"

#include "controls/EmptyHint.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "naming/forms/PlaceRows.h"
#include "theme/forms/LiveIndex.h"

#include <QBoxLayout>
#include <QLabel>

namespace quillmere {

namespace {
constexpr QSize kFirstSize{720, 320}; // pixels
}

frmUses::frmUses(LiveIndex &index, QWidget &owner)
    : ModelessDialog(QStringLiteral("frmUses"), owner), m_index(index),
      m_rows({tr("Window"), tr("Line"), tr("Text")}),
      lvUses(new ListView(QStringLiteral("lvUses"), tr("Places"), m_rows)),
      lblUses(named(new QLabel, "lblUses", tr("Number of places")))
{
    setEmptyHint(*lvUses, tr("Nothing uses this name."));
    setWindowTitle(tr("Uses"));
    lvUses->setColumnShares({5, 1, 9});
    lvUses->setTextElideMode(Qt::ElideRight);
    markPlaces(*lvUses, m_uses);
    lvUses->setOpenCaption(tr("Go There"));
    lvUses->setToolTip(tr("Double-click a place, or press Enter, to go there."));
    connect(lvUses, &ListView::rowOpened, this, [this](int row) {
        const FoundPlaces uses = m_uses; // what is shown may change on the way
        emit placeChosen(uses, row);
    });
    connect(&index, &LiveIndex::changed, this, &frmUses::lookAgain);
    lblUses->setTextFormat(Qt::PlainText);
    lblUses->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->addWidget(lblUses);
    column->addWidget(lvUses, 1);
    m_worker.setMaxThreadCount(1);
    scrollWhereSmall(*this);
    resize(kFirstSize);
}

frmUses::~frmUses()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

FoundPlaces frmUses::usesOf(const NamedThing &thing, FoundPlaces found)
{
    if (thing.kind)
        found.places.removeIf([](const FoundPlace &place) { return place.isDefinition; });
    return found;
}

void frmUses::showUses(const NamedThing &thing, const FoundPlaces &uses)
{
    m_stop.request_stop();
    m_thing = thing;
    m_uses = uses;
    m_rows.assign(rowsOf(m_uses, m_index.folder()));
    if (!m_rows.isEmpty())
        lvUses->setCurrentIndex(m_rows.index(0, 0));
    say();
    lvUses->setFocus();
    present(Keyboard::Takes);
}

void frmUses::say()
{
    const QString name = shownName(m_thing.name);
    lblUses->setText(
        m_uses.places.isEmpty()
            ? tr("Nothing uses the %1 \"%2\".").arg(wordFor(m_thing.kind), name)
            : tr("The %1 \"%2\" is used in %3.").arg(wordFor(m_thing.kind), name, placesInFiles(m_uses)));
}

// Many windows may have to be read for it.
void frmUses::lookAgain()
{
    m_again = m_isLooking;
    if (!isVisible() || m_isLooking || !m_index.index())
        return;
    m_isLooking = true;
    m_stop = {};
    m_worker.start([this, thing = m_thing, index = m_index.sharedIndex(), sources = m_index.sources(),
                    stop = m_stop.get_token()] {
        const auto progress = [&stop](qsizetype, qsizetype) {
            if (stop.stop_requested())
                throw Cancelled();
        };
        std::optional<FoundPlaces> found;
        try {
            // Catalogues that are open in lists define names, and use none that is not in their files too.
            found = usesOf(thing, placesOf(thing, *index, sources, {}, progress));
        } catch (const Cancelled &) {
        }
        QMetaObject::invokeMethod(
            this, [this, found] { take(found); }, Qt::QueuedConnection);
    });
}

void frmUses::take(const std::optional<FoundPlaces> &found)
{
    m_isLooking = false;
    if (m_stop.stop_requested() || m_again) {
        lookAgain(); // what was found is of another thing or time
        return;
    }
    renewRows(*lvUses, m_rows, m_uses, *found, m_index.folder());
    m_uses = *found;
    say();
}

} // namespace quillmere
