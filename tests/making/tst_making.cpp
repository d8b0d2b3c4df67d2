#include "checks/ThemeCheck.h"
#include "files/RunTimeError.h"
#include "files/TestFiles.h"
#include "making/NewLanguage.h"
#include "making/NewTheme.h"
#include "making/NewWindow.h"
#include "making/ThemeConversion.h"
#include "making/WindowLook.h"
#include "making/WindowTemplate.h"
#include "theme/CatalogueLines.h"
#include "theme/ThemeProject.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// Its head says how large it is.
PictureReading readPng(const QByteArray &bytes)
{
    const QByteArray head = bytes.left(24);
    const auto number = [&head](int at) { return head.mid(at, 4).toHex().toInt(nullptr, 16); };
    return {{number(16), number(20)}, true};
}

void copyFolder(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    for (const QFileInfo &file : QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (file.isDir())
            copyFolder(file.filePath(), to + u'/' + file.fileName());
        else
            QFile::copy(file.filePath(), to + u'/' + file.fileName());
    }
}

// A theme that is written to, with what stands in its folder.
class MadeTheme
{
public:
    MadeTheme() { door.backups().setFolder(files.path(u"backup"_s)); }
    void open() { QVERIFY(theme.LoadTheme(folder())); }
    void openExample()
    {
        copyFolder(QStringLiteral(EXAMPLES_FOLDER "/aurora/theme"), folder());
        open();
    }

    QString folder() const { return files.path(u"theme"_s); }
    ThemeSources sources() const
    {
        ThemeSources all;
        all.folder = folder();
        return all;
    }
    // A line each: "FILE RULE MESSAGE".
    QStringList problems() const
    {
        const ThemeSources all = sources();
        const auto index = ThemeIndex::build(all);
        PictureStore pictures(readPng);
        QStringList lines;
        const CheckedTheme checked = checkTheme(all, *index, pictures).value();
        for (const Problem &problem : checked.problems)
            lines.append(u"%1 %2 %3"_s.arg(problem.file.mid(folder().size() + 1),
                                           QLatin1String(textOf(problem.rule).id), problem.message()));
        return lines;
    }
    ThemeEdit apply(const ThemeEdit &edit) { return edit.apply({door, folder(), {}, {}, theme.rule}); }

    TestFiles files;
    Files door;
    ThemeProject theme{door};
};

// Every file below a folder with its bytes.
QMap<QString, QByteArray> bytesBelow(const QString &folder)
{
    QMap<QString, QByteArray> all;
    for (const QFileInfo &file :
         QDir(folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)) {
        if (file.isDir()) {
            const auto inner = bytesBelow(file.filePath());
            for (auto each = inner.cbegin(); each != inner.cend(); ++each)
                all.insert(file.fileName() + u'/' + each.key(), *each);
        } else {
            QFile content(file.filePath());
            content.open(QIODevice::ReadOnly);
            all.insert(file.fileName(), content.readAll());
        }
    }
    return all;
}

} // namespace

class TestMaking : public QObject
{
    Q_OBJECT

    std::unique_ptr<MadeTheme> m_example; // for who only reads

private slots:
    void initTestCase()
    {
        m_example = std::make_unique<MadeTheme>();
        m_example->openExample();
    }

    void entries_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("after"); // empty where there is no place
        QTest::newRow("own line") << u"<i>\n    <a/>\n</i>\n"_s << u"<i>\n    <a/>\n    <new/>\n</i>\n"_s;
        QTest::newRow("CR LF") << u"<i>\r\n\t<a/>\r\n</i>"_s << u"<i>\r\n\t<a/>\r\n\t<new/>\r\n</i>"_s;
        QTest::newRow("one line") << u"<i><a/></I>"_s << u"<i><a/>\n<new/>\n</I>"_s;
        QTest::newRow("the last") << u"</i><i>\n</i>"_s << u"</i><i>\n<new/>\n</i>"_s;
        QTest::newRow("no end") << u"<i><a/>"_s << QString();
        QTest::newRow("no text") << QString() << QString();
    }
    void entries()
    {
        QFETCH(QString, text);
        QFETCH(QString, after);
        const auto change = linesBefore(u"</i>", u"<a", text, {u"<new/>"_s});
        QCOMPARE(change ? changedText(text, {*change}) : QString(), after);
    }

    // Of every kind, on the example theme and on a theme that has next to nothing.
    void newWindows()
    {
        MadeTheme example;
        example.openExample();
        const QStringList before = example.problems();
        MadeTheme bare;
        bare.files.write(u"theme/theme.xml"_s, "<config><file_widget>w/widget.xml</file_widget></config>");
        bare.files.write(u"theme/w/widget.xml"_s,
                         "<interface><width>720</width><height>576</height></interface>");
        bare.open();
        for (const auto kind :
             {WindowTemplate::Empty, WindowTemplate::List, WindowTemplate::MessageBox, WindowTemplate::Bar}) {
            const QString name = u"wnd_made_%1"_s.arg(int(kind));
            for (MadeTheme *made : {&example, &bare}) {
                const ThemeSources sources = made->sources();
                made->apply(newWindow(made->theme, sources, name,
                                      windowText(kind, name, lookOf(made->theme, sources))));
                made->theme.reload(made->theme.widgets.document.path());
                QCOMPARE(made->theme.widgets.LvWidget.sub(made->theme.widgets.LvWidget.count() - 1, 1), name);
            }
        }
        QStringList more = example.problems();
        more.removeIf([&before](const QString &problem) { return before.contains(problem); });
        QCOMPARE(more, QStringList());
        QCOMPARE(bare.problems(), QStringList());
        const QByteArray list = example.files.read(u"theme/widget/wnd_made_1.xml"_s);
        for (const char *taken : {"<img>bg_aurora</img>", "[white,white,white]", "<font>font_prog</font>"})
            QVERIFY2(list.contains(taken), taken);
    }

    void takenBackAndRefused()
    {
        MadeTheme made;
        made.openExample();
        const auto before = bytesBelow(made.folder());
        const ThemeEdit edit = newWindow(made.theme, made.sources(), u"wnd_x"_s, u"<interface/>\n"_s);
        const ThemeEdit inverse = made.apply(edit);
        QCOMPARE(made.files.read(u"theme/widget/wnd_x.xml"_s), "<interface/>\n");
        made.apply(inverse);
        QCOMPARE(bytesBelow(made.folder()), before);
        // A file that came meanwhile, in other letters, is left alone, and nothing else is written.
        made.files.write(u"theme/widget/WND_X.xml"_s, "mine");
        const auto now = bytesBelow(made.folder());
        QVERIFY_EXCEPTION_THROWN(made.apply(edit), RunTimeError);
        QCOMPARE(bytesBelow(made.folder()), now);
        // So is what was written into the new window before it is taken back.
        const ThemeEdit other = made.apply(newWindow(made.theme, made.sources(), u"wnd_y"_s, u"<a/>"_s));
        made.files.write(u"theme/widget/wnd_y.xml"_s, "<more/>");
        const auto then = bytesBelow(made.folder());
        QVERIFY_EXCEPTION_THROWN(made.apply(other), RunTimeError);
        QCOMPARE(bytesBelow(made.folder()), then);
    }

    // The catalogue changes under the edit: the document that was made by then goes again.
    void allOrNone()
    {
        MadeTheme made;
        made.openExample();
        const ThemeEdit edit = newWindow(made.theme, made.sources(), u"wnd_x"_s, u"<interface/>\n"_s);
        QFile(made.folder() + u"/widget/widget.xml"_s).remove();
        QVERIFY_EXCEPTION_THROWN(made.apply(edit), RunTimeError);
        QVERIFY(!QFileInfo::exists(made.folder() + u"/widget/wnd_x.xml"_s));
    }

    void windowNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("why"); // a part of the sentence
        QTest::newRow("free") << u"wnd_fresh"_s << QString();
        QTest::newRow("empty") << u" "_s << u"empty"_s;
        QTest::newRow("quote") << u"a\"b"_s << u"quote"_s;
        QTest::newRow("taken") << u"wnd_epg"_s << u"already"_s;
        QTest::newRow("other letters") << u"WND_EPG"_s << u"already"_s;
        QTest::newRow("file without a window") << u"wnd_Sleep_draft"_s << u"already"_s;
        QTest::newRow("window without a file") << u"wnd_network_setup"_s << u"already"_s;
        QTest::newRow("the catalogue") << u"Widget"_s << u"already"_s;
        QTest::newRow("folder") << u"a/b"_s << u"file"_s;
        QTest::newRow("device") << u"Con"_s << u"file"_s;
        QTest::newRow("device with an ending") << u"lpt1.new"_s << u"file"_s;
        QTest::newRow("not quite a device") << u"com0"_s << QString();
        QTest::newRow("long") << QString(252, u'a') << u"file"_s;
        QTest::newRow("letters beyond one byte") << u"окно"_s << QString();
    }
    void windowNames()
    {
        QFETCH(QString, name);
        QFETCH(QString, why);
        const QString said = WindowNames(m_example->theme).whyNot(name);
        QVERIFY2(why.isEmpty() ? said.isEmpty() : said.contains(why), qPrintable(said));
    }

    void newLanguages_data()
    {
        QTest::addColumn<int>("model"); // -1 for the texts of the windows
        QTest::newRow("windows") << -1;
        QTest::newRow("model") << 2;
    }
    // It lacks translations and nothing else; taken back, everything is as it was.
    void newLanguages()
    {
        QFETCH(int, model);
        MadeTheme made;
        made.openExample();
        const auto files = bytesBelow(made.folder());
        const QStringList before = made.problems();
        const ThemeSources sources = made.sources();
        const QStringList texts = model < 0 ? textsOfWindows(*ThemeIndex::build(sources))
                                            : sourcesOf(sources, made.theme.lvLang.text(model));
        QVERIFY(texts.size() > 90 && texts.contains(u"Guide"_s));
        int leftOut = 0;
        const ThemeEdit inverse =
            made.apply(newLanguage(made.theme, sources, {u"Česky"_s, u"čeština"_s, u"cs.xml"_s},
                                   texts + QStringList{u"a\"b"_s, u"a>b"_s}, leftOut));
        QCOMPARE(leftOut, 2);
        made.theme.reload(made.theme.languageList.path());
        const int last = made.theme.lvLang.count() - 1;
        QCOMPARE(made.theme.lvLang.sub(last, 1), u"Česky"_s);
        QVERIFY(made.theme.language.open(made.door, made.theme.lvLang.text(last), made.folder(), {}));
        QStringList sourcesMade, translations;
        for (const ListRows::Row &row : made.theme.LvBhs.rows()) {
            sourcesMade.append(row.sub(1));
            translations.append(row.sub(2));
        }
        QCOMPARE(sourcesMade, texts);
        QCOMPARE(translations.join(QString()), QString());
        QStringList more = made.problems();
        more.removeIf([&](const QString &line) {
            return before.contains(line) || line.contains(u" untranslated ") ||
                   line.contains(u" unused-string ");
        });
        QCOMPARE(more, QStringList());
        made.apply(inverse);
        QCOMPARE(bytesBelow(made.folder()), files);
    }

    void conversions_data()
    {
        QTest::addColumn<QByteArray>("catalogue");
        QTest::addColumn<QByteArray>("window");
        QTest::addColumn<QString>("made"); // the window's text and what is told of; or a part of the reason
        const QByteArray screen = "<interface><width> 1280 </width><height>720</height>",
                         window = "<widget class=\"window\" style=\"default\" name=\"w\"/>";
        const auto row = [](const char *name, const QByteArray &catalogue, const QByteArray &text,
                            const QString &made) { QTest::newRow(name) << catalogue << text << made; };
        row("shrinks", screen + window, "<rect>[0,0,640,360]</rect>",
            u"<rect>[0,0,320,180]</rect> missing 0 kept 0"_s);
        row("nothing to scale", screen + window, "<x/>", u"<x/> missing 0 kept 0"_s);
        row("listed twice", screen + window + window, "<rect>[8,8,8,8]</rect>",
            u"<rect>[4,4,4,4]</rect> missing 0 kept 0"_s);
        row("none such", screen + window + "<widget class=\"window\" style=\"default\" name=\"../gone\"/>",
            "<rect>x</rect>", u"<rect>x</rect> missing 1 kept 1"_s);
        row("no size", "<interface>" + window, "", u"how wide"_s);
        row("no number", "<width>wide</width><height>720</height>" + window, "", u"how wide"_s);
        row("no such screen", "<width>10000</width><height>2147483647</height>" + window, "",
            u"10000 x 2147483647"_s);
    }
    // The screen's size and the windows change together, or nothing does.
    void conversions()
    {
        QFETCH(QByteArray, catalogue);
        QFETCH(QByteArray, window);
        QFETCH(QString, made);
        MadeTheme theme;
        theme.files.write(u"theme/theme.xml"_s, "<config><file_widget>widget.xml</file_widget></config>");
        theme.files.write(u"theme/widget.xml"_s, catalogue);
        theme.files.write(u"theme/w.xml"_s, window);
        theme.open();
        const auto before = bytesBelow(theme.folder());
        const ThemeSources sources = theme.sources();
        const auto index = ThemeIndex::build(sources);
        const QString path = theme.theme.widgets.document.path();
        QString told;
        try {
            const ThemeConversion conversion = convertedTheme(sources, *index, path, {640, 360});
            told = u"%1 missing %2 kept %3"_s.arg(QString(), QString::number(conversion.missing),
                                                  QString::number(conversion.kept));
            const ThemeEdit inverse = theme.apply(conversion.edit);
            QCOMPARE(screenSize(sources, path), QSize(640, 360));
            told.prepend(QString::fromUtf8(theme.files.read(u"theme/w.xml"_s)));
            theme.apply(inverse);
        } catch (const RunTimeError &error) {
            told = error.message();
        }
        QVERIFY2(told.contains(made), qPrintable(told));
        QCOMPARE(bytesBelow(theme.folder()), before);
    }

    // What did not fit before is not counted, and what fits again neither.
    void noLongerFits()
    {
        MadeTheme made;
        made.files.write(u"theme/theme.xml"_s, "<config><file_widget>widget.xml</file_widget>"
                                               "<file_image>image.xml</file_image></config>");
        made.files.write(u"theme/widget.xml"_s, "<width>1280</width><height>720</height>"
                                                "<widget class=\"window\" style=\"default\" name=\"w\"/>");
        made.files.write(u"theme/image.xml"_s, "<image id=\"i\">i.png</image>");
        made.files.write(u"theme/i.png"_s,
                         QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x64\0\0\0\x64", 24));
        QByteArray text;
        for (const int width : {90, 110, 220, 110, 50})
            text += "<widget class=\"image\" name=\"b" + QByteArray::number(text.size()) +
                    "\"><property><rect>[1000,100," + QByteArray::number(width) +
                    ",220]</rect><img>i</img></property></widget>\n";
        made.files.write(u"theme/w.xml"_s, text);
        made.open();
        const ThemeSources sources = made.sources();
        const auto index = ThemeIndex::build(sources);
        PictureStore pictures(readPng);
        const ThemeFacts facts = checkTheme(sources, *index, pictures)->facts;
        const auto count = [&](const QSize &to) {
            return noLongerFitting(convertedTheme(sources, *index, made.theme.widgets.document.path(), to),
                                   *index, facts)
                .pictures;
        };
        QCOMPARE(count({640, 720}), 2);
        QCOMPARE(count({1280, 200}), 3);
        QCOMPARE(count({2560, 1440}), 0);
    }

    void languageNames_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("why");
        QTest::newRow("free") << u"Polish"_s << u"polish.xml"_s << QString();
        QTest::newRow("no ID") << QString() << u"x.xml"_s << u"ID"_s;
        QTest::newRow("ID taken") << u"GERMAN"_s << u"x.xml"_s << u"ID"_s;
        QTest::newRow("file taken") << u"Polish"_s << u"German.xml"_s << u"file of this name"_s;
        QTest::newRow("catalogue") << u"Polish"_s << u"i18n.xml"_s << u"file of this name"_s;
        QTest::newRow("ID ends its tag") << u"a>b"_s << u"x.xml"_s << u">"_s;
        QTest::newRow("blanks go") << u"a = b"_s << u"x.xml"_s << u"blank"_s;
        QTest::newRow("folder") << u"Polish"_s << u"../x.xml"_s << u"file"_s;
        QTest::newRow("device") << u"Polish"_s << u"nul.xml"_s << u"device"_s;
    }
    void languageNames()
    {
        QFETCH(QString, id);
        QFETCH(QString, file);
        QFETCH(QString, why);
        const QString said = LanguageNames(m_example->theme).whyNot({id, u"Name"_s, file});
        QVERIFY2(why.isEmpty() ? said.isEmpty() : said.contains(why), qPrintable(said));
    }

    void newThemes_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<bool>("hasFont");
        QTest::newRow("1280 x 720") << QSize(1280, 720) << false;
        QTest::newRow("1024 x 576 with a font") << QSize(1024, 576) << true;
    }
    // Every rule is content, a list of each kind is there, and saved languages name the font that it has.
    void newThemes()
    {
        QFETCH(QSize, screen);
        QFETCH(bool, hasFont);
        MadeTheme made;
        const QString font = hasFont ? made.files.write(u"My font.ttf"_s, "\0\1\0\0") : QString();
        QDir().mkpath(made.folder()); // one that is empty will do
        writeNewFolder(made.folder(), filesOf({u"R&D <1>"_s, screen, font}));
        QCOMPARE(made.problems(), QStringList());
        made.open();
        QCOMPARE(made.theme.problems().text(), QString());
        QCOMPARE(made.theme.widgets.width, QString::number(screen.width()));
        QCOMPARE(made.theme.widgets.LvWidget.count(), 3);
        QCOMPARE(made.theme.lvColor.count(), 3);
        QCOMPARE(made.theme.lvFont.count(), hasFont ? 1 : 0);
        QCOMPARE(made.theme.cbFont, hasFont ? QStringList{u"My font.ttf"_s} : QStringList());
        QCOMPARE(made.theme.lvLang.count(), 1);
        QCOMPARE(made.theme.lvKeyGroup.count(), 3);
        QVERIFY(made.theme.panel);
        QVERIFY(made.files.read(u"theme/theme.xml"_s).contains("<name>R&amp;D &lt;1&gt;</name>"));
        QCOMPARE(made.files.read(u"theme/i18n/english.xml"_s).contains("<font>font_prog</font>"), hasFont);
    }

    void foldersThatStay_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("something in it") << u"full"_s;
        QTest::newRow("hidden file in it") << u"hidden"_s;
        QTest::newRow("a file") << u"full/a.txt"_s;
        QTest::newRow("link to nothing") << u"link"_s;
        QTest::newRow("below a file") << u"full/a.txt/b/theme"_s;
        QTest::newRow("new, two deep") << u"new/deep/theme"_s; // what is written fails
    }
    void foldersThatStay()
    {
        QFETCH(QString, folder);
        const TestFiles files;
        files.write(u"full/a.txt"_s, "a");
        files.write(u"hidden/.b"_s, "b");
        QFile::link(files.path(u"nowhere"_s), files.path(u"link"_s));
        const auto before = bytesBelow(files.folder());
        const QStringList entries = QDir(files.folder()).entryList(QDir::AllEntries | QDir::System);
        const QList<NewFile> impossible = {{u"x"_s, "file"}, {u"x/y"_s, "in a file"}};
        QVERIFY_EXCEPTION_THROWN(writeNewFolder(files.path(folder), impossible), RunTimeError);
        QCOMPARE(bytesBelow(files.folder()), before);
        QCOMPARE(QDir(files.folder()).entryList(QDir::AllEntries | QDir::System), entries);
    }

    void namesAndPages()
    {
        MadeTheme made;
        made.files.write(u"theme/theme.xml"_s, "<config><file_widget>widget.xml</file_widget></config>");
        made.files.write(u"theme/widget.xml"_s, "<interface><!--\xE9--></interface>");
        made.open();
        QVERIFY(WindowNames(made.theme).whyNot(u"окно"_s).contains(u"Windows-1252"));
        QCOMPARE(WindowNames(made.theme).whyNot(u"\u00E9t\u00E9"_s), QString());
        QCOMPARE(WindowNames(made.theme).free(u"widget"_s), u"widget_2"_s);
        QCOMPARE(withWindowName(u"<widget name=\"a\"><widget name=\"a\"/></widget>"_s, u"a"_s, u"b"_s),
                 u"<widget name=\"b\"><widget name=\"a\"/></widget>"_s);
        QCOMPARE(withWindowName(u"<widget name=\"other\"/>"_s, u"a"_s, u"b"_s),
                 u"<widget name=\"other\"/>"_s);
    }
};

QTEST_GUILESS_MAIN(TestMaking)
#include "tst_making.moc"
