#pragma once

#include "controls/ModelessDialog.h"
#include "naming/FoundPlaces.h"

#include <QThreadPool>

#include <stop_token>

class QLabel;

namespace quillmere {

class ListView;
class LiveIndex;

// The places where a name is used; stays open beside the window while one goes through them, and is kept up
// to date with what is edited meanwhile.
class frmUses : public ModelessDialog
{
    Q_OBJECT

public:
    frmUses(LiveIndex &index, QWidget &owner);
    ~frmUses() override; // stops what is under way

    // The uses among the places of a thing: of a block, all.
    static FoundPlaces usesOf(const NamedThing &thing, FoundPlaces found);
    // `uses` are those of the thing.
    void showUses(const NamedThing &thing, const FoundPlaces &uses);
    const NamedThing &thing() const { return m_thing; }
    // The thing has another name from now on.
    void renamed(const QString &name) { m_thing.name = name; }

signals:
    void placeChosen(const FoundPlaces &uses, int number);

private:
    void say();
    void lookAgain();
    void take(const std::optional<FoundPlaces> &found);

    LiveIndex &m_index;
    NamedThing m_thing;
    FoundPlaces m_uses;
    ListRows m_rows; // see PlaceRows.h
    ListView *lvUses;
    QLabel *lblUses;
    bool m_isLooking = false, m_again = false;
    std::stop_source m_stop;
    QThreadPool m_worker;
};

} // namespace quillmere
