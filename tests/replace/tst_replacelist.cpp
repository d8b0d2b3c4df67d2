#include "files/ProgramFolder.h"
#include "files/ShippedFiles.h"
#include "files/TestFiles.h"
#include "replace/ReplaceList.h"

#include <QProcess>
#include <QTest>
#include <QTextStream>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestReplaceList : public QObject
{
    Q_OBJECT

private slots:
    void reads()
    {
        const struct
        {
            const char *file, *pairs;
        } cases[] = {
            {"[REPLACE]\r\nTotal = 2\r\nTextFind1=a\r\nReplace1=b\r\nTextFind2=c\r\nReplace2=", "a>b;c>;"},
            {"[replace]\n total\t=1 \n TEXTFIND1 = \t\" a \"\nreplace1='b\"", " a >'b\";"},
            {"Total=9\n[a]\nTotal=8\n[ Replace ]x\nTotal=1\nTextFind1=[x=]\n[REPLACE]\nReplace1=n", "[x=]>;"},
            {"[REPLACE]\n;Total=3\nTotal=1\nTotal=2\nTextFind1=a=\"b\"\nTextFind1=c", "a=\"b\">;"},
            {"\xef\xbb\xbf[REPLACE]\nTotal=1\nReplace1=\"\"", ">;"},
            {"[REPLACE]\nTotal=2.9\nTextFind1=a\nRepl", "a>;>;"}, // cut in half
            {"[REPLACE]\nTotal=2x\nTextFind1=a", ""},
            {"[REPLACE]\nTotal=inf", ""},
            {"[REPLACE]\nTotal=-3", ""},
            {"[REPLA", ""},
            {"", ""}};
        for (const auto &one : cases) {
            QString pairs;
            for (const Replacement &pair : readReplaceList(QString::fromUtf8(one.file)))
                pairs += pair.from + u'>' + pair.to + u';';
            QCOMPARE(pairs, QLatin1String(one.pairs));
        }
        QCOMPARE(readReplaceList(u"[REPLACE]\nTotal=1e300"_s).size(), 100'000);
    }

    void writesWhatItReads()
    {
        const QString longText(10'000, u'x');
        const QString surrogates = QString(253, u'x') + u"\U0001F600"_s;
        const QString file = replaceListText({{u"[a]=\"b"_s, u" c "_s},
                                              {longText, u"one\r\ntwo\nthree\r[REPLACE]"_s},
                                              {surrogates, QString()}});
        QVERIFY(
            file.startsWith(u"[REPLACE]\r\nTotal = 3\r\nTextFind1=[a]=\"b\r\nReplace1= c \r\nTextFind2="));
        QVERIFY(file.contains(longText));
        const QList<Replacement> expected = {{u"[a]=\"b"_s, u"c"_s},
                                             {longText.first(254), u"one two three [REPLACE]"_s},
                                             {surrogates.first(253), QString()}};
        QVERIFY(readReplaceList(file) == expected);
    }

    void fillsTheProgramFolder()
    {
        const TestFiles files;
        files.write(u"from/a.txt"_s, "new");
        QFile(files.write(u"from/trans/a/b.txt"_s, "b")).setPermissions(QFile::ReadOwner);
        files.write(u"to/a.txt"_s, "mine");
        copyMissing(files.path(u"from"_s), files.path(u"to"_s), {u"a.txt"_s, u"trans"_s, u"missing"_s});
        QCOMPARE(files.read(u"to/a.txt"_s), "mine");
        QCOMPARE(files.read(u"to/trans/a/b.txt"_s), "b");
        QVERIFY(QFile(files.path(u"to/trans/a/b.txt"_s)).permissions() & QFile::WriteOwner);
        QVERIFY(!QFileInfo::exists(files.path(u"to/missing"_s)));
    }

    // This program is copied to where a package, or a person, would put it, and says what its folder is.
    void isTheProgramFolder_data()
    {
        QTest::addColumn<QStringList>("shipped"); // below the copy's bin/..
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("copied");
        const QString dictionary = u"share/quillmere/trans/German.txt"_s;
        QTest::newRow("of a package")
            << QStringList{dictionary} << u"data/Quillmere"_s << u"data/Quillmere/trans/German.txt"_s;
        QTest::newRow("beside the program")
            << QStringList{u"bin/trans/German.txt"_s} << u"bin"_s << QString();
        QTest::newRow("both") << QStringList{dictionary, u"bin/replace.ini"_s} << u"bin"_s << QString();
    }
    void isTheProgramFolder()
    {
        QFETCH(const QStringList, shipped);
        QFETCH(const QString, folder);
        QFETCH(const QString, copied);
        const TestFiles files;
        for (const QString &file : shipped)
            files.write(file, "text");
        QDir(files.folder()).mkpath(u"bin"_s);
        const QString copy = files.path(u"bin/copy"_s);
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copy));
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, files.path(u"data"_s));
        program.setProcessEnvironment(environment);
        program.start(copy, {u"--program-folder"_s});
        QVERIFY(program.waitForFinished());
        QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()), files.path(folder));
        QVERIFY(copied.isEmpty() || QFileInfo::exists(files.path(copied)));
    }

    void findsWhatIsShipped()
    {
        QVERIFY(packageFolder().isEmpty());
        QVERIFY(QFileInfo::exists(exampleFolder() + u"/theme/widget/widget.xml"));
        QVERIFY(QFileInfo::exists(guideFolder() + u"/pictures"));
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains(u"--program-folder"_s)) {
        QTextStream(stdout) << findProgramFolder();
        return 0;
    }
    TestReplaceList test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_replacelist.moc"
