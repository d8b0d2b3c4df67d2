#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <map>
#include <vector>

namespace quillmere {

// Many names looked for at once, ignoring letter case (see Matching.h). Each name stands for a row; rows that
// are met are noted in a list of all rows, and their names are not looked for again.
using MetRows = std::vector<bool>;

// Names of one length by the hash of their folded form.
struct HashedName
{
    QString folded;
    qsizetype row;
};
using HashedNames = QMultiHash<quint64, HashedName>;

// Names that are met as a whole; the caller cuts the text up.
class WholeNames
{
public:
    void add(QStringView name, qsizetype row);
    // Time is linear in the piece, and constant for one of a length that no name has.
    void meet(QStringView piece, MetRows &met);

private:
    HashedNames m_names;
    std::vector<bool> m_lengths; // true where a name has this length
};

// Names that are met wherever they stand in a text. An empty name stands in every text that is not empty.
class NamesAnywhere
{
public:
    void add(QStringView name, qsizetype row);
    // One pass over the text for each different length of the names that are not met yet.
    void meet(QStringView text, MetRows &met);
    bool isEmpty() const { return m_groups.empty(); }

private:
    struct Group
    {
        HashedNames names;
        std::vector<bool> mayBe; // by the upper bits of the hash
    };

    static void meetGroup(qsizetype length, Group &group, QStringView folded, MetRows &met);

    std::map<qsizetype, Group> m_groups; // by the length of the names
};

} // namespace quillmere
