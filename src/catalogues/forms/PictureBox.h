#pragma once

#include <QImage>
#include <QWidget>

namespace quillmere {

// Shows a picture file, scaled down to fit and never up, on a chequered ground so that transparent parts
// show. Drawings are left to the preview's browser: they can lead to other files.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Shows the file and returns what there is to say about it: its size in pixels and bytes, or why there is
    // nothing to see.
    QString showFile(const QString &path);
    void clear();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_picture;
};

} // namespace quillmere
