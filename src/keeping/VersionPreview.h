#pragma once

#include "files/Backups.h"
#include "markup/LineDifference.h"

#include <QList>
#include <QString>

namespace quillmere {

// What restoring a version would change in the file as it is now, in lines to show.
struct VersionPreview
{
    enum class Kind {
        Same,
        Removed, // in the file now, not in the version
        Added,   // in the version
        Place,   // says where the lines below it stand, or how many are not shown
    };
    struct Line
    {
        Kind kind;
        QString text;
    };

    QString heading;   // names the version and says how much differs
    bool same = false; // byte for byte
    QList<Line> lines; // not more than a person reads, none too long to show
};

// Reads both files. One that holds no text, or is too large for a person to compare, shows no lines.
VersionPreview previewOf(const Version &version, Indentation indentation = Indentation::Counts);

// "2026-11-21 12:03:05"
QString timeText(const Version &version);

} // namespace quillmere
