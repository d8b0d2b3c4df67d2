#include "commands/PutFile.h"
#include "files/TestFiles.h"

#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestPutFile : public QObject
{
    Q_OBJECT

private slots:
    void ended_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("isIgnored");
        QTest::newRow("Ctrl+C") << SIGINT << false;
        QTest::newRow("kill") << SIGTERM << false;
        QTest::newRow("terminal closed") << SIGHUP << false;
        QTest::newRow("terminal closed, nohup") << SIGHUP << true;
    }

    // What is half written goes; what was put before stays.
    void ended()
    {
        QFETCH(const int, signal);
        QFETCH(const bool, isIgnored);
        const TestFiles files;
        const pid_t child = ::fork();
        if (child == 0) {
            ::signal(signal, isIgnored ? SIG_IGN : SIG_DFL);
            putFile("whole", files.path(u"done.png"_s));
            PutFile half(files.path(u"half.png"_s));
            half.file().write("half");
            ::raise(signal);
            half.put();
            ::_exit(0);
        }
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(WIFSIGNALED(status) ? WTERMSIG(status) : 0, isIgnored ? 0 : signal);
        QCOMPARE(QDir(files.folder()).entryList(QDir::Files | QDir::Hidden).join(u' '),
                 isIgnored ? u"done.png half.png"_s : u"done.png"_s);
    }
};

QTEST_GUILESS_MAIN(TestPutFile)
#include "tst_putfile.moc"
