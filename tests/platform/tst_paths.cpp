#include "platform/FileList.h"
#include "platform/Paths.h"
#include "platform/TestFiles.h"

#include <QAbstractItemModelTester>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace quillmere;

class TestPaths : public QObject
{
    Q_OBJECT

private slots:
    void join_data();
    void join();
    void themeFolder_data();
    void themeFolder();
    void find_data();
    void find();
    void findPrefersTheExactName();
    void findGivesRegularFilesOnly();
    void below();
    void lists();
    void listsAreFresh();
};

void TestPaths::join_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "/a/b"
                           << "c"
                           << "/a/b/c";
    QTest::newRow("separator on both sides") << "/a/b//"
                                             << "/c"
                                             << "/a/b/c";
    QTest::newRow("root") << "/"
                          << "c"
                          << "/c";
    QTest::newRow("no folder") << ""
                               << "c"
                               << "c";
    QTest::newRow("no name") << "/a"
                             << ""
                             << "/a/";
}

void TestPaths::join()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QFETCH(QString, path);
    QCOMPARE(joinPath(withOwnSeparators(folder), withOwnSeparators(name)), withOwnSeparators(path));
}

void TestPaths::themeFolder_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("is");
    QTest::newRow("theme") << "/a/theme" << true;
    QTest::newRow("capital") << "/a/Theme" << false;
    QTest::newRow("end of a longer name") << "/a/mytheme" << false;
    QTest::newRow("earlier in the path") << "/theme/a" << false;
    QTest::newRow("separator behind") << "/a/theme/" << false;
    QTest::newRow("name alone") << "theme" << false;
}

void TestPaths::themeFolder()
{
    QFETCH(QString, path);
    QTEST(isThemeFolder(withOwnSeparators(path)), "is");
}

void TestPaths::find_data()
{
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("found");
    QTest::newRow("exact") << "Images/Logo.PNG"
                           << "Images/Logo.PNG";
    QTest::newRow("foreign separators") << "Images\\Logo.PNG"
                                        << "Images/Logo.PNG";
    QTest::newRow("file in other case") << "Images/logo.png"
                                        << "Images/Logo.PNG";
    QTest::newRow("folder in other case") << "IMAGES\\sub/..\\LOGO.png"
                                          << "Images/Sub/../Logo.PNG";
    QTest::newRow("dot file") << "images/.HIDDEN"
                              << "Images/.hidden";
    QTest::newRow("several separators") << "images//sub///a.xml"
                                        << "Images/Sub/a.xml";
    QTest::newRow("missing") << "Images/none.png"
                             << "";
    QTest::newRow("missing folder") << "none/Logo.PNG"
                                    << "";
    QTest::newRow("folder is no file") << "images/sub"
                                       << "";
    QTest::newRow("file is no folder") << "Images/Logo.PNG/a"
                                       << "";
    QTest::newRow("separator at the end") << "Images/Logo.PNG/"
                                          << "";
    QTest::newRow("nul") << QStringLiteral("Images/Logo.PNG") + QChar(QChar::Null) << "";
    QTest::newRow("endless") << QStringLiteral("a/").repeated(50000) << "";
}

void TestPaths::find()
{
    const TestFiles files;
    files.write(QStringLiteral("Images/Logo.PNG"));
    files.write(QStringLiteral("Images/.hidden"));
    files.write(QStringLiteral("Images/Sub/a.xml"));
    QFETCH(QString, asked);
    QFETCH(QString, found);
    const QString expected = found.isEmpty() ? QString() : files.path(found);
    const QString actual = findFile(files.folder() + u'/' + asked);
    QCOMPARE(actual, expected);
    // The same below the current folder, where no root helps.
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(files.folder()));
    const QString relative = findFile(asked);
    QDir::setCurrent(before);
    QCOMPARE(QDir::cleanPath(relative), QDir::cleanPath(found));
}

void TestPaths::findPrefersTheExactName()
{
    const TestFiles files;
    files.write(QStringLiteral("A.xml"));
    files.write(QStringLiteral("a.xml"));
    if (QDir(files.folder()).entryList(QDir::Files).size() < 2)
        QSKIP("this file system takes both names for one");
    QCOMPARE(findFile(files.path(QStringLiteral("a.xml"))), files.path(QStringLiteral("a.xml")));
    QCOMPARE(findFile(files.path(QStringLiteral("A.xml"))), files.path(QStringLiteral("A.xml")));
    FileNames names;
    QVERIFY(!names.contains(files.folder(), QStringLiteral("A.XML")));
}

void TestPaths::findGivesRegularFilesOnly()
{
#ifdef Q_OS_UNIX
    const TestFiles files;
    const QString pipe = files.path(QStringLiteral("pipe.xml"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(findFile(pipe), QString());
    QCOMPARE(findFile(QStringLiteral("/dev/zero")), QString());
    QCOMPARE(filesOf(files.folder()), QStringList());
#endif
}

void TestPaths::below()
{
    const TestFiles files;
    const QString inner = files.write(QStringLiteral("theme/images/a.png"));
    const QString beside = files.write(QStringLiteral("theme2/a.png"));
    const QString theme = files.path(QStringLiteral("theme"));
    QVERIFY(liesBelow(inner, theme));
    QVERIFY(liesBelow(inner, theme + u'/'));
    QVERIFY(liesBelow(inner, QStringLiteral("/")));
    QVERIFY(!liesBelow(beside, theme));
    QVERIFY(!liesBelow(theme, theme));
    QVERIFY(!liesBelow(theme + QStringLiteral("/../theme2/a.png"), theme));
    QVERIFY(!liesBelow(theme + QStringLiteral("/none.png"), theme));
    QVERIFY(!liesBelow(inner, files.path(QStringLiteral("none"))));
    const QString link = files.path(QStringLiteral("theme/link.png"));
    QVERIFY(QFile::link(beside, link));
    QVERIFY(!liesBelow(link, theme));
}

void TestPaths::lists()
{
    const TestFiles files;
    for (const char *name : {"b.xml", "A.xml", "C.xml", ".dot", "sub/inner.xml"})
        files.write(QLatin1String(name));
    const QStringList expected = {QStringLiteral(".dot"), QStringLiteral("A.xml"), QStringLiteral("b.xml"),
                                  QStringLiteral("C.xml")};
    QCOMPARE(filesOf(files.folder()), expected);
    QCOMPARE(filesOf(files.folder() + u'/'), expected);
    QCOMPARE(filesOf(files.path(QStringLiteral("none"))), QStringList());
    QCOMPARE(filesOf({}), QStringList());
    FileNames names;
    QVERIFY(names.contains(files.folder(), QStringLiteral("A.xml")));
    QVERIFY(!names.contains(files.folder(), QStringLiteral("a.xml")));
    QVERIFY(!names.contains(files.folder(), QStringLiteral("sub")));
    // The folder may be written in other letters, the file's name may not.
    QVERIFY(names.contains(files.path(QStringLiteral("SUB/")), QStringLiteral("inner.xml")));
}

void TestPaths::listsAreFresh()
{
    const TestFiles files;
    files.write(QStringLiteral("a.xml"));
    FileList list;
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(list.rowCount(), 0);
    list.setPath(files.folder());
    QCOMPARE(list.rowCount(), 1);
    files.write(QStringLiteral("b.xml"));
    QCOMPARE(list.rowCount(), 1);
    list.refresh();
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.index(1).data().toString(), QStringLiteral("b.xml"));
}

QTEST_GUILESS_MAIN(TestPaths)
#include "tst_paths.moc"
