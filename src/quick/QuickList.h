#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace quillmere {

// Something one can go to, or a command.
struct QuickEntry
{
    // Of entries that fit equally well the shorter ones stand above, then those of the earlier kind; commands
    // stay in their order.
    enum class Kind : quint8 { Window, Block, Image, Colour, Font, String, Language, File, Theme, Command };

    Kind kind = Kind::Window;
    QString text;     // what is looked for; one line
    QString detail;   // said beside it: a path, a shortcut
    qsizetype id = 0; // whatever tells its owner what it is
};

// All that can be gone to, and what of it fits what is typed.
class QuickList
{
public:
    // Names of those used lately, see nameOf(), the last one first.
    void setUsed(const QStringList &names);
    void assign(QList<QuickEntry> entries);

    const QList<QuickEntry> &entries() const { return m_entries; }
    // Numbers of the entries that fit, best first, and at most so many; how many there are all in all is told
    // in `all`. Commands fit behind a ">" alone, and nothing else does there. Without letters those used
    // lately come first, then all in their order.
    QList<int> matching(const QString &typed, int most, int *all = nullptr);
    // Where the letters typed stand in the text of an entry that fits.
    QList<int> placesIn(const QString &typed, int number) const;

    // What an entry is remembered by.
    static QString nameOf(const QuickEntry &entry);

private:
    struct Ranked
    {
        int score, number;
    };
    static QString patternOf(const QString &typed);
    void rank(QStringView pattern, bool areCommands);
    bool isBefore(const Ranked &a, const Ranked &b) const;

    QList<QuickEntry> m_entries;
    QList<QString> m_folded;     // their texts
    QList<quint64> m_wordStarts; // in them
    QHash<QString, int> m_used;  // how lately: 1 is the longest ago
    QList<int> m_usedOf;         // by entry; 0 for those that are not among them
    QString m_last;              // pattern that m_ranked was made for
    bool m_areCommands = false;
    bool m_isRanked = false;
    QList<Ranked> m_ranked; // those that fit, in no order
};

} // namespace quillmere
