#pragma once

#include <QScrollBar>

namespace quillmere {

// A vertical scroll bar for one channel, 0 to 255, with 255 at the top.
class ChannelBar : public QScrollBar
{
    Q_OBJECT

public:
    explicit ChannelBar(QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void upIsMore(int action);

    bool m_pressed = false;
};

} // namespace quillmere
