#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QThreadPool>

namespace quillmere {

// A line written in a font of the theme, drawn beside the window's thread. The font is not made known to the
// rest of the program, and a file outside of the theme's folder is not read.
class FontSample : public QObject
{
    Q_OBJECT

public:
    explicit FontSample(QObject *parent = nullptr);
    ~FontSample() override;

    struct Wanted
    {
        QString path, folder;
        int size = 0; // pixels
        QColor colour;
        qreal ratio = 1; // of the screen's pixels to the window's

        bool operator==(const Wanted &) const = default;
    };
    struct Drawn
    {
        QImage line; // null as long as it is not drawn, and where there is nothing to see
        QString why; // there is nothing to see
    };
    // arrived() tells when there is more.
    Drawn draw(const Wanted &wanted);

signals:
    void arrived();

private:
    static Drawn read(const Wanted &wanted);

    Wanted m_wanted;
    Drawn m_drawn; // what was wanted
    QThreadPool m_worker;
};

} // namespace quillmere
