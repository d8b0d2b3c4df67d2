#include "outline/Vocabulary.h"

#include "markup/Matching.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

constexpr std::array<QStringView, kKinds> kNames = {
    u"",       u"interface", u"widget",      u"style", u"children",  u"property",  u"signal",
    u"imgs",   u"state",     u"string",      u"rect",  u"backcolor", u"forecolor", u"mode",
    u"img",    u"t_img",     u"b_img",       u"l_img", u"r_img",     u"lt_img",    u"rt_img",
    u"lb_img", u"rb_img",    u"unfocus_img", u"font",  u"alignment"};

constexpr qsizetype kLongestName = 11;

// The kinds by the length of their names: a name is compared with a handful.
struct ByLength
{
    ByLength()
    {
        for (int kind = 1; kind < kKinds; ++kind)
            kinds[size_t(kNames[size_t(kind)].size())].append(Kind(kind));
    }
    std::array<QList<Kind>, kLongestName + 1> kinds;
};

bool isBlock(Kind kind)
{
    return kind == Kind::Widget || kind == Kind::Style;
}

bool isPicture(Kind kind)
{
    return kind >= Kind::Img && kind <= Kind::UnfocusImg;
}

} // namespace

Kind kindOf(QStringView name)
{
    static const ByLength byLength;
    if (name.isEmpty() || name.size() > kLongestName)
        return Kind::Other;
    for (const Kind kind : byLength.kinds[size_t(name.size())]) {
        if (matchesIgnoringCase(name, 0, kNames[size_t(kind)]))
            return kind;
    }
    return Kind::Other;
}

QStringView nameOf(Kind kind)
{
    return kNames[size_t(kind)];
}

bool mayHold(Kind outer, Kind inner)
{
    switch (outer) {
    case Kind::Interface:
        return inner != Kind::Interface;
    case Kind::Widget:
    case Kind::Style:
        return !isBlock(inner) && inner != Kind::Interface;
    case Kind::Children:
        return isBlock(inner) || inner == Kind::Other;
    case Kind::Property:
        return isValue(inner) || inner == Kind::Imgs || inner == Kind::Other;
    case Kind::Imgs:
        return isPicture(inner) || inner == Kind::Mode || inner == Kind::Other;
    case Kind::Other:
    case Kind::Signal:
        return inner == Kind::Other;
    default:
        return false;
    }
}

QList<Kind> elementsFor(Kind outer)
{
    const auto fits = [outer](Kind inner) {
        switch (outer) {
        case Kind::Other:
            return inner == Kind::Interface;
        case Kind::Interface:
        case Kind::Children:
            return isBlock(inner);
        case Kind::Widget:
        case Kind::Style:
            return inner == Kind::Property || inner == Kind::Children || inner == Kind::Signal;
        case Kind::Property:
            return inner == Kind::Imgs || (isValue(inner) && inner != Kind::Mode && !isPicture(inner)) ||
                   inner == Kind::UnfocusImg || inner == Kind::Img;
        case Kind::Imgs:
            return inner == Kind::Mode || isPicture(inner);
        default:
            return false;
        }
    };
    QList<Kind> kinds;
    for (int kind = 1; kind < kKinds; ++kind) {
        if (fits(Kind(kind)))
            kinds.append(Kind(kind));
    }
    return kinds;
}

QStringList wordsFor(Kind kind)
{
    switch (kind) {
    case Kind::Mode:
        return {QStringLiteral("single"), QStringLiteral("multiple")};
    case Kind::State:
        return {QStringLiteral("hide")};
    case Kind::Alignment:
        return {QStringLiteral("left"), QStringLiteral("hcentre"), QStringLiteral("right"),
                QStringLiteral("top"),  QStringLiteral("vcentre"), QStringLiteral("bottom")};
    default:
        return {};
    }
}

QStringList knownClasses()
{
    return {QStringLiteral("window"), QStringLiteral("text"),    QStringLiteral("image"),
            QStringLiteral("button"), QStringLiteral("boxitem"), QStringLiteral("progbar")};
}

} // namespace quillmere
