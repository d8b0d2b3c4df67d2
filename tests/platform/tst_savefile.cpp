#include "platform/RunTimeError.h"
#include "platform/TestFiles.h"
#include "platform/TextFile.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

#include <functional>
#include <memory>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#endif

using namespace quillmere;

namespace {

// The message of the RunTimeError, or nothing where all went well.
QString errorOf(const std::function<void()> &command)
{
    try {
        command();
    } catch (const RunTimeError &error) {
        return error.message();
    }
    return {};
}

} // namespace

// Root is stopped by no permission, so most failures are made of folders, pipes and limits.
class TestSaveFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void keepsBytes_data();
    void keepsBytes();
    void backsUp();
    void keepsPermissions();
    void followsLinks();
    void findsTheFileThatIsMeant();
    void fails_data();
    void fails();
    void failsOnAFullDisk();
    void letterThatDoesNotFit();
    void deletes();

private:
    QStringList backups() const;

    std::unique_ptr<TestFiles> m_files;
    std::unique_ptr<TestFiles> m_backup;
};

void TestSaveFile::init()
{
    m_files = std::make_unique<TestFiles>();
    m_backup = std::make_unique<TestFiles>();
    setBackupFolder(m_backup->folder());
}

void TestSaveFile::cleanup()
{
    setBackupFolder({});
    setCodePageRule(CodePageRule::Automatic);
}

QStringList TestSaveFile::backups() const
{
    QStringList found;
    QDirIterator it(m_backup->folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        found.append(it.next());
    found.sort();
    return found;
}

void TestSaveFile::keepsBytes_data()
{
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<QByteArray>("added");
    QTest::newRow("ascii") << QByteArray("a\r\n") << QByteArray("\xE9");
    QTest::newRow("one byte") << QByteArray("\xFF\x81\n") << QByteArray("\xE9");
    QTest::newRow("utf-8") << QByteArray("\xC3\xBC") << QByteArray("\xC3\xA9");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF") << QByteArray("\xC3\xA9");
    QTest::newRow("nul") << QByteArray("a\0\n", 3) << QByteArray("\xE9");
    QTest::newRow("empty") << QByteArray() << QByteArray("\xE9");
}

void TestSaveFile::keepsBytes()
{
    QFETCH(QByteArray, old);
    QFETCH(QByteArray, added);
    const QString path = m_files->write(QStringLiteral("a.xml"), old);
    SaveFile(path, LoadFile(path));
    QCOMPARE(m_files->read(QStringLiteral("a.xml")), old);
    SaveFile(path, LoadFile(path) + QChar(0xE9));
    QCOMPARE(m_files->read(QStringLiteral("a.xml")), old + added);
}

void TestSaveFile::backsUp()
{
    const QString path = m_files->write(QStringLiteral("a.xml"), "0");
    // Faster than the clock of the names: each copy has to get a name of its own.
    for (int i = 1; i <= 20; ++i)
        SaveFile(path, QString::number(i));
    const QStringList copies = backups();
    QCOMPARE(copies.size(), 20);
    for (int i = 0; i < 20; ++i) {
        QFile copy(copies.at(i));
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), QByteArray::number(i));
        QVERIFY(QRegularExpression(QStringLiteral("/a\\.xml\\.\\d{8}-\\d{6}-\\d{3}$"))
                    .match(copies.at(i))
                    .hasMatch());
    }
    QCOMPARE(m_files->read(QStringLiteral("a.xml")), QByteArray("20"));
    SaveFile(m_files->path(QStringLiteral("new.xml")), QStringLiteral("n"));
    QCOMPARE(backups().size(), 20);
    QCOMPARE(QDir(m_files->folder()).entryList(QDir::Files | QDir::Hidden).size(), 2);
    SaveFile(m_files->write(QStringLiteral("sub/a.xml"), "s"), QStringLiteral("x"));
    QVERIFY(QFileInfo(backups().constLast()).path() != QFileInfo(copies.at(0)).path());
}

void TestSaveFile::keepsPermissions()
{
    const QString path = m_files->write(QStringLiteral("a.xml"), "old");
    const auto mine = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    for (const auto permissions : {mine, mine | QFile::ExeOwner | QFile::ExeUser | QFile::ReadGroup}) {
        QVERIFY(QFile::setPermissions(path, permissions));
        const auto before = QFile::permissions(path);
        SaveFile(path, QStringLiteral("new"));
        QCOMPARE(QFile::permissions(path), before);
    }
}

void TestSaveFile::followsLinks()
{
    const QString target = m_files->write(QStringLiteral("real/a.xml"), "\xC3\xA9");
    const QString link = m_files->path(QStringLiteral("link.xml"));
    QVERIFY(QFile::link(target, link));
    SaveFile(link, QStringLiteral("\u00FC"));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(m_files->read(QStringLiteral("real/a.xml")), QByteArray("\xC3\xBC"));
    QCOMPARE(backups().size(), 1);

    QVERIFY(QFile::remove(target));
    SaveFile(link, QStringLiteral("again"));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(m_files->read(QStringLiteral("real/a.xml")), QByteArray("again"));
}

void TestSaveFile::findsTheFileThatIsMeant()
{
    m_files->write(QStringLiteral("Sub/A.xml"), "old");
    SaveFile(m_files->folder() + QStringLiteral("\\sub\\a.xml"), QStringLiteral("new"));
    QCOMPARE(m_files->read(QStringLiteral("Sub/A.xml")), QByteArray("new"));
    SaveFile(m_files->folder() + QStringLiteral("\\sub\\b.xml"), QStringLiteral("second"));
    QCOMPARE(m_files->read(QStringLiteral("Sub/b.xml")), QByteArray("second"));
    QCOMPARE(QDir(m_files->folder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

void TestSaveFile::fails_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("step");
    QTest::addColumn<bool>("asRoot");
    QTest::newRow("folder is gone") << "gone/a.xml"
                                    << "open" << true;
    QTest::newRow("target is a folder") << "folder"
                                        << "open" << true;
    QTest::newRow("folder is a file") << "a.xml/b.xml"
                                      << "open" << true;
    QTest::newRow("target is a pipe") << "pipe"
                                      << "open" << true;
    QTest::newRow("no place for the backup") << "a.xml"
                                             << "back up" << true;
    QTest::newRow("no name") << ""
                             << "open" << true;
    QTest::newRow("read-only file") << "fixed.xml"
                                    << "open" << false;
    QTest::newRow("read-only folder") << "locked/a.xml"
                                      << "open" << false;
}

void TestSaveFile::fails()
{
    QFETCH(QString, path);
    QFETCH(QString, step);
    QFETCH(bool, asRoot);
    m_files->write(QStringLiteral("a.xml"), "old");
    m_files->write(QStringLiteral("folder/b.xml"), "b");
    QFile::setPermissions(m_files->write(QStringLiteral("fixed.xml"), "old"), QFile::ReadOwner);
    m_files->write(QStringLiteral("locked/a.xml"), "old");
    const QString locked = m_files->path(QStringLiteral("locked"));
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner);
    const auto unlock = qScopeGuard(
        [&] { QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); });
    if (!asRoot && QFileInfo(locked).isWritable())
        QSKIP("no permission stops this user");
#ifdef Q_OS_UNIX
    QCOMPARE(mkfifo(QFile::encodeName(m_files->path(QStringLiteral("pipe"))).constData(), 0600), 0);
#endif
    if (step == u"back up")
        setBackupFolder(m_backup->write(QStringLiteral("file")));
    const auto entries = [this] {
        return QDir(m_files->folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    };
    const QStringList before = entries();
    const QByteArray old = m_files->read(path);
    const QString target = path.isEmpty() ? path : m_files->path(path);
    const QString message = errorOf([&] { SaveFile(target, QStringLiteral("new")); });
    QVERIFY2(message.startsWith(QStringLiteral("Cannot %1 \"").arg(step)), qPrintable(message));
    QVERIFY2(message.contains(QFileInfo(path).fileName()), qPrintable(message));
    QCOMPARE(m_files->read(path), old);
    QCOMPARE(entries(), before);
}

void TestSaveFile::failsOnAFullDisk()
{
#ifdef Q_OS_UNIX
    const QString path = m_files->write(QStringLiteral("a.xml"), "old");
    // A limit on the size of a file fails in the middle of the writing, as a full disk does.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const QString message = errorOf([&] { SaveFile(path, QStringLiteral("new").repeated(100000)); });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    QVERIFY2(message.startsWith(QStringLiteral("Cannot write \"")), qPrintable(message));
    QCOMPARE(m_files->read(QStringLiteral("a.xml")), QByteArray("old"));
    QCOMPARE(QDir(m_files->folder()).entryList(QDir::Files | QDir::Hidden).size(), 1);
#endif
}

void TestSaveFile::letterThatDoesNotFit()
{
    const QString path = m_files->write(QStringLiteral("a.xml"), "old");
    setCodePageRule(CodePageRule::Windows1252);
    const QString message = errorOf([&] { SaveFile(path, QStringLiteral("a\n\u0416")); });
    QVERIFY2(message.contains(u"a.xml") && message.contains(u"line 2"), qPrintable(message));
    QCOMPARE(m_files->read(QStringLiteral("a.xml")), QByteArray("old"));
    QCOMPARE(backups(), QStringList());
}

void TestSaveFile::deletes()
{
    const QString path = m_files->write(QStringLiteral("a.xml"), "old");
    DeleteFile(path);
    QVERIFY(!QFileInfo::exists(path));
    QCOMPARE(backups().size(), 1);

    const QString other = m_files->write(QStringLiteral("B.xml"), "kept");
    if (!QFileInfo::exists(m_files->path(QStringLiteral("b.xml"))))
        QVERIFY(!errorOf([&] { DeleteFile(m_files->path(QStringLiteral("b.xml"))); }).isEmpty());
    QVERIFY(!errorOf([&] { DeleteFile(m_files->folder()); }).isEmpty());
    setBackupFolder(m_backup->write(QStringLiteral("file")));
    const QString message = errorOf([&] { DeleteFile(other); });
    QVERIFY2(message.startsWith(QStringLiteral("Cannot back up \"")), qPrintable(message));
    QCOMPARE(m_files->read(QStringLiteral("B.xml")), QByteArray("kept"));
}

QTEST_GUILESS_MAIN(TestSaveFile)
#include "tst_savefile.moc"
