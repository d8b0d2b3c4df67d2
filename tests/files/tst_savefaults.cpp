#include "Failure.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "files/TextFile.h"
#include "keeping/UnsavedTexts.h"

#include <QDirIterator>
#include <QTest>

#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

// System calls fail on demand here: the functions of a program come before those of the C library, also for
// the libraries that the program uses.
namespace {

struct Fault
{
    const char *call = nullptr; // none fails without one
    int turn = 0;               // the call that fails, counted from 1
    int error = 0;
    bool stays = false;   // those that come later fail too
    bool halfway = false; // a write still takes half of its bytes
    int calls = 0;

    bool isHit() const { return calls >= turn; }
} fault;

bool fails(const char *call)
{
    if (!fault.call || qstrcmp(call, fault.call) != 0)
        return false;
    ++fault.calls;
    if (fault.calls != fault.turn && !(fault.stays && fault.calls > fault.turn))
        return false;
    errno = fault.error;
    return true;
}

template <typename Function>
Function *real(const char *name, Function *)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {
int mkdir(const char *path, mode_t mode) noexcept
{
    return fails("mkdir") ? -1 : real("mkdir", mkdir)(path, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    return fails("open64") ? -1 : real("open64", open64)(path, flags, mode);
}

ssize_t read(int file, void *bytes, size_t size)
{
    return fails("read") ? -1 : real("read", read)(file, bytes, size);
}

ssize_t write(int file, const void *bytes, size_t size)
{
    if (!fails("write"))
        return real("write", write)(file, bytes, size);
    return fault.halfway && fault.calls == fault.turn ? real("write", write)(file, bytes, size / 2) : -1;
}

ssize_t sendfile(int to, int from, off_t *offset, size_t size) noexcept
{
    return fails("sendfile") ? -1 : real("sendfile", sendfile)(to, from, offset, size);
}

int fsync(int file)
{
    return fails("fsync") ? -1 : real("fsync", fsync)(file);
}

int fdatasync(int file)
{
    return fails("fdatasync") ? -1 : real("fdatasync", fdatasync)(file);
}

int fchmod(int file, mode_t mode) noexcept
{
    return fails("fchmod") ? -1 : real("fchmod", fchmod)(file, mode);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return fails("linkat") ? -1 : real("linkat", linkat)(fromFolder, from, toFolder, to, flags);
}

int rename(const char *from, const char *to) noexcept
{
    return fails("rename") ? -1 : real("rename", rename)(from, to);
}

int close(int file)
{
    const int closed = real("close", close)(file);
    return fails("close") ? -1 : closed;
}
}

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestSaveFaults : public QObject
{
    Q_OBJECT

private slots:
    void everyCall_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<bool>("halfway");
        QTest::addColumn<QString>("step"); // one that must be among those the error messages name
        const auto row = [](const char *call, int error, const char *step, bool halfway = false) {
            QTest::newRow(halfway ? "half a write" : call) << error << halfway << QString::fromLatin1(step);
        };
        row("mkdir", EROFS, "back up");
        row("open64", EMFILE, "open");
        row("read", EIO, "");
        row("sendfile", EIO, "");
        row("write", ENOSPC, "write");
        row("write", ENOSPC, "write", true);
        row("fsync", EIO, "write");
        row("fdatasync", EIO, "");
        row("fchmod", EPERM, "");
        row("linkat", ENOSPC, "");
        row("rename", EIO, "rename");
        row("close", EIO, "");
    }

    // Whichever call fails, once or from then on: the file is the old one or the new one, nothing is left
    // beside it, an error names file, step and reason, and where none is told, the new text is there and the
    // old one in the backup folder.
    void everyCall()
    {
        QFETCH(int, error);
        QFETCH(bool, halfway);
        QFETCH(QString, step);
        QStringList steps;
        const QByteArray old(100'000, 'o');
        const QString name = u"a.xml"_s, longest(255, u'n');
        for (const auto &file : {Saved{name, {}}, Saved{name, old}, Saved{longest, old}}) {
            for (const bool stays : {false, true}) {
                bool hit = true;
                for (int turn = 1; hit && turn < 100; ++turn)
                    saveWith({halfway ? "write" : QTest::currentDataTag(), turn, error, stays, halfway}, file,
                             steps, hit);
                QVERIFY(!hit);
            }
        }
        QVERIFY2(step.isEmpty() || steps.contains(step), qPrintable(steps.join(u',')));
    }

    void manyAtOnce_data() { everyCall_data(); }

    // Whichever call fails, all files are the old ones or all are the new ones.
    void manyAtOnce()
    {
        QFETCH(int, error);
        QFETCH(bool, halfway);
        bool hit = true;
        for (int turn = 1; hit && turn < 200; ++turn) {
            const TestFiles files, backup;
            Files disk;
            disk.backups().setFolder(backup.folder());
            QList<Files::Change> changes;
            for (const char *name : {"a.xml", "b.xml", "c.xml"})
                changes.append({files.write(QLatin1String(name), "old"), "old", "new"});
            fault = {halfway ? "write" : QTest::currentDataTag(), turn, error, false, halfway};
            const bool failed = !failureOf([&] { disk.saveAll(changes, files.folder()); }).isEmpty();
            hit = fault.isHit();
            fault = {};
            QString found;
            for (const QString &name : QDir(files.folder()).entryList(QDir::Files | QDir::Hidden))
                found += name.left(2) + QString::fromLatin1(files.read(name)) + u' ';
            QCOMPARE(found, failed ? u"a.old b.old c.old " : u"a.new b.new c.new ");
        }
        QVERIFY(!hit);
    }

    void unsavedText()
    {
        const TestFiles files;
        const QString file = files.path(u"recovery/a.txt"_s);
        for (const Fault &wanted : {Fault{"mkdir", 1, EROFS}, Fault{"write", 1, ENOSPC, true, true}}) {
            fault = wanted;
            const QString message = failureOf([&] { keepUnsaved(file, {}, QString(100'000, u'n')); });
            fault = {};
            QCOMPARE(message, u"Cannot keep the unsaved text in \"%1\": %2."_s.arg(
                                  file, qt_error_string(wanted.error)));
            QVERIFY(QDir(files.path(u"recovery"_s)).isEmpty());
        }
    }

private:
    struct Saved
    {
        QString name;
        QByteArray old; // what it held
    };

    void saveWith(const Fault &wanted, const Saved &file, QStringList &steps, bool &hit)
    {
        const auto &[name, old] = file;
        const TestFiles files, backup;
        Files disk;
        disk.backups().setFolder(backup.path(u"copies"_s));
        if (!old.isEmpty())
            files.write(name, old);
        const QByteArray before = files.read(name);
        const QByteArray text(old.isEmpty() ? 2000 : 200'000, 'n');
        const QString unicode = QString::fromLatin1(text);
        const QString about = u"%1 %2"_s.arg(QLatin1String(wanted.call)).arg(wanted.turn);

        fault = wanted;
        const QString message = failureOf([&] { disk.saveOwn(files.path(name), unicode); });
        hit = fault.isHit();
        fault = {};

        const QDir::Filters all = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
        const QStringList entries = QDir(files.folder()).entryList(all);
        if (message.isEmpty()) {
            QVERIFY2(files.read(name) == text, qPrintable(about));
            QVERIFY2(entries == QStringList(name), qPrintable(about));
            QDirIterator copy(disk.backups().folder(), {u"*Z"_s}, QDir::Files | QDir::Hidden,
                              QDirIterator::Subdirectories);
            QVERIFY2(copy.hasNext() != old.isEmpty(), qPrintable(about));
            if (!old.isEmpty()) {
                QFile kept(copy.next());
                QVERIFY2(kept.open(QIODevice::ReadOnly) && kept.readAll() == old, qPrintable(about));
            }
            return;
        }
        const QString told = QString(about + u": " + message + u' ' + entries.join(u' '));
        QVERIFY2(files.read(name) == before, qPrintable(told));
        QVERIFY2(entries == (old.isEmpty() ? QStringList() : QStringList(name)), qPrintable(told));
        const QString from = u"Cannot "_s, quoted = QString(u" \"" + files.path(name) + u"\": ");
        QVERIFY2(message.startsWith(from) && message.contains(quoted), qPrintable(told));
        QVERIFY2(message.endsWith(QString(qt_error_string(wanted.error) + u'.')), qPrintable(told));
        QVERIFY2(hit, qPrintable(told));
        steps.append(message.section(quoted, 0, 0).mid(from.size()));
    }
};

QTEST_GUILESS_MAIN(TestSaveFaults)
#include "tst_savefaults.moc"
