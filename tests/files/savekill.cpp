// savekill [KILLS]: starts a program that saves a file of a megabyte over and over, kills it at a random
// moment, and looks whether the file is a whole one, and so often. Fails at the first that is not.

#include "files/Files.h"
#include "files/TestFiles.h"
#include "files/TextFile.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QThread>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

// Some file systems have no files without a name, which leave nothing behind: then a save writes to a file
// beside the one it replaces. Every second round does without them.
static bool nameless = true;

extern "C" int open64(const char *path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    if (!nameless && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    using Open = int (*)(const char *, int, ...);
    return reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open64"))(path, flags, mode);
}

namespace {

constexpr int kLine = 8;
constexpr int kLines = 131'072;

// A megabyte or a little less, all lines the same, so that any mixture and any part of two of them shows.
QString textOf(int number)
{
    return QStringLiteral("%1\n")
        .arg(number, kLine - 1, 10, QLatin1Char('0'))
        .repeated(kLines - number % 5000);
}

bool isWhole(const QByteArray &bytes)
{
    bool isNumber = false;
    const int number = bytes.left(kLine - 1).toInt(&isNumber);
    return isNumber && QString::fromLatin1(bytes) == textOf(number);
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A "b" where a save begins, an "e" where it has ended.
void tell(char what)
{
    if (write(STDOUT_FILENO, &what, 1) != 1)
        _exit(1);
}

[[noreturn]] void saveForEver(const QString &folder)
{
    quillmere::Files files;
    files.backups().setFolder(folder + QStringLiteral("/backup"));
    const QString path = folder + QStringLiteral("/theme/a.xml");
    for (int number = read(path).left(kLine - 1).toInt() + 1;; ++number) {
        const QString text = textOf(number);
        tell('b');
        files.saveOwn(path, text);
        tell('e');
    }
}

[[noreturn]] void fail(int kill, const char *what, const QString &about)
{
    std::printf("kill %d: %s: %s\n", kill, what, qPrintable(about));
    std::exit(1);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.value(1) == u"save") {
        nameless = arguments.value(3) == u"nameless";
        saveForEver(arguments.value(2));
    }

    const int kills = arguments.size() > 1 ? arguments[1].toInt() : 200;
    const TestFiles files;
    const QString path = files.write(QStringLiteral("theme/a.xml"), textOf(1).toLatin1());
    const QDir folder(QFileInfo(path).path());
    static const QRegularExpression leftover(QStringLiteral("^a\\.xml\\.[A-Za-z]{6}$"));
    static const QRegularExpression unfinishedCopy(QStringLiteral("Z\\.[A-Za-z]{6}$"));
    qsizetype saves = 0, midway = 0, left = 0;
    for (int kill = 1; kill <= kills; ++kill) {
        QProcess child;
        child.start(app.applicationFilePath(), {QStringLiteral("save"), files.folder(),
                                                kill % 2 ? QStringLiteral("nameless") : QString()});
        if (!child.waitForReadyRead())
            fail(kill, "the saving program does not start", child.errorString());
        QThread::usleep(ulong(QRandomGenerator::global()->bounded(60'000)));
        if (child.state() != QProcess::Running)
            fail(kill, "the saving program has ended", QString::fromLocal8Bit(child.readAllStandardError()));
        child.kill();
        child.waitForFinished();
        const QByteArray told = child.readAllStandardOutput();
        saves += told.count('e');
        midway += told.endsWith('b');

        if (!isWhole(read(path)))
            fail(kill, "the file is not whole", QString::fromLatin1(read(path).left(40)));
        for (QDirIterator it(files.path(QStringLiteral("backup")), QDir::Files, QDirIterator::Subdirectories);
             it.hasNext();) {
            const QString copy = it.next();
            if (!unfinishedCopy.match(copy).hasMatch() && !isWhole(read(copy)))
                fail(kill, "a backup is not whole", copy);
        }
        QDir(files.path(QStringLiteral("backup"))).removeRecursively();
        const QStringList entries = folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
        for (const QString &entry : entries) {
            if (entry == u"a.xml")
                continue;
            if (!leftover.match(entry).hasMatch() || entries.size() > 2)
                fail(kill, "more is left than one unfinished file", entries.join(u' '));
            ++left;
            QFile::remove(folder.filePath(entry));
        }
    }
    std::printf("%d kills, %lld in the middle of a save, %lld saves done; every file and every backup whole; "
                "unfinished "
                "files left beside it: %lld\n",
                kills, qlonglong(midway), qlonglong(saves), qlonglong(left));
    return 0;
}
