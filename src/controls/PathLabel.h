#pragma once

#include <QLabel>

namespace quillmere {

// A label for a path: text() is all of it, drawn cut in the middle to fit, with the rest in the tooltip.
class PathLabel : public QLabel
{
    Q_OBJECT

public:
    PathLabel(const QString &name, const QString &accessibleName, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};

} // namespace quillmere
