#include "making/NewTheme.h"

#include "checks/NameRules.h"
#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "i18n/LanguageCatalogue.h"
#include "making/WindowLook.h"
#include "making/WindowTemplate.h"
#include "naming/Rename.h"

#include <QFileInfo>
#include <QObject>
#include <QSet>

namespace quillmere {

namespace {

const QString kLanguage = QStringLiteral("English");
const QString kFont = QStringLiteral("font_prog"); // the one that language files always name
constexpr QByteArrayView kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

constexpr struct
{
    WindowTemplate kind;
    const char *name;
} kWindows[] = {{WindowTemplate::List, "wnd_main_menu"},
                {WindowTemplate::MessageBox, "wnd_message_box"},
                {WindowTemplate::Bar, "wnd_volume"}};

const char kTheme[] = R"(<theme>
    <name>%1</name>
    <config>
        <file_widget>widget/widget.xml</file_widget>
        <file_image>images/image.xml</file_image>
        <file_color>color/color.xml</file_color>
        <file_i18n>i18n/i18n.xml</file_i18n>
        <file_font>font/font.xml</file_font>
        <file_keymap>keymap/keymap.xml</file_keymap>
        <file_style>style.xml</file_style>
    </config>
</theme>
)";

const char kImages[] = R"(<images>
</images>
)";

const char kColours[] = R"(<colors>
    <color name="white">#FFFFFF</color>
    <color name="midnightblue">#191970</color>
    <color name="royalblue">#4169E1</color>
</colors>
)";

const char kLanguages[] = R"(<languages>
    <language id="English">english.xml</language>
</languages>
)";

const char kKeys[] = R"(<keymap>
    <index>
        <item display="Digits" group="numeric"/>
        <item display="Navigation" group="navigation"/>
        <item display="Colour keys" group="colour"/>
    </index>
    <group name="numeric">
        <key name="0">0x00</key>
        <key name="1">0x01</key>
        <key name="2">0x02</key>
        <key name="3">0x03</key>
        <key name="4">0x04</key>
        <key name="5">0x05</key>
        <key name="6">0x06</key>
        <key name="7">0x07</key>
        <key name="8">0x08</key>
        <key name="9">0x09</key>
    </group>
    <group name="navigation">
        <key name="up">0x10</key>
        <key name="down">0x11</key>
        <key name="left">0x12</key>
        <key name="right">0x13</key>
        <key name="ok">0x14</key>
        <key name="menu">0x15</key>
        <key name="exit">0x16</key>
    </group>
    <group name="colour">
        <key name="red">0x20</key>
        <key name="green">0x21</key>
        <key name="yellow">0x22</key>
        <key name="blue">0x23</key>
    </group>
</keymap>
)";

const char kSettings[] = R"(<default>
    <group name="language" value="English">
        <list value="English" display="English"/>
    </group>
    <group name="common">
        <item name="hardware version" value="1.0"/>
        <item name="software version" value="1.0"/>
        <item name="userdefine1" value=""/>
        <item name="userdefine2" value=""/>
        <item name="userdefine3" value=""/>
        <item name="transparence" value="0"/>
        <item name="volume" value="15"/>
        <item name="time zone" value="1"/>
        <item name="summer time" value="0"/>
    </group>
    <group name="scart config" value="rgb">
        <list value="cvbs" display="Composite video"/>
        <list value="rgb" display="RGB"/>
    </group>
    <group name="spdif config" value="pcm">
        <list value="off" display="Off"/>
        <list value="pcm" display="Stereo PCM"/>
        <list value="raw" display="Bit stream"/>
    </group>
</default>
)";

const char kStyle[] = R"(<interface>
    <!-- What a widget takes over when its own block says nothing. -->
    <widget class="text" style="default" name="default_text">
        <property>
            <rect>[0,0,320,40]</rect>
            <backcolor>[gui_trans,gui_trans,gui_trans]</backcolor>
            <forecolor>[white,white,white]</forecolor>
            <alignment>vcentre</alignment>
        </property>
    </widget>
</interface>
)";

NewFile file(const char *name, const QString &text)
{
    return {QLatin1String(name), kHead.toByteArray() + text.toUtf8()};
}

QString catalogueOf(const QSize &screen)
{
    QString text =
        QStringLiteral("<interface>\n    <width>%1</width>\n    <height>%2</height>\n    <bpp>32</bpp>\n")
            .arg(screen.width())
            .arg(screen.height());
    for (const auto &window : kWindows)
        text += QStringLiteral("    <widget class=\"window\" style=\"default\" name=\"%1\"/>\n")
                    .arg(QLatin1String(window.name));
    return text + u"</interface>\n";
}

QString fontsOf(const NewTheme &theme)
{
    if (theme.font.isEmpty())
        return QStringLiteral("<fonts>\n</fonts>\n");
    // A size that leaves the rows of the windows some air.
    return QStringLiteral("<fonts>\n    <font>\n        <name>%1</name>\n        <file>%2</file>\n        "
                          "<size>%3</size>\n        <style>normal</style>\n    </font>\n</fonts>\n")
        .arg(kFont, QFileInfo(theme.font).fileName(), QString::number(theme.screen.height() / 32));
}

// What the windows say, in itself.
QString englishOf(const QStringList &windows, bool hasFont)
{
    ListRows strings = makeStringRows();
    QSet<QString> known;
    for (const QString &window : windows) {
        const Outline outline(window);
        for (qint32 each = 0; each < qint32(outline.elements().size()); ++each) {
            const QString text =
                outline.element(each).kind == Kind::String ? outline.valueOf(each).toString() : QString();
            if (!needsTranslation(text) || known.contains(text))
                continue;
            known.insert(text);
            strings.add({}, {text, text});
        }
    }
    QString text = languageFileText(kLanguage, strings, {CodePage::Utf8, CodePageRule::Automatic});
    if (!hasFont)
        text.remove(QString(u"<font>" + kFont + u"</font>\r\n"));
    return text;
}

QByteArray fontBytes(const QString &path)
{
    QString reason;
    const QByteArray bytes = readRegular(path, kLargestFile, reason);
    if (!reason.isEmpty())
        throwFailed("read", path, reason);
    return bytes;
}

} // namespace

QString themeFolderFor(const QString &chosen)
{
    const QString folder = chosen.endsWith(separator()) && chosen.size() > 1 ? chosen.chopped(1) : chosen;
    return isThemeFolder(folder) ? folder : joinPath(folder, u"theme");
}

QString whyNotFont(const QString &path)
{
    if (!path.endsWith(u".ttf"))
        return QObject::tr("The name of the font file does not end in .ttf.");
    if (const QString why = whyNotFile(QFileInfo(path).fileName()); !why.isEmpty())
        return why;
    return QFileInfo(path).isFile() ? QString() : QObject::tr("There is no such font file.");
}

QList<NewFile> filesOf(const NewTheme &theme)
{
    WindowLook look;
    look.screen = {0, 0, theme.screen.width(), theme.screen.height()};
    look.letters = QStringLiteral("white");
    look.ground = QStringLiteral("midnightblue");
    look.panel = QStringLiteral("royalblue");
    look.font = theme.font.isEmpty() ? QString() : kFont;
    look.word = [](const QStringList &words) { return words.first(); };
    QList<NewFile> files = {file("theme.xml", QString::fromLatin1(kTheme).arg(theme.name.toHtmlEscaped())),
                            file("style.xml", QLatin1String(kStyle)),
                            file("default.xml", QLatin1String(kSettings)),
                            file("widget/widget.xml", catalogueOf(theme.screen)),
                            file("images/image.xml", QLatin1String(kImages)),
                            file("color/color.xml", QLatin1String(kColours)),
                            file("font/font.xml", fontsOf(theme)),
                            file("i18n/i18n.xml", QLatin1String(kLanguages)),
                            file("keymap/keymap.xml", QLatin1String(kKeys))};
    QStringList windows;
    for (const auto &[kind, name] : kWindows) {
        windows.append(windowText(kind, QLatin1String(name), look));
        files.append({u"widget/" + QLatin1String(name) + u".xml", windows.last().toUtf8()});
    }
    files.append({QStringLiteral("i18n/english.xml"), englishOf(windows, !look.font.isEmpty()).toUtf8()});
    if (!theme.font.isEmpty())
        files.append({u"font/" + QFileInfo(theme.font).fileName(), fontBytes(theme.font)});
    return files;
}

} // namespace quillmere
