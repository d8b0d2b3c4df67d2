#include "Failure.h"
#include "files/Files.h"
#include "files/TestFiles.h"

#include <QDirIterator>
#include <QTest>

#include <memory>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace quillmere;
using namespace Qt::StringLiterals;

// Root is stopped by no permission, so most failures are made of folders, pipes and limits.
class TestSaveFile : public QObject
{
    Q_OBJECT

private:
    QStringList backups() const
    {
        QStringList found;
        QDirIterator it(m_backup->folder(), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            found.append(it.next());
        found.sort();
        return found;
    }

    QString entries() const
    {
        const auto all = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
        return QDir(m_files->folder()).entryList(all, QDir::Name | QDir::IgnoreCase).join(u' ');
    }

    // The command fails in the step, says so, and leaves the file and what is around it as it was.
    template <typename Command>
    void refuses(const char *step, const QString &name, Command command) const
    {
        const QString before = entries();
        const QByteArray old = m_files->read(name);
        const QString message = failureOf([&] { command(name.isEmpty() ? name : m_files->path(name)); });
        const QString start = u"Cannot %1 \""_s.arg(QLatin1String(step));
        QVERIFY2(message.startsWith(start) && message.contains(QFileInfo(name).fileName()),
                 qPrintable(message));
        QCOMPARE(m_files->read(name), old);
        QCOMPARE(entries(), before);
    }

    std::unique_ptr<TestFiles> m_files, m_backup;
    std::optional<Files> m_disk;
    QString m_path; // of a.xml, which holds "old"

private slots:
    void init()
    {
        m_files = std::make_unique<TestFiles>();
        m_backup = std::make_unique<TestFiles>();
        m_path = m_files->write(u"a.xml"_s, "old");
        m_disk.emplace();
        m_disk->backups().setFolder(m_backup->folder());
    }

    void keepsBytes()
    {
        for (const QByteArray &old : {QByteArray("a\r\n"), QByteArray("\xFF\x81\n"), QByteArray("\xC3\xBC"),
                                      QByteArray("\xEF\xBB\xBF"), QByteArray("a\0\n", 3), QByteArray()}) {
            m_files->write(u"a.xml"_s, old);
            m_disk->saveOwn(m_path, LoadFile(m_path));
            QCOMPARE(m_files->read(u"a.xml"_s), old);
            m_disk->saveOwn(m_path, LoadFile(m_path) + QChar(0xE9));
            QCOMPARE(m_files->read(u"a.xml"_s),
                     old + (old.contains('\xC3') || old.contains('\xEF') ? "\xC3\xA9" : "\xE9"));
        }
    }

    void backsUp()
    {
        for (int i = 1; i <= 20; ++i)
            m_disk->saveOwn(m_path, QString::number(i));
        const QStringList copies = backups();
        QCOMPARE(copies.size(), 20);
        for (int i = 0; i < 20; ++i) {
            QFile copy(copies.at(i));
            QVERIFY(copy.open(QIODevice::ReadOnly));
            QCOMPARE(copy.readAll(), i == 0 ? QByteArray("old") : QByteArray::number(i));
        }
        QCOMPARE(m_files->read(u"a.xml"_s), QByteArray("20"));
        m_disk->saveOwn(m_files->path(u"new.xml"_s), u"n"_s);
        QCOMPARE(backups().size(), 20);
        QCOMPARE(entries(), u"a.xml new.xml"_s);
        m_disk->saveOwn(m_files->write(u"sub/a.xml"_s, "s"), u"x"_s);
        QVERIFY(QFileInfo(backups().constLast()).path() != QFileInfo(copies.at(0)).path());
    }

    void followsLinksAndKeepsPermissions()
    {
        const QString link = m_files->path(QString(200, u'l'));
        QVERIFY(QFile::link(m_path, link));
        for (const auto permission : {QFile::ExeUser, QFile::ReadGroup, QFile::ReadUser}) {
            QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | permission));
            const auto kept = QFile::permissions(m_path);
            m_disk->saveOwn(link, u"new"_s);
            QVERIFY(QFileInfo(link).isSymLink());
            QCOMPARE(m_files->read(u"a.xml"_s), QByteArray("new"));
            QCOMPARE(QFile::permissions(m_path), kept);
        }
        QCOMPARE(backups().size(), 3);
        QVERIFY(QFile::remove(m_path));
        m_disk->saveOwn(link, u"again"_s);
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(m_files->read(u"a.xml"_s), QByteArray("again"));
    }

    void findsTheFileThatIsMeant()
    {
        m_files->write(u"Sub/A.xml"_s, "old");
        m_disk->saveOwn(m_files->folder() + u"\\sub\\a.xml"_s, u"new"_s);
        QCOMPARE(m_files->read(u"Sub/A.xml"_s), QByteArray("new"));
        m_disk->saveOwn(m_files->folder() + u"\\sub\\b.xml"_s, u"second"_s);
        QCOMPARE(m_files->read(u"Sub/b.xml"_s), QByteArray("second"));
        QCOMPARE(entries(), u"a.xml Sub"_s);
    }

    void refusesToSave()
    {
        const auto remove = [this](const QString &path) { m_disk->remove(path, m_files->folder()); };
        const auto save = [this](const QString &path) { m_disk->saveOwn(path, u"new"_s); };
        m_files->write(u"folder/b.xml"_s, "b");
#ifdef Q_OS_UNIX
        QCOMPARE(mkfifo(QFile::encodeName(m_files->path(u"pipe"_s)).constData(), 0600), 0);
#endif
        for (const char *name : {"gone/a.xml", "folder", "a.xml/b.xml", "pipe", ""})
            refuses("open", QLatin1String(name), save);
        // A letter that does not fit, and no place for the copy of the old file.
        refuses("write", u"a.xml"_s, [this](const QString &path) {
            m_disk->saveOwn(path, u"\u0416"_s, Encoding{CodePage::Ascii, CodePageRule::Windows1252});
        });
        QCOMPARE(backups(), QStringList());
        m_disk->backups().setFolder(m_backup->write(u"file"_s));
        refuses("back up", u"a.xml"_s, save);
        refuses("back up", u"a.xml"_s, remove);
        m_disk->backups().setFolder(m_backup->folder());

        const QString folder = m_files->path(u"folder"_s);
        QFile::setPermissions(m_path, QFile::ReadOwner);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
        if (!QFileInfo(folder).isWritable()) {
            refuses("open", u"a.xml"_s, save);
            refuses("open", u"folder/b.xml"_s, save);
        }
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void deletes()
    {
        const auto remove = [this](const QString &path) { m_disk->remove(path, m_files->folder()); };
        refuses("back up", u"A.XML"_s, remove);
        refuses("delete", {}, remove);
        QCOMPARE(backups(), QStringList());
        remove(m_path);
        QCOMPARE(entries(), QString());
        QCOMPARE(backups().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestSaveFile)
#include "tst_savefile.moc"
