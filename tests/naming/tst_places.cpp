#include "files/Files.h"
#include "files/RunTimeError.h"
#include "files/TestFiles.h"
#include "naming/Destination.h"
#include "naming/Rename.h"
#include "naming/SamePlaces.h"
#include "naming/TextSearch.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kMain = "<interface>\n<widget class=\"window\" style=\"default\" name=\"main\">\n"
                         "<img>logo</img><!-- <img>logo</img> --><backcolor>[ navy ,navy,white]</backcolor>\n"
                         "<font>big</font><string>Yes</string></widget>\n</interface>\n";
const QByteArray kOther = "<widget class=\"text\" style=\"title\" name=\"a\"><img> logo </img></widget>\n"
                          "<widget name=\"b\"/><widget name=\"b\"><unfocus_img>gone</unfocus_img></widget>\n";
const QByteArray kStyle =
    "<widget class=\"image\" style=\"default\" name=\"x\"/>\n"
    "<widget class=\"window\" style=\"default\" name=\"win\"/><style name=\"title\"/>\n";

// A theme on disk, its index, and what an edit of it comes to.
class SmallTheme
{
public:
    SmallTheme()
    {
        write("theme.xml", "<config><file_widget>w/widget.xml</file_widget><file_image>image.xml</file_image>"
                           "<file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n>"
                           "<file_font>font.xml</file_font></config>");
        write("w/widget.xml",
              "<widget class=\"window\" name=\"main\"/><widget class=\"window\" name=\"other\"/>");
        write("w/main.xml", kMain);
        write("w/other.xml", kOther);
        write("style.xml", kStyle);
        write("image.xml", "<image id=\"logo\">l.png</image><image id=\"icon\">i.png</image>");
        write("color.xml", "<color name=\"navy\">#000080</color><color name=\"white\">#FFFFFF</color>");
        write("font.xml", "<font><name>big</name><file>b.ttf</file></font>");
        write("lang.xml", "<language id=\"English\">en.xml</language>");
        write("en.xml", "<language name=\"English\"><font>big</font><tran id=\"Yes\">Ja</tran></language>");
        sources.folder = files.path(u"theme"_s);
        index = ThemeIndex::build(sources);
        door.backups().setFolder(files.path(u"backup"_s));
    }
    void write(const char *name, const QByteArray &bytes) const
    {
        files.write(QLatin1String("theme/") + QLatin1String(name), bytes);
    }
    QString path(const char *name) const { return files.path(QLatin1String("theme/") + QLatin1String(name)); }
    // The files that hold something else than at first, a line each, and those that came or went.
    QString changes() const
    {
        static const SmallTheme first;
        QString text;
        for (const char *name : {"w/widget.xml", "w/main.xml", "w/first.xml", "w/other.xml", "style.xml",
                                 "image.xml", "color.xml", "font.xml", "lang.xml", "en.xml"}) {
            const QByteArray now = files.read(QLatin1String("theme/") + QLatin1String(name));
            if (now != first.files.read(QLatin1String("theme/") + QLatin1String(name)))
                text += QLatin1String(name) + u": " + QString::fromLatin1(now).remove(u'\n') + u'\n';
        }
        return text;
    }

    TestFiles files;
    Files door;
    ThemeSources sources;
    std::optional<ThemeIndex> index;
};

// The text without its "|", which marks the caret.
std::pair<QString, qsizetype> caretIn(const QByteArray &marked)
{
    QString text = QString::fromLatin1(marked);
    const qsizetype caret = text.indexOf(u'|');
    return {text.remove(u'|'), caret};
}

} // namespace

class TestPlaces : public QObject
{
    Q_OBJECT

private slots:
    void thingAtCaret_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("thing");
        const auto row = [](const char *text, const char *thing) {
            QTest::newRow(text) << QByteArray(text) << QString::fromLatin1(thing);
        };
        row("<widget name=\"a\"><img>lo|go</img></widget>", "image logo");
        row("<widget name=\"a\"><img>logo|</img></widget>", "image logo");
        row("<backcolor>[navy, |white ]</backcolor>", "colour white");
        row("<string>|Yes</string>", "string Yes");
        row("<widget class=\"text\" name=\"a|\"></widget>", "block a");
        row("<widget cl|ass=\"text\" name=\"a\"></widget>", "block a");
        row("<widget name=\"a\"><children><widget id=\"|b\"/></children></widget>", "block b");
        row("<widget name=\"\"|>", "");
        row("<widget name=\"a\"><rect>[1,|2,3,4]</rect></widget>", "");
        row("<!-- <img>lo|go</img> -->", "");
        row("|", "");
    }

    void thingAtCaret()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, thing);
        const auto [plain, caret] = caretIn(text);
        const auto found = thingAt(Outline(plain), caret, u"w.xml"_s, nullptr);
        QCOMPARE(found ? QString(wordFor(found->kind) + u' ' + found->name) : QString(), thing);
    }

    void partner_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *text, const char *expected) {
            QTest::newRow(text) << QByteArray(text) << QString::fromLatin1(expected);
        };
        row("<widget name=\"a\"><img></img></wid|get>", "w.xml widget 1");
        row("<widget name=\"a\"></widget|", "");
        row("<widget class=\"window\" style=\"def|ault\" name=\"a\"/>", "style.xml win");
        row("<widget class=\"text\" style=\"title|\" name=\"a\"/>", "style.xml title");
        row("<widget class=\"text\" style=\"no|ne\" name=\"a\"/>", "");
        row("<widget class=\"te|xt\" style=\"title\" name=\"a\"/>", "");
    }

    void partner()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, expected);
        const auto [plain, caret] = caretIn(text);
        const QString style = QString::fromLatin1(kStyle);
        const auto found = partnerAt(Outline(plain), caret, u"w.xml"_s, u"style.xml"_s, style);
        QString said;
        if (found && found->file == u"w.xml")
            said = u"w.xml %1 %2"_s.arg(found->range.in(plain)).arg(found->range.start);
        else if (found)
            said = u"style.xml "_s + found->range.in(style);
        QCOMPARE(said, expected);
    }

    void rename_data()
    {
        QTest::addColumn<int>("kind"); // -1 for a block
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("changes");
        const auto row = [](const char *name, int kind, const char *from, const char *to,
                            const QByteArray &changes) {
            QTest::newRow(name) << kind << QString::fromLatin1(from) << QString::fromLatin1(to)
                                << QString::fromLatin1(changes);
        };
        const QByteArray main = QByteArray(kMain).replace('\n', ""),
                         other = QByteArray(kOther).replace('\n', "");
        const auto with = [](QByteArray text, const char *from, const char *to) {
            return text.replace(from, to);
        };
        row("image", int(NameKind::Image), "logo", "L",
            "w/main.xml: " + with(with(main, "logo", "L"), "<!-- <img>L", "<!-- <img>logo") +
                "\nw/other.xml: " + with(other, "logo", "L") +
                "\nimage.xml: <image id=\"L\">l.png</image><image id=\"icon\">i.png</image>\n");
        row("colour", int(NameKind::Colour), "navy", "ink",
            "w/main.xml: " + with(main, "navy", "ink") +
                "\ncolor.xml: <color name=\"ink\">#000080</color><color name=\"white\">#FFFFFF</color>\n");
        row("font", int(NameKind::Font), "big", "huge",
            "w/main.xml: " + with(main, "big", "huge") +
                "\nfont.xml: <font><name>huge</name><file>b.ttf</file></font>\n"
                "en.xml: <language name=\"English\"><font>huge</font><tran "
                "id=\"Yes\">Ja</tran></language>\n");
        row("string", int(NameKind::String), "Yes", "Yes & no",
            "w/main.xml: " + with(main, "Yes", "Yes & no") +
                "\nen.xml: <language name=\"English\"><font>big</font><tran id=\"Yes & "
                "no\">Ja</tran></language>\n");
        row("language", int(NameKind::Language), "English", "en",
            "lang.xml: <language id=\"en\">en.xml</language>\n"
            "en.xml: <language name=\"en\"><font>big</font><tran id=\"Yes\">Ja</tran></language>\n");
        row("window", int(NameKind::Window), "main", "first",
            "w/widget.xml: <widget class=\"window\" name=\"first\"/><widget class=\"window\" "
            "name=\"other\"/>\n"
            "w/main.xml: (no file)\nw/first.xml: " +
                with(main, "\"main\"", "\"first\"") + "\n");
        row("block", -1, "b", "c",
            "w/other.xml: " + with(other, "<widget name=\"b\"/>", "<widget name=\"c\"/>") + "\n");
        row("nothing defines it", int(NameKind::Image), "gone", "icon",
            "w/other.xml: " + with(other, "gone", "icon") + "\n");
    }

    // All places of a name change, and change back.
    void rename()
    {
        QFETCH(int, kind);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, changes);
        SmallTheme theme;
        const NamedThing thing = kind < 0 ? NamedThing{std::nullopt, from, theme.path("w/other.xml"), 1}
                                          : NamedThing{NameKind(kind), from};
        const FoundPlaces found = placesOf(thing, *theme.index, theme.sources, {});
        QCOMPARE(whyNotRename(thing, to, found, *theme.index), QString());
        QList<bool> isTaken;
        for (const FoundPlace &place : found.places) {
            isTaken.append(place.isSure);
            QCOMPARE(place.line.with(to).mid(place.line.start, to.size()), to);
        }
        const EditTargets targets = {theme.door, theme.sources.folder};
        const ThemeEdit inverse = editOf(found, isTaken, to).apply(targets);
        QCOMPARE(theme.changes(), changes);
        inverse.apply(targets);
        QCOMPARE(theme.changes(), QString());
    }

    void rowsThatAreOpen()
    {
        SmallTheme theme;
        const QList<ListRows::Row> rows = {{u"i.png"_s, {u"icon"_s}}, {u"l.png"_s, {u" logo\t"_s, u"Y"_s}}};
        const auto open = [&](const QString &path) {
            return path == theme.path("image.xml") ? std::optional(rows) : std::nullopt;
        };
        const NamedThing thing = {NameKind::Image, u"logo"_s};
        const FoundPlaces found = placesOf(thing, *theme.index, theme.sources, open);
        const ThemeEdit edit = editOf(found, QList<bool>(found.places.size(), true), u"L"_s);
        QVERIFY(edit.changesOf(theme.path("image.xml")).isEmpty());
        const auto changed = changedRows(rows, edit.rowChangesOf(theme.path("image.xml")));
        QVERIFY(changed);
        QCOMPARE(changed->at(1).subItems.join(u'|'), u" L\t|Y"_s);
        QCOMPARE(changed->at(0).sub(1), u"icon"_s);
    }

    void whyNot_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("why"); // a part of the sentence
        const auto row = [](const char *name, NameKind kind, const char *from, const char *to,
                            const char *why) {
            QTest::newRow(name) << int(kind) << QString::fromLatin1(from) << QString::fromLatin1(to)
                                << QString::fromLatin1(why);
        };
        row("empty", NameKind::Image, "logo", " ", "empty");
        row("quote", NameKind::Image, "logo", "a\"b", "quote");
        row("bracket", NameKind::String, "Yes", "<b>", "quote");
        row("there already", NameKind::Image, "logo", "icon", "Another image");
        row("list", NameKind::Colour, "navy", "a,b", "divide");
        row("blanks", NameKind::Colour, "navy", "a ", "blank");
        row("blanks of a string", NameKind::String, "Yes", "a ", "");
        row("line break", NameKind::String, "Yes", "a\nb", "line breaks");
        row("window out of its folder", NameKind::Window, "main", "../main", "file");
        row("window there already", NameKind::Window, "main", "other", "Another window");
        row("window in other letters", NameKind::Window, "main", "OTHER", "Another window");
        row("the same in other letters", NameKind::Window, "main", "Main", "");
        row("device", NameKind::Window, "main", "aux", "file");
        row("catalogue that cannot hold it", NameKind::Image, "logo", "a = b", "blank");
        row("file there already", NameKind::Window, "main", "widget", "Another window");
        row("hidden file", NameKind::Window, "main", ".main", "file");
        row("the same", NameKind::Image, "logo", "logo", "");
    }

    void whyNot()
    {
        QFETCH(int, kind);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, why);
        const SmallTheme theme;
        const NamedThing thing = {NameKind(kind), from};
        const QString said =
            whyNotRename(thing, to, placesOf(thing, *theme.index, theme.sources, {}), *theme.index);
        QVERIFY2(why.isEmpty() ? said.isEmpty() : said.contains(why), qPrintable(said));
    }

    void movesAllOrNone()
    {
        SmallTheme theme;
        const NamedThing thing = {NameKind::Window, u"main"_s};
        const FoundPlaces found = placesOf(thing, *theme.index, theme.sources, {});
        const ThemeEdit edit = editOf(found, QList<bool>(found.places.size(), true), u"first"_s);
        theme.write("w/first.xml", "somebody else's");
        QVERIFY_EXCEPTION_THROWN(edit.apply({theme.door, theme.sources.folder}), RunTimeError);
        QCOMPARE(theme.changes(), u"w/first.xml: somebody else's\n"_s);
    }

    void searches_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("mindsCase");
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("most");
        QTest::addColumn<QString>("places");
        const auto row = [](const char *name, const char *text, bool mindsCase, const char *file, int most,
                            const char *places) {
            QTest::newRow(name) << QString::fromLatin1(text) << mindsCase << QString::fromLatin1(file) << most
                                << QString::fromLatin1(places);
        };
        row("any case", "LOGO", false, "", 100, "main.xml:3 main.xml:3 other.xml:1");
        row("this case", "LOGO", true, "", 100, "");
        row("one window", "logo", true, "w/other.xml", 100, "other.xml:1");
        row("style.xml too", "\"title\"", true, "", 100, "style.xml:2 other.xml:1");
        row("no catalogue", "l.png", true, "", 100, "");
        row("more than are listed", "logo", true, "", 2, "main.xml:3 main.xml:3 +1");
        row("without overlap", "dd", true, "w/other.xml", 100, "");
    }

    void searches()
    {
        QFETCH(QString, text);
        QFETCH(bool, mindsCase);
        QFETCH(QString, file);
        QFETCH(int, most);
        QFETCH(QString, places);
        const SmallTheme theme;
        const TextSearch search = {text, mindsCase, file.isEmpty() ? QString() : theme.path(file.toLatin1())};
        const auto found = searchTexts(search, *theme.index, theme.sources, {}, {}, most);
        QVERIFY(found);
        QStringList said;
        for (const FoundPlace &place : found->places) {
            QVERIFY(place.text.compare(text, Qt::CaseInsensitive) == 0);
            said.append(QFileInfo(place.file).fileName() + u':' + QString::number(place.line.number));
        }
        if (found->more > 0)
            said.append(u'+' + QString::number(found->more));
        QCOMPARE(said.join(u' '), places);
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(!searchTexts(search, *theme.index, theme.sources, stop.get_token()));
    }

    // Places of a text that has changed since are those of the same number, where it is clear which is which.
    void findsAgain()
    {
        const TextSearch search = {u"a"_s};
        const QString file = u"w.xml"_s;
        FoundPlaces found = placesIn(search, file, u"a\na"_s);
        QVERIFY(!found.renew(file, placesIn(search, file, u"a a a"_s)));
        QVERIFY(!found.renew(file, placesIn(search, file, u"A a"_s)));
        QCOMPARE(found.places[1].range, (Range{2, 3}));
        const QString now = u"\n  a\n  a"_s;
        QVERIFY(found.renew(file, placesIn(search, file, now)));
        QCOMPARE(found.places[1].range, (Range{7, 8}));
        QCOMPARE(found.marks.value(file), ThemeEdit::markOf(now));
    }

    void staysTheSame_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("numbers"); // of the places of "a", those of before in turn
        QTest::newRow("line above") << u"a\nb a"_s << u"x a y\na\nb a"_s << u"1 2"_s;
        QTest::newRow("another line") << u"a\nb a"_s << u"a\nc a"_s << u"0 1"_s;
        QTest::newRow("gone") << u"a\nb a"_s << u"b a"_s << u"-1 0"_s;
        QTest::newRow("gone, and another came") << u"x a\nb a"_s << u"b a\ny a"_s << u"-1 0"_s;
        QTest::newRow("laid out anew") << u"a a\na"_s << u"a\na\na"_s << u"0 1 2"_s;
        QTest::newRow("one more of many") << u"a\na"_s << u"a\na\na"_s << u"-1 -1"_s;
    }

    void staysTheSame()
    {
        QFETCH(QString, before);
        QFETCH(QString, now);
        const FoundPlaces old = placesIn({u"a"_s}, u"w.xml"_s, before),
                          found = placesIn({u"a"_s}, u"w.xml"_s, now);
        const SamePlaces same(old, found);
        QStringList numbers;
        for (qsizetype number = 0; number < old.places.size(); ++number)
            numbers.append(QString::number(same.numberOf(number)));
        QTEST(numbers.join(u' '), "numbers");
    }

    void linesAreFitToShow_data()
    {
        QTest::addColumn<QString>("text"); // "|" at both ends of the range
        QTest::addColumn<QString>("shown");
        const QString dots = u"\u2026"_s;
        QTest::newRow("between lines") << u"x\r\n  a |b| c \r\ny"_s << u"a [b] c"_s;
        QTest::newRow("at the ends") << u"|b|"_s << u"[b]"_s;
        QTest::newRow("empty") << u"a\n||\nb"_s << u"[]"_s;
        QTest::newRow("long") << QString(QString(900, u'x') + u"|b|" + QString(900, u'y'))
                              << QString(dots + QString(60, u'x') + u"[b]" + QString(140, u'y') + dots);
        QTest::newRow("turned round") << u"a\u202E\t\u0007|b|"_s << u"a   [b]"_s;
    }

    void linesAreFitToShow()
    {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        const qint32 start = qint32(text.indexOf(u'|')), end = qint32(text.lastIndexOf(u'|')) - 1;
        const LineAround line = lineAround(text.remove(u'|'), {start, end}, 1);
        QString marked = line.text;
        QCOMPARE(marked.insert(line.start + line.length, u']').insert(line.start, u'['), shown);
    }
};

QTEST_GUILESS_MAIN(TestPlaces)
#include "tst_places.moc"
