#include "files/Files.h"
#include "files/RunTimeError.h"
#include "files/TestFiles.h"

#include <QDirIterator>
#include <QSet>
#include <QTest>

#include <memory>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestBackups : public QObject
{
    Q_OBJECT

private:
    QString theme() const { return m_files->path(u"theme"_s); }

    // A file of the theme's backup folder, which takes no room on the disk.
    QString put(const QString &name, int megabytes = 0) const
    {
        const QString path = m_files->write(u"backup"_s + theme() + u'/' + name);
        QFile::resize(path, megabytes * qint64(1'000'000));
        return path;
    }

    // What is there besides links.
    QSet<QString> names() const
    {
        const QString folder = m_files->path(u"backup"_s) + theme() + u'/';
        QSet<QString> names;
        QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
        while (it.hasNext())
            names.insert(it.next().sliced(folder.size()));
        return names;
    }

    std::unique_ptr<TestFiles> m_files;
    std::optional<Files> m_disk;

private slots:
    // Far from UTC, so that no time passes for another.
    void initTestCase() { qputenv("TZ", "AAA-14"); }

    void init()
    {
        m_files = std::make_unique<TestFiles>();
        m_disk.emplace();
        m_disk->backups().setFolder(m_files->path(u"backup"_s));
    }

    void keepsFiftyOfAFile()
    {
        QSet<QString> kept{u"b.xml.20190101-000000-000"_s,
                           u"a.xml.20190230-000000-000"_s,
                           u"a.xml.20190101-000000-00"_s,
                           u"a.xml.bak"_s,
                           u"20190101-000000-000"_s,
                           u"sub/.20190101-000000-000"_s,
                           u"a.xml.0000000001-20190230-000000-000Z"_s,
                           u"a.xml.000000001-20190101-000000-000Z"_s};
        for (const QString &name : std::as_const(kept))
            put(name);
        for (int i = 0; i < 60; ++i) {
            const QString name = u"a.xml.20200101-0000%1-000"_s.arg(i, 2, 10, QChar(u'0'));
            put(name);
            if (i > 10)
                kept.insert(name);
        }
        // What links lead to counts for nothing and is not listed.
        const QString outside = m_files->write(u"outside/a.xml.20180101-000000-000"_s);
        const QString last = u"a.xml.0000000001-20180101-000000-000Z"_s, newest = put(last);
        const QString folder = QFileInfo(newest).path();
        QVERIFY(QFile::link(outside, folder + u"/a.xml.20180101-000000-001"_s));
        QVERIFY(QFile::link(QFileInfo(outside).path(), folder + u"/link"_s));
        m_disk->backups().prune({newest});
        QCOMPARE(names(), kept += last);
        QVERIFY(QFile::exists(folder + u"/a.xml.20180101-000000-001"_s));
        QCOMPARE(m_disk->backups().versionsBelow(theme()).size(), 51);
        QVERIFY(QFile::link(QFileInfo(outside).path(), m_files->path(u"backup/theme"_s)));
        QCOMPARE(m_disk->backups().versionsBelow(u"/theme"_s).size(), 0);
    }

    void keepsTheBytesOfATheme()
    {
        const QString a = u"a.xml.20200101-000000-000"_s, b = u"sub/b.xml.20190101-000000-000"_s,
                      old = u"a.xml.20180101-000000-000"_s, d = u"d.xml.0000000001-20160101-000000-000Z"_s,
                      e = u"e.xml.0000000002-20150101-000000-000Z"_s, // the clock was set back
            f = u"f.xml.0000000003-20140101-000000-000Z"_s,
                      other = u"sub/theme/c.xml.20170101-000000-000"_s; // of a theme of its own
        put(a, 90), put(b, 90), put(old), put(other, 199);
        m_disk->backups().prune({put(d, 20)});
        QCOMPARE(names(), QSet<QString>({a, b, old, other, d}));
        m_disk->backups().prune({put(e, 1)});
        QCOMPARE(names(), QSet<QString>({a, other, d, e}));
        m_disk->backups().prune({put(f, 201)});
        QCOMPARE(names(), QSet<QString>({other, f}));
    }

    void restores_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << u"sub/a.xml"_s;
        QTest::newRow("letters of two bytes") << u"sub/"_s + QString(115, QChar(0xFC)) + u".xml"_s;
        // The longest that has its copies beside those of others, and the longest there is.
        for (const int length : {100, 101, 249, 255})
            QTest::addRow("%d bytes", length) << u"sub/"_s + QString(length, u'n');
    }

    void restores()
    {
        QFETCH(QString, name);
        const QByteArray first("\xFF\0\r\n\xC3\xBC", 6);
        const QString path = m_files->write(u"theme/"_s + name, first);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const auto permissions = QFile::permissions(path);
        const auto restoreNewest = [&](int versions) {
            const QList<Version> found = m_disk->backups().versionsBelow(theme());
            QCOMPARE(found.size(), versions);
            QCOMPARE(found[0].path, path);
            QCOMPARE(found[0].name, name);
            QCOMPARE(found[0].size, 6);
            QVERIFY(qAbs(found[0].time().secsTo(QDateTime::currentDateTime())) < 60);
            m_disk->restore(path, found[0].copy, theme());
            QCOMPARE(LoadBytes(path), first);
            QCOMPARE(QFile::permissions(path), permissions);
        };
        m_disk->saveOwn(path, u"second\n"_s);
        restoreNewest(1);
        QCOMPARE(LoadFile(m_disk->backups().versionsBelow(theme())[0].copy), u"second\n"_s);
        m_disk->remove(path, theme());
        QVERIFY(QDir().rmdir(QFileInfo(path).path()));
        restoreNewest(3);
    }

    void numbersOnlyGrow()
    {
        put(u"a.xml.20990101-000000-000"_s);
        put(u"b.xml.0000000041-20990101-000000-000Z"_s);
        const QString path = m_files->write(u"theme/a.xml"_s, "0");
        const auto save = [&](int number) {
            m_disk->saveOwn(path, QString::number(number));
            return m_disk->backups().versionsBelow(theme())[0].copy.section(u"a.xml."_s, -1).left(11);
        };
        for (int i = 1; i <= 3; ++i)
            QCOMPARE(save(i), u"000000004%1-"_s.arg(i + 1));
        QString contents;
        for (const Version &version : m_disk->backups().versionsBelow(theme()))
            contents += version.name.left(1) + LoadFile(version.copy) + u' ';
        QCOMPARE(contents, u"a2 a1 a0 b a "_s);
        // Without the kept number, with a damaged one, and without the copy that had the last one.
        QVERIFY(QFile::remove(m_files->path(u"backup/.last-number"_s)));
        QCOMPARE(save(4), u"0000000045-"_s);
        m_files->write(u"backup/.last-number"_s, "7");
        QCOMPARE(save(5), u"0000000046-"_s);
        QVERIFY(QFile::remove(m_disk->backups().versionsBelow(theme())[0].copy));
        QCOMPARE(save(6), u"0000000047-"_s);
    }

    // A long name once had its copies elsewhere, and they count all the same.
    void keepsFiftyOfALongName()
    {
        const QString name(120, u'n');
        for (int i = 10; i < 60; ++i)
            put(name + u".20200101-0000%1-000"_s.arg(i));
        for (int i = 0; i < 3; ++i)
            m_disk->saveOwn(m_files->write(u"theme/"_s + name, "old"), u"new"_s);
        QCOMPARE(names().size(), 50);
        QVERIFY(!names().contains(name + u".20200101-000012-000"_s));
        QVERIFY(names().contains(name + u".20200101-000013-000"_s));
    }

    void restoresTheOldest()
    {
        const QString path = m_files->write(u"theme/a.xml"_s, "now");
        for (int i = 0; i < 300; ++i)
            put(u"a.xml.20200101-000000-%1"_s.arg(i, 3, 10, QChar(u'0')), i == 0);
        const auto cancel = [](qsizetype, qsizetype) { throw Cancelled(); };
        QVERIFY_EXCEPTION_THROWN(m_disk->backups().versionsBelow(theme(), cancel), Cancelled);
        const QList<Version> versions = m_disk->backups().versionsBelow(theme());
        m_disk->restore(path, versions[299].copy, theme());
        QVERIFY(!QFile::exists(versions[299].copy));
        // What cannot be done leaves everything as it is.
        QVERIFY_EXCEPTION_THROWN(m_disk->restore(path, versions[299].copy, theme()), RunTimeError);
        QVERIFY_EXCEPTION_THROWN(m_disk->restore(theme(), versions[0].copy, theme()), RunTimeError);
        QVERIFY_EXCEPTION_THROWN(m_disk->restore(path + u"/b"_s, versions[0].copy, theme()), RunTimeError);
        QCOMPARE(QFileInfo(path).size(), 1'000'000);
        QCOMPARE(m_disk->backups().versionsBelow(theme()).size(), 50);
    }
};

QTEST_GUILESS_MAIN(TestBackups)
#include "tst_backups.moc"
