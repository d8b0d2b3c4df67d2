#pragma once

#include <QSet>
#include <QString>

namespace quillmere {

// Gives every window a picture file of its own.
class PictureNames
{
public:
    // A file name, with ".png", that nobody got before, in letters of any case: the window's name without
    // anything that leads elsewhere, and with a number where another window's name gives the same.
    QString next(const QString &window);

private:
    QSet<QString> m_given;
};

// A theme's text as it may reach a terminal, which obeys control characters: "?" stands for each of them.
QString printable(QString text);

} // namespace quillmere
