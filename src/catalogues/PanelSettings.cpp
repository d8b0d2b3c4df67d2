#include "catalogues/PanelSettings.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr qint64 kBeyondAnyValue = 1'000'000'000; // larger numbers count as this one

QString valueOf(QStringView piece)
{
    return SplitField(piece, u"value=\"", u"\"", 1, 0);
}

// The whole part of the number that the text begins with, 0 where it begins with none.
qint64 wholePart(QStringView text)
{
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);
    qint64 whole = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            break;
        whole = std::min(whole * 10 + digit.unicode() - u'0', kBeyondAnyValue);
    }
    return negative ? -whole : whole;
}

PanelLevel levelOf(QStringView value, int most)
{
    const qint64 whole = wholePart(value);
    return {whole, whole * 100 / most};
}

enum class Shown { Display, ValueAndDisplay };

// `found` is the position that the lists of one file share.
PanelChoice readChoice(QStringView group, Shown shown, qsizetype &found)
{
    PanelChoice choice{valueOf(group), {}, 0};
    for (QStringView piece : splitExact(group, u"<list ").sliced(1)) {
        const QString value = valueOf(piece);
        const QString display = SplitField(piece, u"display=\"", u"\"", 1, 0);
        if (value == choice.value)
            found = choice.entries.size();
        choice.entries.append(shown == Shown::Display ? display : QString(value + u" - " + display));
    }
    choice.selected = found;
    return choice;
}

// A setting is named anywhere in its item, and an item that names two sets both.
void readCommon(QStringView group, PanelSettings &settings)
{
    for (QStringView item : splitExact(group, u"<item ").sliced(1)) {
        const auto names = [item](QStringView setting) { return containsIgnoringCase(item, setting); };
        const QString value = valueOf(item);
        if (names(u"hardware version"))
            settings.hardwareVersion = value;
        if (names(u"software version"))
            settings.softwareVersion = value;
        if (names(u"userdefine1"))
            settings.userdefine1 = value;
        if (names(u"userdefine2"))
            settings.userdefine2 = value;
        if (names(u"userdefine3"))
            settings.userdefine3 = value;
        if (names(u"transparence"))
            settings.transparence = levelOf(value, PanelSettings::kMostTransparence);
        if (names(u"volume"))
            settings.volume = levelOf(value, PanelSettings::kMostVolume);
        if (names(u"time zone"))
            settings.timeZone = value;
        if (names(u"summer time"))
            settings.summerTime = wholePart(value) == 1;
    }
}

} // namespace

std::optional<PanelSettings> LoadPanelConfig(const Document &file)
{
    QString text = file.text();
    if (text.isEmpty())
        return std::nullopt;
    PanelSettings settings;
    settings.path = file.path();
    CloseUpEquals(text);
    qsizetype found = 0;
    for (QStringView group : splitIgnoringCase(text, u"<group ").sliced(1)) {
        const auto isNamed = [group](QStringView name) { return containsIgnoringCase(group, name); };
        if (isNamed(u"name=\"language\""))
            settings.language = readChoice(group, Shown::Display, found);
        if (isNamed(u"name=\"common\""))
            readCommon(group, settings);
        if (isNamed(u"name=\"scart config\""))
            settings.scart = readChoice(group, Shown::ValueAndDisplay, found);
        if (isNamed(u"name=\"spdif config\""))
            settings.spdif = readChoice(group, Shown::ValueAndDisplay, found);
    }
    return settings;
}

QStringList timeZones()
{
    QStringList zones;
    for (int hours = -12; hours <= 12; ++hours)
        zones.append(hours > 0 ? QString(u'+' + QString::number(hours)) : QString::number(hours));
    return zones;
}

qsizetype timeZoneEntry(const QStringList &entries, const QString &value)
{
    for (qsizetype entry = 1; entry < entries.size(); ++entry) {
        QString zone = entries[entry];
        if (zone.remove(u'+') == value)
            return entry;
    }
    return entries.size();
}

} // namespace quillmere
