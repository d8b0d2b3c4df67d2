#pragma once

#include <QFrame>
#include <QImage>

class QLabel;

namespace quillmere {

// What is shown of a place in the source.
struct HoverContents
{
    QString title;
    QImage picture;         // or a line in a font
    bool isPicture = false; // on a chequered ground
    QColor colour;
    QStringList lines;
};

// The small window beside a name in the source. What a theme holds is shown as plain text, so that no text of
// it becomes markup.
class HoverBox : public QFrame
{
    Q_OBJECT

public:
    explicit HoverBox(QWidget *parent);

    // The longest side of a picture, pixels.
    static constexpr int kPicture = 320;

    // At a place of the screen, below `at` where there is room.
    void showAt(const HoverContents &contents, const QRect &at);
    // Says something else at the same place.
    void say(const HoverContents &contents);

private:
    void placeAt(const QRect &at);

    QLabel *m_title, *m_picture, *m_text;
    QRect m_at;
};

} // namespace quillmere
