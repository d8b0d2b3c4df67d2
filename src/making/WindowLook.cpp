#include "making/WindowLook.h"

#include "checks/NameRules.h"
#include "files/Paths.h"
#include "i18n/LanguageStrings.h"
#include "markup/ColourCode.h"
#include "markup/mndIni.h"
#include "naming/Rename.h"
#include "theme/ThemeProject.h"

#include <QSet>

#include <algorithm>
#include <cstdlib>

namespace quillmere {

namespace {

constexpr int kMostLookedAt = 40;     // windows
constexpr int kReadable = 100 * 1000; // in brightness, of letters and what is behind them
constexpr qint64 kFrame = 2;          // pixels that the preview draws around a window that fills the screen

bool isThere(const ThemeProject &theme, const QString &image)
{
    const int row = image.isEmpty() ? -1 : theme.images.rowOf(image);
    return row >= 0 && theme.images.rows.sub(row, 2) == u"Y";
}

// The place of the window in a document that fills the screen, and the one picture behind it.
void lookAt(const Outline &outline, const ThemeProject &theme, const Box &screen, WindowLook &look)
{
    if (outline.blocks().empty())
        return;
    const qint32 block = outline.blocks().front();
    const std::optional<RectValue> rect = rectOfBlock(outline, block);
    const qint32 mode = outline.property(block, Kind::Mode), picture = outline.property(block, Kind::Img);
    if (!rect || mode < 0 || picture < 0 || outline.valueOf(mode) != u"single")
        return;
    const Box box = rect->box;
    const bool fills = box.x == 0 && box.y == 0 && box.w <= screen.w && box.w >= screen.w - kFrame &&
                       box.h <= screen.h && box.h >= screen.h - kFrame;
    const QString name = outline.valueOf(picture).toString();
    if (!fills || !isThere(theme, name))
        return;
    look.screen = box;
    look.picture = name;
}

int brightness(const Channels &colour)
{
    return 299 * colour.red + 587 * colour.green + 114 * colour.blue;
}

struct Colour
{
    QString name;
    int brightness;
};

// Those that a window can name and show.
QList<Colour> coloursOf(const ThemeProject &theme)
{
    QList<Colour> colours;
    for (const ListRows::Row &row : theme.lvColor.rows()) {
        QString name = row.sub(1), value = row.sub(2);
        StripControlChars(name);
        const std::optional<Channels> code = channelsOf(StripControlChars(value));
        if (code && !isKeyColour(name) && whyNotName(NameKind::Colour, name).isEmpty())
            colours.append({name, brightness(*code)});
    }
    return colours;
}

// The first colour of the catalogue for letters, and the one that is least like it behind them. Panels stand
// out from the ground where no picture does.
void lookAtColours(const ThemeProject &theme, WindowLook &look)
{
    const QList<Colour> colours = coloursOf(theme);
    const Colour letters =
        colours.isEmpty() ? Colour{QStringLiteral("#FFFFFF"), brightness({255, 255, 255})} : colours.first();
    look.letters = letters.name;
    look.ground = letters.brightness > brightness({128, 128, 128}) ? QStringLiteral("#000000")
                                                                   : QStringLiteral("#FFFFFF");
    int most = kReadable;
    for (const Colour &colour : colours) {
        if (const int apart = std::abs(colour.brightness - letters.brightness); apart > most) {
            most = apart;
            look.ground = colour.name;
        }
    }
    look.panel = look.ground;
    for (const Colour &colour : colours) {
        if (look.picture.isEmpty() && look.panel == look.ground && colour.name != look.ground &&
            std::abs(colour.brightness - letters.brightness) > kReadable)
            look.panel = colour.name;
    }
}

QList<QSet<QString>> translatedIn(const ThemeProject &theme, const ThemeSources &sources)
{
    QList<QSet<QString>> languages;
    for (const ListRows::Row &language : theme.lvLang.rows()) {
        QSet<QString> translated;
        const auto add = [&translated](QStringView source, QStringView translation) {
            if (!translation.trimmed().isEmpty())
                translated.insert(source.toString());
        };
        const auto rows = sources.rows.constFind(language.text);
        if (rows != sources.rows.constEnd()) {
            for (const ListRows::Row &row : *rows)
                add(row.sub(1), row.sub(2));
        } else {
            const QString text =
                textOf(sources, {language.text, findFile(language.text)}).value_or(QString());
            for (const LanguageString &string : languageStrings(text))
                add(string.source, string.translation);
        }
        languages.append(translated);
    }
    return languages;
}

} // namespace

WindowLook lookOf(const ThemeProject &theme, const ThemeSources &sources)
{
    WindowLook look;
    const int width = theme.widgets.width.trimmed().toInt(), height = theme.widgets.height.trimmed().toInt();
    if (width > 0 && height > 0)
        look.screen = {0, 0, width, height};
    const Box screen = look.screen;
    const QList<ListRows::Row> windows = theme.widgets.LvWidget.rows().mid(0, kMostLookedAt);
    for (const ListRows::Row &window : windows) {
        const std::optional<QString> text = textOf(sources, {window.text, findFile(window.text)});
        if (text && look.picture.isEmpty())
            lookAt(Outline(*text), theme, screen, look);
    }
    lookAtColours(theme, look);
    for (const ListRows::Row &font : theme.lvFont.rows()) {
        const QString name = font.sub(1);
        if (look.font.isEmpty() && name == name.trimmed() && whyNotName(NameKind::Font, name).isEmpty())
            look.font = name;
    }
    look.word = [languages = translatedIn(theme, sources)](const QStringList &words) {
        for (const QString &word : words) {
            if (std::all_of(languages.begin(), languages.end(),
                            [&word](const QSet<QString> &language) { return language.contains(word); }))
                return word;
        }
        return QString();
    };
    return look;
}

} // namespace quillmere
