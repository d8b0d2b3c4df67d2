#include "app/ThemeProject.h"
#include "platform/Paths.h"
#include "platform/TestFiles.h"

#include <QSignalSpy>
#include <QTest>

using namespace quillmere;

namespace {

const QByteArray smallTheme = "<theme>\r\n<file_font>outside.xml</file_font>\r\n<config>\r\n"
                              "<file_widget>Widgets/widget.xml</file_widget>\r\n"
                              "<file_image>images\\image.xml</file_image>\r\n"
                              "<file_font>fonts/font.xml</file_font>\r\n"
                              "<file_sound>sound.xml</file_sound>\r\n"
                              "</config>\r\n</theme>";

void writeSmallTheme(const TestFiles &files)
{
    files.write(QStringLiteral("theme.xml"), smallTheme);
    files.write(QStringLiteral("widgets/widget.xml"), "<widget class=\"window\" name=\"menu\"/>");
    files.write(QStringLiteral("widgets/menu.xml"));
    files.write(QStringLiteral("images/image.xml"), "<image id=\"LOGO\">png/logo.png</image>");
    files.write(QStringLiteral("images/png/logo.png"));
    files.write(QStringLiteral("fonts/font.xml"), "<font><name>f</name></font>");
    for (const char *name : {"a.ttf", "B.TTF", "c.ttf.bak", "d.ttf", ".ttf"})
        files.write(QStringLiteral("fonts/") + QLatin1String(name));
}

} // namespace

class TestThemeProject : public QObject
{
    Q_OBJECT

private slots:
    void entries_data();
    void entries();
    void opensATheme();
    void anUnnamedKindStays();
    void withoutThemeFile();
    void catalogueBesideTheThemeFile();
};

void TestThemeProject::entries_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("rows"); // name=value
    const auto row = [](const char *name, const QByteArray &xml, const char *rows) {
        QTest::newRow(name) << xml << QString::fromLatin1(rows);
    };
    row("as written", "<config><file_image>a/b\\c.xml</file_image></config>", "file_image=a/b\\c.xml,=");
    row("outside does not count", "<a>1</a><config><b>2</b></config><c>3</c>", "b=2,=");
    row("no config", "<a>1</a>", "");
    row("config in capitals", "<CONFIG><a>1</a></CONFIG>", "");
    row("empty config", "<config></config>", "");
    row("config without an end", "<config><a>1</a>", "a=1,=");
    row("blanks stay", "<config>\n <a> 1 </a>\n</config>", "a= 1 ,=");
}

void TestThemeProject::entries()
{
    QFETCH(QByteArray, xml);
    const TestFiles files;
    files.write(QStringLiteral("theme.xml"), xml);
    ThemeProject project;
    project.LoadTheme(files.folder());
    QStringList rows;
    for (const ListRows::Row &row : project.lvTheme.rows())
        rows += row.text + u'=' + row.sub(1);
    QTEST(rows.join(u','), "rows");
}

void TestThemeProject::opensATheme()
{
    const TestFiles files;
    writeSmallTheme(files);
    ThemeProject project;
    const QSignalSpy loaded(&project, &ThemeProject::loaded);
    project.LoadTheme(files.folder());
    QCOMPARE(loaded.count(), 1);
    QCOMPARE(project.folder(), files.folder());
    QCOMPARE(project.lvTheme.count(), 5);
    // The theme was made where letters of a folder's name may be large or small.
    QCOMPARE(project.widgets.folder, withOwnSeparators(files.path(QStringLiteral("Widgets/"))));
    QCOMPARE(project.widgets.LvWidget.sub(0, 3), QStringLiteral("Y"));
    QCOMPARE(project.lbImagePath, withOwnSeparators(files.path(QStringLiteral("images/"))));
    QCOMPARE(project.images.GetImg(QStringLiteral("LOGO")),
             withOwnSeparators(files.path(QStringLiteral("images/png/logo.png"))));
    QCOMPARE(project.images.rows.sub(0, 2), QStringLiteral("Y"));
    QCOMPARE(project.lvFont.sub(0, 1), QStringLiteral("f"));
    QCOMPARE(project.txtFont, withOwnSeparators(files.path(QStringLiteral("fonts/font.xml"))));
    QCOMPARE(project.cbFont.join(u' '), QStringLiteral(".ttf a.ttf d.ttf"));
    QCOMPARE(project.File1.path(), withOwnSeparators(files.path(QStringLiteral("fonts/"))));

    project.LoadTheme(files.folder());
    QCOMPARE(project.cbFont.size(), 3);
    QCOMPARE(project.lvFont.count(), 1);
}

void TestThemeProject::anUnnamedKindStays()
{
    const TestFiles first;
    writeSmallTheme(first);
    const TestFiles second;
    second.write(QStringLiteral("theme.xml"),
                 "<config><file_font>none.xml</file_font><File_Image>image.xml</File_Image></config>");
    second.write(QStringLiteral("image.xml"), "<image id=\"NEW\">new.png</image>");
    ThemeProject project;
    project.LoadTheme(first.folder());
    project.LoadTheme(second.folder());
    QVERIFY(!project.images.GetImg(QStringLiteral("LOGO")).isEmpty());
    QCOMPARE(project.widgets.LvWidget.count(), 1);
    // Named, and not there: empty.
    QVERIFY(project.lvFont.isEmpty());
    QVERIFY(project.cbFont.isEmpty());
}

void TestThemeProject::withoutThemeFile()
{
    const TestFiles files;
    writeSmallTheme(files);
    const TestFiles empty;
    ThemeProject project;
    project.LoadTheme(files.folder());
    project.LoadTheme(empty.folder());
    QVERIFY(project.lvTheme.isEmpty());
    // What is still shown still belongs to the folder that was opened before.
    QCOMPARE(project.folder(), files.folder());
    QCOMPARE(project.images.rows.count(), 1);
    QCOMPARE(project.cbFont.size(), 3);
}

void TestThemeProject::catalogueBesideTheThemeFile()
{
    const TestFiles files;
    files.write(QStringLiteral("theme.xml"), "<config><file_image>image.xml</file_image></config>");
    files.write(QStringLiteral("image.xml"), "<image id=\"A\">a.png</image>");
    ThemeProject project;
    project.LoadTheme(files.folder());
    QCOMPARE(project.lbImagePath, withOwnSeparators(files.folder()) + separator());
    QCOMPARE(project.images.rows.text(0), joinPath(withOwnSeparators(files.folder()), u"a.png"));
}

QTEST_GUILESS_MAIN(TestThemeProject)
#include "tst_themeproject.moc"
