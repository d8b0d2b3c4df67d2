#include "TextTable.h"
#include "catalogues/ColourCatalogue.h"
#include "catalogues/FontCatalogue.h"
#include "catalogues/ImageCatalogue.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/TestFiles.h"
#include "i18n/LanguageCatalogue.h"
#include "markup/mndIni.h"
#include "theme/ThemeIndex.h"
#include "widgets/WidgetCatalogue.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

constexpr const char *kKindNames[] = {"image", "colour", "font", "string", "window", "language"};

// A line a place: file, line and column, row, kind, a "*" for a definition, the name.
QString asText(const ThemeIndex &index, const QList<NamePlace> &places)
{
    QString text;
    for (const NamePlace &place : places) {
        text +=
            fileNameOf(index.files().at(place.file).path) + u":%1:%2 "_s.arg(place.line).arg(place.column);
        if (place.row >= 0)
            text += u"[%1] "_s.arg(place.row);
        text += QLatin1String(kKindNames[int(place.kind)]) + (place.isDefinition ? u"* " : u" ") +
                place.name + u'\n';
    }
    return text;
}

class SmallTheme
{
public:
    SmallTheme()
    {
        files.write(u"theme/theme.xml"_s,
                    "<config><file_widget>widget/widget.xml</file_widget><file_image>image.xml</file_image>"
                    "<file_color>color.xml</file_color><file_i18n>i18n/i18n.xml</file_i18n>"
                    "<file_font>font.xml</file_font></config>");
        files.write(u"theme/image.xml"_s,
                    "<images>\n<image id = \"One\" >a.png</image>\n<image id=\" two \">b.png</image>\n"
                    "<image id=\"ONE\">c.png</image>\n</images>");
        files.write(u"theme/color.xml"_s, "<color name=\"red\">#FF0000</color>");
        files.write(u"theme/font.xml"_s, "<font>\n<name>small</name><file>s.ttf</file></font>");
        files.write(u"theme/i18n/i18n.xml"_s, "<language id=\"English\">english.xml</language>");
        files.write(u"theme/i18n/english.xml"_s,
                    "<language name=\"English\"><font>small</font>\n<tran id=\"Hello\">Hi</tran>");
        files.write(u"theme/widget/widget.xml"_s,
                    "<widget class=\"window\" name=\"main\"/><widget class=\"window\" name=\"Other\"/>"
                    "<widget class=\"window\" name=\"gone\"/>");
        files.write(
            u"theme/widget/main.xml"_s,
            "<widget class=\"window\" name=\"main\">\n<img> One </img><backcolor>[red, #000000 ,]</backcolor>"
            "\n<!-- <img>two</img> --><string>Hello</string><font>small</font>"
            "<l_img>two</l_img></widget>");
        files.write(u"theme/widget/other.xml"_s, "<widget a><IMG>One</img><img></img>");
        files.write(u"theme/widget/draft.xml"_s, "<unfocus_img>two</unfocus_img>");
        files.write(u"theme/style.xml"_s, "<widget a><forecolor>[red,blue]</forecolor></widget>");
    }

    ThemeSources sources() const
    {
        ThemeSources theme;
        theme.folder = path(QString());
        return theme;
    }
    QString path(const QString &name) const { return withOwnSeparators(files.path(u"theme/" + name)); }

    TestFiles files;
};

} // namespace

class TestThemeIndex : public QObject
{
    Q_OBJECT

private slots:
    void smallTheme()
    {
        const SmallTheme theme;
        const std::optional<ThemeIndex> index = ThemeIndex::build(theme.sources());
        QVERIFY(index);
        QString places;
        for (qint32 file = 0; file < index->files().size(); ++file) {
            if (!index->files()[file].isListed)
                places += u"(not listed) ";
            if (!index->files()[file].isReadable)
                places += QString(fileNameOf(index->files()[file].path) + u" is missing\n");
            places += asText(*index, index->placesIn(file));
        }
        QCOMPARE(places, u"widget.xml:1:30 [0] window main\n"
                         "widget.xml:1:66 [1] window Other\n"
                         "widget.xml:1:103 [2] window gone\n"
                         "image.xml:2:14 [0] image* One\n"
                         "image.xml:3:13 [1] image* two\n"
                         "image.xml:4:12 [2] image* ONE\n"
                         "color.xml:1:14 [0] colour* red\n"
                         "i18n.xml:1:15 [0] language* English\n"
                         "font.xml:2:7 [0] font* small\n"
                         "english.xml:1:17 language English\n"
                         "english.xml:1:32 font small\n"
                         "english.xml:2:11 [0] string* Hello\n"
                         "style.xml:1:23 colour red\n"
                         "style.xml:1:27 colour blue\n"
                         "main.xml:1:1 window* main\n"
                         "main.xml:2:7 image One\n"
                         "main.xml:2:29 colour red\n"
                         "main.xml:2:34 colour #000000\n"
                         "main.xml:3:32 string Hello\n"
                         "main.xml:3:52 font small\n"
                         "main.xml:3:71 image two\n"
                         "Other.xml:1:1 window* other\n"
                         "Other.xml:1:16 image One\n"
                         "gone.xml is missing\n"
                         "(not listed) draft.xml:1:1 window* draft\n"
                         "draft.xml:1:14 image two\n"_s);
        QCOMPARE(asText(*index, index->uses(NameKind::Image, u"One")),
                 u"main.xml:2:7 image One\nOther.xml:1:16 image One\n"_s);
        QCOMPARE(asText(*index, index->definitions(NameKind::Image, u"One")),
                 u"image.xml:2:14 [0] image* One\n"_s);
        QCOMPARE(index->inOtherLetters(NameKind::Image, u"oNe").size(), 2);
        QCOMPARE(index->inOtherLetters(NameKind::Image, u"One"), QStringList(u"ONE"_s));
        QCOMPARE(index->inOtherLetters(NameKind::Window, u"Other"), QStringList(u"other"_s));
        QCOMPARE(index->matching(NameKind::Image, u"O"), QStringList({u"ONE"_s, u"One"_s, u"two"_s}));
        QVERIFY(index->isDefined(NameKind::Window, u"main") && !index->isDefined(NameKind::Window, u"gone"));
        QVERIFY(index->isUsed(NameKind::Colour, u"blue") && !index->isDefined(NameKind::Colour, u"blue"));
    }

    // Read on threads of their own, where nobody would catch what they throw.
    void leavesOutWhatIsTooLarge()
    {
        const SmallTheme theme;
        QVERIFY(QFile::resize(theme.path(u"font.xml"_s), qint64(100) << 30));
        const std::optional<ThemeIndex> index = ThemeIndex::build(theme.sources());
        QVERIFY(index && index->isDefined(NameKind::Image, u"One"));
        QVERIFY(!index->isDefined(NameKind::Font, u"small") && index->isUsed(NameKind::Font, u"small"));
        const QList<qint32> numbers = index->numbersOf(theme.path(u"font.xml"_s));
        QVERIFY(numbers.size() == 1 && !index->files().at(numbers.first()).isReadable);
    }

    void openTextsComeFirst()
    {
        const SmallTheme theme;
        ThemeSources sources = theme.sources();
        sources.texts.insert(theme.path(u"widget/main.xml"_s), u"<img>typed</img>"_s);
        sources.rows.insert(theme.path(u"i18n/english.xml"_s), {{QString(), {u"New"_s, QString()}}});
        const std::optional<ThemeIndex> index = ThemeIndex::build(sources);
        QCOMPARE(asText(*index, index->uses(NameKind::Image, u"typed")), u"main.xml:1:6 image typed\n"_s);
        QCOMPARE(index->names(NameKind::String), QStringList(u"New"_s));
        QCOMPARE(asText(*index, index->definitions(NameKind::String, u"New")),
                 u"english.xml:0:0 [0] string* New\n"_s);
        QVERIFY(!index->isUsed(NameKind::String, u"Hello"));
        QVERIFY(index->isUsed(NameKind::Font, u"small")); // what the rows say nothing about
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(!ThemeIndex::build(sources, stop.get_token()));
    }

    // What only building anew can bring up to date is told.
    void tellsWhatNeedsAnother()
    {
        const SmallTheme theme;
        ThemeIndex index = *ThemeIndex::build(theme.sources());
        QVERIFY(index.update(theme.path(u"widget/widget.xml"_s), QString()));
        QVERIFY(index.update(theme.path(u"theme.xml"_s), QString()));
        QVERIFY(!index.update(theme.path(u"nothing.xml"_s), QString()));
    }

    // Entries are the rows of the loaders, whatever the file holds.
    void entriesAreRows()
    {
        const TestFiles files;
        Files disk;
        const QString path = files.path(u"a.xml"_s);
        const QStringList parts =
            u"<image |<color |<font>|<language |<language name=\"x\">|<TRAN id=\"|id|  =  |"
            "<tran id=\"a = b\">c|<widget class=\"window\" name=\"w\"/>|<WIDGET |\"a = b\"|"
            "name|ID=\"x\"|>|</|<|<name>n</name>|<file>|class=\"window\"|\"\n"_s.split(u'|');
        QRandomGenerator random(7);
        for (int round = 0; round < 400; ++round) {
            QString text;
            for (int i = random.bounded(16); i >= 0; --i)
                text += parts[random.bounded(parts.size())];
            files.write(u"a.xml"_s, text.toUtf8());
            const Document file = Document::open(disk, path);
            FileList file1;
            ImageCatalogue images;
            images.LoadImageList(file, {}, file1);
            WidgetCatalogue widgets;
            widgets.LoadWidgetList(file, {}, file1);
            ListRows colourRows(QStringList(3)), fonts(QStringList(5)), languages(makeLanguageRows()),
                strings(makeStringRows());
            ColourCatalogue colours(colourRows);
            colours.LoadColorList(file);
            LoadFontList(fonts, file);
            LoadLanguageList(languages, file, {});
            OpenLgXml(strings, text);
            const std::tuple<FileRole, const ListRows *, int> kinds[] = {
                {FileRole::ImageCatalogue, &images.rows, 0},
                {FileRole::ColourCatalogue, &colourRows, 2},
                {FileRole::FontCatalogue, &fonts, 2},
                {FileRole::LanguageCatalogue, &languages, 2},
                {FileRole::Language, &strings, 2},
                {FileRole::WindowCatalogue, &widgets.LvWidget, -1}};
            for (const auto &[role, rows, value] : kinds)
                compareWithRows(role, *rows, value, text);
        }
    }

    void nameAtCaret_data()
    {
        textTable({"text", "expected"}, {{u"image", u"<img> pi^c </img>", u"pic"},
                                         {u"behind it", u"<img>pic^</img>", u"pic"},
                                         {u"colour", u"<backcolor>[a,^bc]</backcolor>", u"bc"},
                                         {u"a text with blanks", u"<string> a^ b </string>", u" a b "},
                                         {u"no name", u"<rect>[1^,2]</rect>"},
                                         {u"comment", u"<!-- <img>p^</img> -->"},
                                         {u"before", u"^<img>pic</img>"}});
    }
    void nameAtCaret()
    {
        QFETCH(QString, text);
        const qsizetype at = text.indexOf(u'^');
        const Outline outline(text.remove(at, 1));
        const std::optional<FoundName> found = nameAt(outline, at);
        QTEST(found ? found->name.toString() : QString(), "expected");
    }

private:
    static void compareWithRows(FileRole role, const ListRows &rows, int value, const QString &text)
    {
        const QList<CatalogueEntry> entries = catalogueEntries(role, text);
        QVERIFY2(entries.size() == rows.count(), qPrintable(text));
        QString names, values, rowNames, rowValues;
        for (qsizetype row = 0; row < entries.size(); ++row) {
            const auto closedUp = [&](Range range) {
                QString part = range.in(text).toString();
                return role == FileRole::WindowCatalogue || role == FileRole::FontCatalogue ||
                               role == FileRole::Language
                           ? part
                           : CloseUpEquals(part);
            };
            QVERIFY(entries[row].element.start <= entries[row].name.start || entries[row].name.isEmpty());
            QString name = rows.sub(int(row), 1);
            names += closedUp(entries[row].name).trimmed() + u'\n';
            rowNames += StripControlChars(name).trimmed() + u'\n';
            if (value >= 0) {
                values += closedUp(entries[row].value) + u'\n';
                rowValues += value > 0 ? rows.sub(int(row), value) : rows.text(int(row));
                rowValues.replace(separator(), u'/') += u'\n';
            }
        }
        QCOMPARE(names, rowNames);
        QCOMPARE(values, rowValues);
    }
};

QTEST_GUILESS_MAIN(TestThemeIndex)
#include "tst_themeindex.moc"
