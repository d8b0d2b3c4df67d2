#pragma once

#include <QListView>
#include <QStandardItemModel>
#include <QThreadPool>

namespace quillmere {

// The themes opened last, as cards with a picture each. All rows are seen: it is as high as it takes.
class RecentCards : public QListView
{
    Q_OBJECT

public:
    explicit RecentCards(QWidget *parent = nullptr);
    ~RecentCards() override; // waits for what is being looked at

    // Newest first. What is known of each comes a moment later.
    void setThemes(const QStringList &folders);
    static constexpr int kGap = 10; // pixels behind each card, also the last of a line
    // How much wider it is than the cards: that gap, and some pixels without which the view breaks the line.
    static constexpr int kBeyond = 20;
    // Lays the cards out in this width, pixels.
    void setRoom(int width);
    QSize itemSize() const { return m_item; }

signals:
    // A double click, or Enter.
    void chosen(const QString &folder);
    // The person wants it out of the list.
    void removeWanted(const QString &folder);
    // Up in the first row.
    void leftUpwards();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void look(const QString &folder);

    QStandardItemModel m_themes;
    QSize m_item;
    int m_columns = 1;
    QThreadPool m_worker; // last: it hands its results on
};

} // namespace quillmere
