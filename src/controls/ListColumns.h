#pragma once

#include <QList>
#include <QObject>

class QMenu;

namespace quillmere {

class ListView;

// The columns of a list: they share its width, until the person gives some of them widths of their own, which
// are remembered for the list. The others share what is left then; what has no room is scrolled to.
class ListColumns : public QObject
{
    Q_OBJECT

public:
    explicit ListColumns(ListView &list);

    // Shares of the width, in order; a share of 0 hides the column. Missing ones are 1.
    void setShares(const QList<int> &shares);
    // Gives the columns their widths within the list's, as it is now.
    void layOut();
    // Takes the widths that are remembered, once the list stands in its window: those of the same name in
    // other windows are other lists.
    void remember();

    // Items for all that a mouse does at the header: sorting and widths.
    void addItems(QMenu &menu);

private:
    void takeWidth(int column, int width);
    void giveWay(QList<int> &widths, int left) const;
    void fitAll();
    void shareAll();
    QString key() const; // of the settings; empty without a name or a window with one

    int share(int column) const { return m_shares.value(column, 1); }
    int lastShown() const;

    ListView &m_list;
    QList<int> m_shares;
    QList<int> m_own; // widths that the person chose, in pixels; 0 of the other columns
    bool m_layingOut = false, m_remembers = false;
};

} // namespace quillmere
