#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;

namespace quillmere {

class ListView;

// A line above a list that leaves only those rows to be seen which hold a text, in any column and in any
// letter case, and where the rows have ticks, only those with or without one. It comes with Ctrl+F and takes
// no room before; Esc empties it and takes it away. The rows themselves stay as they are, and so do their
// numbers: commands walk all of them.
class ListFilter : public QWidget
{
    Q_OBJECT

public:
    explicit ListFilter(ListView &list);

    // Shows the line and goes there.
    void open();
    // Leaves only those rows to be seen, whatever the line says, that this is true for; asked anew when the
    // rows change.
    void limitTo(std::function<bool(int row)> isShown);
    // What that goes by has changed.
    void limitChanged() { m_soon.start(); }

protected:
    // Keeps its place above the list, which makes room for it.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void close();
    void apply();
    void fold();
    void hideFurther();
    void keepInView();
    void makeRoom();

    ListView &m_list;
    QLineEdit *txtFilter;
    QComboBox *cboTicks;
    QLabel *lblFound;
    QRect m_whole, m_room;   // where the list is without the line, and with it
    QStringList m_folded;    // a text a row to look in; empty until it is wanted, and after rows change
    QList<bool> m_isHidden;  // of each row
    bool m_isInView = false; // the current row was, before rows were hidden
    int m_next = 0;          // row that this has not been done for yet
    std::function<bool(int)> m_isShown;
    QTimer m_further;
    QTimer m_soon; // rows change many at a time
};

} // namespace quillmere
