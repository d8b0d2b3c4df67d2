#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <initializer_list>

// A folder of files for one test case; gone with it.
class TestFiles
{
public:
    explicit TestFiles(std::initializer_list<const char *> names = {})
    {
        for (const char *name : names)
            write(QLatin1String(name));
    }

    QString folder() const { return m_folder.path(); }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    // Writes the bytes to a file below the folder, making folders on the way, and gives its full path.
    QString write(const QString &name, const QByteArray &bytes = {}) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path(name)));
        return path(name);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        // Opening a pipe would wait for a writer.
        return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                          : QByteArrayLiteral("(no file)");
    }

private:
    QTemporaryDir m_folder;
};
