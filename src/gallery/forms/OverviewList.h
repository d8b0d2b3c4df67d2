#pragma once

#include <QListView>
#include <QTimer>

class QLineEdit;

namespace quillmere {

class OverviewDelegate;
class OverviewRows;

// The grid of the overview. Columns share the width; what is typed goes to the filter.
class OverviewList : public QListView
{
    Q_OBJECT

public:
    OverviewList(OverviewRows &rows, QLineEdit &filter, QWidget *parent);

    // Numbers of the windows in view, in their order, then of those one screen below and above.
    QList<int> seen() const;
    QSize pictureSize() const; // pixels of the window
    // Moves among the windows while the keyboard is in the filter.
    void move(QKeyEvent *event) { keyPressEvent(event); }

signals:
    // A double click, or Enter.
    void opened(const QModelIndex &index);
    void painted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();

    OverviewRows &m_rows;
    QLineEdit &m_filter;
    OverviewDelegate *m_delegate;
};

} // namespace quillmere
