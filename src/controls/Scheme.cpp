#include "controls/Scheme.h"

namespace quillmere {

namespace {

constexpr int kDarkBelow = 128; // lightness of a ground

struct Own
{
    QPalette::ColorRole role;
    QRgb light, dark;
};

constexpr Own kOwn[] = {
    {QPalette::Window, 0xffeff1f4, 0xff23272d},
    {QPalette::WindowText, 0xff1b1f24, 0xffe4e7eb},
    {QPalette::Base, 0xffffffff, 0xff1a1d22},
    {QPalette::AlternateBase, 0xfff5f7f9, 0xff20242a},
    {QPalette::Text, 0xff1b1f24, 0xffe4e7eb},
    {QPalette::PlaceholderText, 0xff626b75, 0xff98a2ad},
    {QPalette::Button, 0xffe8ebef, 0xff2a2f36},
    {QPalette::ButtonText, 0xff1b1f24, 0xffe4e7eb},
    {QPalette::BrightText, 0xffffffff, 0xffffffff},
    {QPalette::Highlight, 0xff1f6fb2, 0xff2a76ba},
    {QPalette::HighlightedText, 0xffffffff, 0xffffffff},
    {QPalette::Link, 0xff1a5fa0, 0xff7ab8ff},
    {QPalette::LinkVisited, 0xff6b3fa0, 0xffd0a8ff},
    {QPalette::ToolTipBase, 0xfffdf6dc, 0xff3b424b},
    {QPalette::ToolTipText, 0xff1b1f24, 0xfff2f4f7},
    {QPalette::Light, 0xffffffff, 0xff454d57},
    {QPalette::Midlight, 0xfff7f8fa, 0xff3a414a},
    {QPalette::Mid, 0xffc3c9d1, 0xff3d444d},
    {QPalette::Dark, 0xff878f99, 0xff6b7480},
    {QPalette::Shadow, 0xff5b636d, 0xff0b0c0e},
};

} // namespace

QPalette paletteOf(Scheme scheme)
{
    const bool dark = scheme == Scheme::Dark;
    QPalette palette;
    for (const Own &own : kOwn)
        palette.setColor(QPalette::All, own.role, QColor::fromRgb(dark ? own.dark : own.light));
    const QColor faint = QColor::fromRgb(dark ? 0xff8a929c : 0xff6f7781);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Inactive, QPalette::Highlight,
                     QColor::fromRgb(dark ? 0xff2c4459 : 0xffc9dbea));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, palette.color(QPalette::Text));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, palette.color(QPalette::Mid));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, palette.color(QPalette::Text));
    return palette;
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightness() < kDarkBelow;
}

QPalette noticeColours(const QPalette &around)
{
    const bool dark = isDark(around);
    const QColor ground = QColor::fromRgb(dark ? 0xff574a12 : 0xffffd566),
                 text = QColor::fromRgb(dark ? 0xfffff4cf : 0xff2a2205);
    QPalette notice = around;
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::Base})
        notice.setColor(role, ground);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        notice.setColor(role, text);
    return notice;
}

} // namespace quillmere
