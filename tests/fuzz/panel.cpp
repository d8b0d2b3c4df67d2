#include "Fuzz.h"
#include "catalogues/PanelSettings.h"
#include "files/Files.h"
#include "files/TestFiles.h"

// Settings of any file: a percentage is that of its value, a choice is one of the entries or what an earlier
// list of the file has left, and the zone is an entry or the number of entries.
void fuzz(const Input &input)
{
    static const TestFiles files;
    Files disk;
    const auto settings =
        LoadPanelConfig(Document::open(disk, files.write(u"default.xml"_s, input.bytes(0))));
    check(settings.has_value() != input.bytes(0).isEmpty(), "set where there is a file");
    if (!settings)
        return;
    const auto lists = input.text(0).count(u"<list ");
    for (const auto &choice : {settings->language, settings->scart, settings->spdif})
        check(!choice ||
                  (choice->selected >= 0 && choice->selected <= lists && choice->entries.size() <= lists),
              "a choice");
    for (const auto &[level, most] : {std::pair(settings->transparence, PanelSettings::kMostTransparence),
                                      std::pair(settings->volume, PanelSettings::kMostVolume)}) {
        if (level)
            check(level->percent == level->value * 100 / most && std::abs(level->value) <= 1'000'000'000,
                  "a level");
    }
    const QStringList zones = timeZones();
    const qsizetype zone = timeZoneEntry(zones, settings->timeZone.value_or(QString()));
    check(zone == zones.size() || QString(zones[zone]).remove(u'+') == *settings->timeZone, "a zone");
}
