#include "TextTable.h"
#include "files/Files.h"
#include "files/LoadedFiles.h"
#include "files/Paths.h"
#include "files/TestFiles.h"
#include "theme/ThemeProject.h"

#include <QSignalSpy>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestThemeProject : public QObject
{
    Q_OBJECT

private:
    // All that is shown, "~" for the folder of the files.
    static QString shown(const ThemeProject &project, const TestFiles &files)
    {
        QStringList text = {project.folder(),        project.widgets.folder, project.images.folder(),
                            project.fontFile.path(), project.File1.path(),   project.cbFont.join(u' ')};
        for (const ListRows *rows : {&project.widgets.LvWidget, &project.images.rows, &project.lvFont}) {
            for (const ListRows::Row &row : rows->rows())
                text += row.text + u'|' + row.subItems.value(0) + u'|' + row.subItems.constLast();
        }
        return QDir::fromNativeSeparators(text.join(u'\n')).replace(files.folder(), u"~"_s);
    }

private slots:
    void entries_data()
    {
        textTable({"xml", "rows"}, // name=value
                  {{u"as written", u"<config>\n <a> b/c\\d </a></config>", u"a= b/c\\d ,="},
                   {u"outside does not count", u"<a>1</a><config><b>2</b></config><c>3</c>", u"b=2,="},
                   {u"config in capitals", u"<CONFIG><a>1</a></CONFIG>", u""},
                   {u"empty config", u"<config></config>", u""},
                   {u"config without an end", u"<config><a>1</a>", u"a=1,="}});
    }

    void entries()
    {
        QFETCH(QString, xml);
        const TestFiles files;
        Files disk;
        files.write(u"theme.xml"_s, xml.toLatin1());
        ThemeProject project(disk);
        project.LoadTheme(files.folder());
        QStringList rows;
        for (const ListRows::Row &row : project.lvTheme.rows())
            rows += row.text + u'=' + row.sub(1);
        QTEST(rows.join(u','), "rows");
    }

    // What is no file to read is left out and said, and the rest of the theme opens.
    void opensDespiteProblems()
    {
        const TestFiles files;
        Files disk;
        files.write(
            u"theme.xml"_s,
            "<config><file_color>a</file_color><file_image>b</file_image><file_font>c</file_font>"
            "<file_keymap>d</file_keymap><file_i18n>e</file_i18n><file_widget>w</file_widget></config>");
        for (const char *name : {"a", "b", "c", "d", "e", "default.xml"})
            QVERIFY(QFile::resize(files.write(QLatin1String(name)), qint64(100) << 30));
        files.write(u"w"_s, "<widget class=\"window\" name=\"menu\"/>");
        ThemeProject project(disk);
        QVERIFY(project.LoadTheme(files.folder()));
        QCOMPARE(project.widgets.LvWidget.count(), 1);
        const QStringList problems = project.problems().text().split(u'\n');
        QCOMPARE(problems.size(), 6);
        QCOMPARE(problems[0], u"Cannot read \"%1\": it is larger than 64 MB."_s.arg(
                                  QDir::toNativeSeparators(files.path(u"a"_s))));
        QCOMPARE(problems[5], u"More files cannot be read: 1."_s);
        // What can no longer be read when it is loaded again stays in its list.
        const QString windows = files.path(u"w"_s);
        QVERIFY(QFile::resize(windows, qint64(100) << 30));
        QVERIFY_EXCEPTION_THROWN(project.reload(project.widgets.document.path()), RunTimeError);
        QCOMPARE(project.widgets.LvWidget.count(), 1);
    }

    void opensThemes()
    {
        const TestFiles files, second, empty;
        Files disk;
        files.write(u"theme.xml"_s, "<file_font>outside.xml</file_font><config>"
                                    "<file_widget>Widgets/widget.xml</file_widget>"
                                    "<file_image>images\\image.xml</file_image>"
                                    "<file_font>fonts/font.xml</file_font></config>");
        // The theme was made where letters of a folder's name may be large or small.
        files.write(u"widgets/widget.xml"_s, "<widget class=\"window\" name=\"menu\"/>");
        files.write(u"images/image.xml"_s, "<image id=\"LOGO\">png/logo.png</image>");
        files.write(u"fonts/font.xml"_s, "<font><name>f</name></font>");
        for (const char *name : {"widgets/menu.xml", "images/png/logo.png", "fonts/a.ttf", "fonts/B.TTF",
                                 "fonts/c.ttf.bak", "fonts/.ttf"})
            files.write(QLatin1String(name));
        ThemeProject project(disk);
        const QSignalSpy loaded(&project, &ThemeProject::loaded);
        for (int time = 1; time <= 2; ++time) {
            project.LoadTheme(files.folder());
            QCOMPARE(loaded.count(), time);
            QCOMPARE(shown(project, files),
                     u"~\n~/Widgets/\n~/images/\n~/fonts/font.xml\n~/fonts/\n.ttf a.ttf\n"
                     "~/Widgets/menu.xml|menu|Y\n~/images/png/logo.png|LOGO|Y\n|f|normal"_s);
        }
        // What is still shown still belongs to the folder that was opened before.
        const QString before = shown(project, files);
        project.LoadTheme(empty.folder());
        QVERIFY(project.lvTheme.isEmpty());
        QCOMPARE(shown(project, files), before);
        // A kind that is not named stays; one that is named and not there is emptied.
        second.write(u"theme.xml"_s, "<config><file_font>none.xml</file_font><File_Widget>w.xml"
                                     "</File_Widget><file_image>image.xml</file_image></config>");
        second.write(u"image.xml"_s, "<image id=\"NEW\">new.png</image>");
        project.LoadTheme(second.folder());
        QCOMPARE(project.widgets.LvWidget.count(), 1);
        QVERIFY(project.lvFont.isEmpty() && project.cbFont.isEmpty());
        QCOMPARE(project.images.folder(), withOwnSeparators(second.folder()) + separator());
        QCOMPARE(project.images.rows.text(0), joinPath(project.images.folder(), u"new.png"));

        // Cancelled at whatever step, all is as it was, and what is known of the files on disk too.
        const QString now = shown(project, second);
        second.write(u"image.xml"_s, "<image id=\"NEWER\">newer.png</image>");
        const int loads = int(loaded.count());
        for (int steps = 0; loaded.count() == loads; ++steps) {
            int left = steps;
            const auto cancel = [&left](qsizetype, qsizetype) {
                if (left-- == 0)
                    throw Cancelled();
            };
            try {
                project.LoadTheme(second.folder(), cancel);
                QVERIFY(steps > 4);
            } catch (const Cancelled &) {
                QCOMPARE(shown(project, second), now);
                QVERIFY(disk.loaded().changedOutside(project.images.document.path()));
            }
        }
        QVERIFY(!disk.loaded().changedOutside(project.images.document.path()));
    }
};

QTEST_GUILESS_MAIN(TestThemeProject)
#include "tst_themeproject.moc"
