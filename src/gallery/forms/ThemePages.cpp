#include "gallery/forms/ThemePages.h"

#include "browser/forms/PictureSizes.h"
#include "controls/Twips.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "gallery/ContentNames.h"
#include "gallery/WindowPage.h"
#include "markup/FormatXML.h"
#include "preview/forms/LateRender.h"
#include "theme/ThemeProject.h"

#include <QFileInfo>

#include <memory>

namespace quillmere {

namespace {

using PageMaker = std::function<QString(const QString &text)>;

PageMaker pageMaker(const ReceiverTheme &theme, ThemePages::HiddenWindows hidden,
                    const ReceiverOptions &options)
{
    return [theme, hidden, options](const QString &text) {
        const Outline outline(text);
        return receiverPage(outline, theme,
                            hidden == ThemePages::HiddenWindows::Shown ? withWindowShown(outline, options)
                                                                       : options);
    };
}

// Makes the page with the bytes of pictures and fonts in place of their paths.
PageMaker keyMaker(const ThemeProject &theme, const ReceiverParts &parts, ThemePages::HiddenWindows hidden,
                   const ReceiverOptions &options)
{
    const auto names = std::make_shared<ContentNames>(theme.folder());
    QHash<QString, QString> families;
    QString fonts; // all of them count: there is room for so many
    for (const PageFont &font : parts.fonts) {
        families.insert(font.family, names->of(font.path).mid(1));
        fonts += names->of(font.path);
    }
    const bool areCertain = names->certain();
    ReceiverTheme own = parts.theme;
    own.picture = [names, picture = parts.theme.picture](const QString &id) {
        const QString path = picture(id);
        return path.isEmpty() ? path : names->of(path);
    };
    own.sizeOf = [names, sizeOf = parts.theme.sizeOf](const QString &name) {
        return sizeOf(names->pathOf(name));
    };
    own.font = [families, font = parts.theme.font](const QString &name) {
        ReceiverTheme::Font found = font(name);
        found.family = families.value(found.family);
        return found;
    };
    return [names, make = pageMaker(own, hidden, options), fonts, areCertain](const QString &text) {
        const QString page = make(text);
        return names->certain() && areCertain ? page + fonts : QString();
    };
}

} // namespace

QString ThemeWindow::label() const
{
    return !name.isEmpty()      ? name
           : document.isEmpty() ? QStringLiteral("(no name)")
                                : QFileInfo(document).fileName();
}

QList<ThemeWindow> windowsOf(const ThemeProject &theme, const QStringList &names)
{
    QList<ThemeWindow> windows;
    QHash<QString, QString> documents; // of the first window of each name
    for (const ListRows::Row &row : theme.widgets.LvWidget.rows()) {
        if (names.isEmpty())
            windows.append({row.sub(1), row.text});
        else if (!documents.contains(row.sub(1)))
            documents.insert(row.sub(1), row.text);
    }
    for (const QString &name : names)
        windows.append({name, documents.value(name)});
    return windows;
}

QSize screenPixels(const ThemeProject &theme)
{
    const TwipSize size = browserSize(screenOfTheme(theme.widgets.width, theme.widgets.height), true);
    return {toPixels(size.width), toPixels(size.height)};
}

ThemePages ThemePages::preview(const ThemeProject &theme)
{
    ThemePages pages;
    pages.m_make = [GetImg = theme.images.lookup(), rows = theme.lvFont.rows(),
                    size = defaultFontSize(theme.lvFont)](QString text) {
        return renderPage({FormatXML(text), GetImg, rows, size, {}}).page;
    };
    return pages;
}

ThemePages ThemePages::receiver(const ThemeProject &theme, HiddenWindows hidden, const QString &language,
                                const ReceiverOptions &options)
{
    ReceiverParts parts = receiverParts(theme);
    if (!language.isEmpty()) {
        parts.theme.translation = translationOf(theme, language);
        if (!parts.theme.translation)
            throw RunTimeError(QStringLiteral("the theme has no language \"%1\"; it has: %2")
                                   .arg(language, languageNames(theme).join(QStringLiteral(", "))));
    }
    parts.theme.sizeOf = [sizes = std::make_shared<PictureSizes>(theme.folder())](const QString &path) {
        return sizes->of(path);
    };
    ThemePages pages;
    pages.m_fonts = parts.fonts;
    pages.m_areReceivers = true;
    pages.m_make = pageMaker(parts.theme, hidden, options);
    pages.m_key = keyMaker(theme, parts, hidden, options);
    return pages;
}

QString ThemePages::textOf(const ThemeWindow &window)
{
    const QString text = LoadFile(window.document);
    if (findFile(window.document).isEmpty())
        throw RunTimeError(QStringLiteral("no document"));
    return text;
}

} // namespace quillmere
