#pragma once

#include <QList>
#include <QString>

namespace quillmere {

// What is looked for in one text. An empty text is found nowhere.
struct FindText
{
    QString text;
    bool mindsCase = false;
    bool wholeWords = false; // no letter, digit or underscore on either side

    bool operator==(const FindText &) const = default;
};

// The first place at or behind `from`; -1 without one.
qsizetype findFrom(QStringView in, const FindText &what, qsizetype from = 0);
// All places from the beginning on, without overlap.
QList<qsizetype> findAll(QStringView in, const FindText &what);

} // namespace quillmere
