#pragma once

#include <QSet>
#include <QTabBar>

namespace quillmere {

// A tab strip: the tabs, and below them the panel that the frames lie on. The tabs are narrow enough for all
// ten to stand in the left column.
class TabStrip : public QTabBar
{
    Q_OBJECT

public:
    explicit TabStrip(QWidget *parent = nullptr);
    ~TabStrip() override;

    // Shows a star in the corner of a tab: something on it is not saved.
    void setMarked(int tab, bool marked);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fit();

    std::unique_ptr<QStyle> m_narrow;
    QSet<int> m_marked;
};

} // namespace quillmere
