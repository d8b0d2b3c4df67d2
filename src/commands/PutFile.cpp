#include "commands/PutFile.h"

#include "files/Paths.h"

#include <QUuid>

#include <filesystem>

namespace quillmere {

PutFile::PutFile(const QString &path) : m_path(path)
{
    const QString own = u".quillmere-" + QUuid::createUuid().toString(QUuid::Id128);
    m_beside.setFileName(joinPath(folderOf(path), own));
    m_beside.open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

PutFile::~PutFile()
{
    if (m_beside.isOpen())
        m_beside.remove();
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
