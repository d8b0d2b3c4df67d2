#pragma once

#include "outline/Document.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillmere {

// A setting with a list of choices. `selected` is 0-based and may lie behind the last entry: a value that is
// not among the choices takes over the position that an earlier list of the file found.
struct PanelChoice
{
    QString value; // as written
    QStringList entries;
    qsizetype selected = 0;
};

// A number with the most it can be; both as written in the file, whole parts.
struct PanelLevel
{
    qint64 value = 0;
    qint64 percent = 0; // of the most, cut to a whole number; beyond 0 to 100 where the value is
};

// The settings that a receiver starts with, as its default.xml gives them. What the file does not name is not
// set.
struct PanelSettings
{
    static constexpr int kMostTransparence = 255;
    static constexpr int kMostVolume = 25;

    QString path;
    std::optional<PanelChoice> language, scart, spdif;
    std::optional<QString> hardwareVersion, softwareVersion, userdefine1, userdefine2, userdefine3;
    std::optional<PanelLevel> transparence, volume;
    std::optional<QString> timeZone;
    std::optional<bool> summerTime;
};

// Nothing where the file is missing or empty.
std::optional<PanelSettings> LoadPanelConfig(const Document &file);

// The choices of the time zone, hours from -12 to +12; 0 and the negative ones without a sign of their own.
QStringList timeZones();

// The 0-based entry that the value, written without "+", selects. The first entry is never found; the number
// of entries where none is.
qsizetype timeZoneEntry(const QStringList &entries, const QString &value);

} // namespace quillmere
