#include "commands/PutFile.h"

#include "files/Paths.h"

#include <QUuid>

#include <array>
#include <atomic>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif

namespace quillmere {

namespace {

#ifdef Q_OS_UNIX

// The files that are not put yet. A handler of signals may neither wait nor allocate, so their names lie in a
// table; what finds no place in it stays where the program is ended.
std::array<std::atomic<const char *>, 16> unputNames;

void removeUnput(int signal)
{
    for (const std::atomic<const char *> &name : unputNames) {
        if (const char *path = name.load())
            ::unlink(path);
    }
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

// Who has been told to ignore a signal, as by nohup, still does.
void watchSignals()
{
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction now = {};
        if (::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_DFL)
            ::signal(signal, removeUnput);
    }
}

#else

std::array<std::atomic<const char *>, 1> unputNames;
void watchSignals() {}

#endif

} // namespace

PutFile::PutFile(const QString &path) : m_path(path)
{
    const QString own = u".quillmere-" + QUuid::createUuid().toString(QUuid::Id128);
    m_beside.setFileName(joinPath(folderOf(path), own));
    static const bool isWatched = (watchSignals(), true);
    Q_UNUSED(isWatched);
    if (m_beside.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        note();
}

PutFile::~PutFile()
{
    if (m_beside.isOpen())
        m_beside.remove();
    forget();
}

void PutFile::note()
{
    m_name = QFile::encodeName(m_beside.fileName());
    for (std::atomic<const char *> &name : unputNames) {
        const char *none = nullptr;
        if (name.compare_exchange_strong(none, m_name.constData()))
            return;
    }
}

void PutFile::forget()
{
    for (std::atomic<const char *> &name : unputNames) {
        const char *own = m_name.constData();
        name.compare_exchange_strong(own, nullptr);
    }
}

QString PutFile::put()
{
    if (!m_beside.isOpen() || !m_beside.flush() || m_beside.error() != QFileDevice::NoError)
        return m_beside.errorString();
    std::error_code failure;
    std::filesystem::rename(m_beside.filesystemFileName(), QFile(m_path).filesystemFileName(), failure);
    if (failure)
        return QString::fromStdString(failure.message());
    m_beside.close();
    return {};
}

QString putFile(const QByteArray &bytes, const QString &path)
{
    PutFile out(path);
    out.file().write(bytes);
    return out.put();
}

} // namespace quillmere
