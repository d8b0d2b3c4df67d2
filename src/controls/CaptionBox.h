#pragma once

#include <QGroupBox>

namespace quillmere {

// A frame whose caption may be a long path: title() is the whole text, what is drawn is cut in the middle to
// fit, and a tooltip shows the rest.
class CaptionBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit CaptionBox(const QString &name, QWidget *parent = nullptr);
    void setCaption(const QString &caption);
    // Pixels at the end of the caption's line that are somebody else's.
    void setCaptionEnd(int pixels);

signals:
    void doubleClicked();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int m_captionEnd = 0;
};

} // namespace quillmere
