#include "checks/NameRules.h"

#include "checks/WindowReport.h"
#include "markup/ColourCode.h"

namespace quillmere {

namespace {

constexpr QStringView kKeyColours[] = {u"osd_trans", u"gui_trans"};

bool isColourCode(QStringView name)
{
    return name.startsWith(u'#') && channelsOf(name);
}

QString inOtherLetters(NameKind kind, QStringView name, const ThemeIndex &index)
{
    const QStringList others = index.inOtherLetters(kind, name);
    if (!others.isEmpty())
        return others.first();
    for (const QStringView key : kKeyColours) {
        if (kind == NameKind::Colour && key.compare(name, Qt::CaseInsensitive) == 0)
            return key.toString();
    }
    return {};
}

} // namespace

bool isKeyColour(QStringView name)
{
    return name == kKeyColours[0] || name == kKeyColours[1];
}

std::optional<NameFault> faultOf(NameKind kind, QStringView name, const ThemeIndex &index)
{
    const auto found = [&](const char *what, Rule unknown, const QString &message) {
        const QString meant = inOtherLetters(kind, name, index);
        if (meant.isEmpty())
            return NameFault{unknown, message, {}};
        return NameFault{
            Rule::LetterCase,
            quoted(name) + u" should be " + quoted(meant) + u", the name of " + QLatin1String(what), meant};
    };
    if (index.isDefined(kind, name))
        return std::nullopt;
    switch (kind) {
    case NameKind::Image:
        return found("an image", Rule::UnknownImage, u"There is no image " + quoted(name));
    case NameKind::Colour:
        if (isKeyColour(name) || isColourCode(name))
            return std::nullopt;
        return found("a colour", Rule::UnknownColour,
                     quoted(name) + u" is neither a colour of the catalogue nor a code");
    case NameKind::Font:
        return found("a font", Rule::UnknownFont, u"There is no font " + quoted(name));
    default:
        return std::nullopt;
    }
}

void checkNames(WindowReport &report)
{
    const FoundName *known = nullptr;
    for (const FoundName &name : report.used) {
        if (report.stop.stop_requested())
            return;
        // Most lists of colours say one three times.
        if (known && known->kind == name.kind && known->name == name.name)
            continue;
        const std::optional<NameFault> fault = faultOf(name.kind, name.name, report.index);
        known = fault ? nullptr : &name;
        if (fault)
            report.add(fault->rule, name.range, fault->message, name.name.toString(), fault->meant);
    }
}

} // namespace quillmere
