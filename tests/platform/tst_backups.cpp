#include "platform/Backups.h"
#include "platform/RunTimeError.h"
#include "platform/TestFiles.h"
#include "platform/TextFile.h"

#include <QDirIterator>
#include <QTest>

#include <memory>

using namespace quillmere;

class TestBackups : public QObject
{
    Q_OBJECT

private:
    // A file of the backup folder of the theme, which takes no room on the disk.
    QString put(const QString &name, int megabytes = 0) const
    {
        const QString path =
            m_files->write(QString(u"backup" + m_files->path(QStringLiteral("theme/")) + name));
        QFile::resize(path, megabytes * qint64(1'000'000));
        return path;
    }

    // The names of the files there that are not among `expected`, and with a "-" those of `expected` that are
    // not there.
    QString otherThan(QStringList expected) const
    {
        const QString folder =
            m_files->path(QStringLiteral("backup")) + m_files->path(QStringLiteral("theme/"));
        QStringList others;
        QDirIterator it(folder, QDir::Files | QDir::Hidden,
                        QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
        while (it.hasNext()) {
            const QString name = it.next().sliced(folder.size());
            if (!expected.removeOne(name))
                others.append(name);
        }
        for (const QString &name : std::as_const(expected))
            others.append(QString(u'-' + name));
        others.sort();
        return others.join(u' ');
    }

    QString theme() const { return m_files->path(QStringLiteral("theme")); }

    std::unique_ptr<TestFiles> m_files;

private slots:
    void init()
    {
        m_files = std::make_unique<TestFiles>();
        setBackupFolder(m_files->path(QStringLiteral("backup")));
    }
    void cleanup() { setBackupFolder({}); }

    void keepsFiftyOfAFile()
    {
        QStringList kept{QStringLiteral("b.xml.20190101-000000-000")};
        for (const char *foreign : {"a.xml.20190230-000000-000", "a.xml.20190101-000000-00", "a.xml.bak",
                                    "20190101-000000-000", "sub/.20190101-000000-000"})
            kept.append(QLatin1String(foreign));
        for (const QString &name : std::as_const(kept))
            put(name);
        for (int i = 0; i < 60; ++i) {
            const QString name = QStringLiteral("a.xml.20200101-0000%1-000").arg(i, 2, 10, QChar(u'0'));
            put(name);
            if (i > 10)
                kept.append(name);
        }
        // What links lead to counts for nothing and is not listed.
        const QString outside = m_files->write(QStringLiteral("outside/a.xml.20180101-000000-000"));
        const QString folder = QFileInfo(put(QStringLiteral("a.xml.20200101-000100-000"))).path();
        kept.append(QStringLiteral("a.xml.20200101-000100-000"));
        QVERIFY(QFile::link(outside, QString(folder + u"/a.xml.20180101-000000-001")));
        QVERIFY(QFile::link(QFileInfo(outside).path(), QString(folder + u"/link")));
        kept +=
            {QStringLiteral("a.xml.20180101-000000-001"), QStringLiteral("link/a.xml.20180101-000000-000")};
        pruneBackups(QString(folder + u"/a.xml.20200101-000100-000"));
        QCOMPARE(otherThan(kept), QString());
        QCOMPARE(versionsBelow(theme()).size(), 51);
        QVERIFY(QFile::link(QFileInfo(outside).path(), m_files->path(QStringLiteral("backup/theme"))));
        QCOMPARE(versionsBelow(QStringLiteral("/theme")).size(), 0);
    }

    void keepsTheBytesOfATheme()
    {
        put(QStringLiteral("a.xml.20200101-000000-000"), 90);
        put(QStringLiteral("sub/b.xml.20190101-000000-000"), 90);
        put(QStringLiteral("a.xml.20180101-000000-000"));
        put(QStringLiteral("sub/theme/c.xml.20170101-000000-000"), 199); // of a theme of its own
        pruneBackups(put(QStringLiteral("d.xml.20200101-000000-000"), 20));
        QStringList kept{
            QStringLiteral("a.xml.20200101-000000-000"), QStringLiteral("a.xml.20180101-000000-000"),
            QStringLiteral("d.xml.20200101-000000-000"), QStringLiteral("sub/b.xml.20190101-000000-000"),
            QStringLiteral("sub/theme/c.xml.20170101-000000-000")};
        QCOMPARE(otherThan(kept), QString());
        pruneBackups(put(QStringLiteral("e.xml.20160101-000000-000"), 1)); // the clock was set back
        kept.append(QStringLiteral("e.xml.20160101-000000-000"));
        kept.removeAll(QStringLiteral("sub/b.xml.20190101-000000-000"));
        kept.removeAll(QStringLiteral("a.xml.20180101-000000-000"));
        QCOMPARE(otherThan(kept), QString());
        pruneBackups(put(QStringLiteral("f.xml.20150101-000000-000"), 201));
        QCOMPARE(otherThan({kept.at(2), QStringLiteral("f.xml.20150101-000000-000")}), QString());
    }

    void restores_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QStringLiteral("sub/a.xml");
        QTest::newRow("letters of two bytes") << QString(u"sub/" + QString(115, QChar(0xFC)) + u".xml");
        // One byte too long for the time behind it, and the longest that can be written beside itself.
        QTest::newRow("236 bytes") << QString(u"sub/" + QString(232, u'n') + u".xml");
        QTest::newRow("248 bytes") << QString(u"sub/" + QString(244, u'n') + u".xml");
    }

    void restores()
    {
        QFETCH(QString, name);
        const QByteArray first("\xFF\0\r\n\xC3\xBC", 6), second("second\n");
        const QString path = m_files->write(QString(u"theme/" + name), first);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const auto permissions = QFile::permissions(path);
        SaveFile(path, QStringLiteral("second\n"));
        QList<Version> versions = versionsBelow(theme());
        QCOMPARE(versions.size(), 1);
        QCOMPARE(versions[0].path, path);
        QCOMPARE(versions[0].name, name);
        QCOMPARE(versions[0].size, 6);
        QVERIFY(qAbs(versions[0].time().secsTo(QDateTime::currentDateTime())) < 60);

        RestoreFile(path, versions[0].copy);
        QCOMPARE(m_files->read(QString(u"theme/" + name)), first);
        QCOMPARE(QFile::permissions(path), permissions);
        versions = versionsBelow(theme());
        QCOMPARE(versions.size(), 2);
        QCOMPARE(*LoadBytes(versions[0].copy), second);

        DeleteFile(path);
        QVERIFY(QDir().rmdir(QFileInfo(path).path()));
        versions = versionsBelow(theme());
        QCOMPARE(versions.size(), 3);
        RestoreFile(path, versions[0].copy);
        QCOMPARE(m_files->read(QString(u"theme/" + name)), first);
        QCOMPARE(QFile::permissions(path), permissions);
        QCOMPARE(versionsBelow(theme()).size(), 3);
    }

    void restoresTheOldest()
    {
        const QString path = m_files->write(QStringLiteral("theme/a.xml"), "now");
        for (int i = 0; i < 300; ++i)
            put(QStringLiteral("a.xml.20200101-000000-%1").arg(i, 3, 10, QChar(u'0')), i == 0);
        QVERIFY_EXCEPTION_THROWN(versionsBelow(theme(), [](qsizetype, qsizetype) { throw Cancelled(); }),
                                 Cancelled);
        const QList<Version> versions = versionsBelow(theme());
        RestoreFile(path, versions.last().copy);
        QCOMPARE(QFileInfo(path).size(), 1'000'000);
        QCOMPARE(versionsBelow(theme()).size(), 50);
        // What cannot be done leaves everything as it is.
        for (const auto &[where, copy] :
             {std::pair(path, versions.last().copy), std::pair(theme(), versions[0].copy),
              std::pair(QString(path + u"/b.xml"), versions[0].copy)})
            QVERIFY_EXCEPTION_THROWN(RestoreFile(where, copy), RunTimeError);
        QCOMPARE(QFileInfo(path).size(), 1'000'000);
        QCOMPARE(versionsBelow(theme()).size(), 50);
    }
};

QTEST_GUILESS_MAIN(TestBackups)
#include "tst_backups.moc"
