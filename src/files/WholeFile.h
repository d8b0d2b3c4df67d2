#pragma once

#include <QByteArrayView>
#include <QSaveFile>
#include <QString>

namespace quillmere {

// Makes the folder with those above it. Empty where it is there now, else the system's reason.
QString makeFolder(const QString &folder);

// Makes the disk keep what was written to a file that is open without a buffer. The system's reason where it
// refuses, else nothing.
QString keptOnDisk(const QFileDevice &file);

// Writes a file whole or not at all: beside it, then renamed over it, which keeps its permissions. Each step
// gives the system's reason where it fails, else nothing; the file is then as it was, and nothing is left
// beside it. A symbolic link stays one and its target is written.
class WholeFile
{
public:
    // One of many stays closed between close() and rename(), or the system would run out of open files.
    enum class Of { One, Many };

    explicit WholeFile(const QString &path, Of of = Of::One);
    ~WholeFile();
    Q_DISABLE_COPY_MOVE(WholeFile)

    QString open();
    // May be called again for what follows.
    QString write(QByteArrayView bytes);
    // Makes the disk keep what was written.
    QString flush();
    // May be left out for one.
    QString close();
    QString rename();

    // All steps.
    QString writeAll(QByteArrayView bytes);

private:
    QString m_path;
    QString m_beside; // another name: the file's own leaves no room for an ending, or it is one of many
    QSaveFile m_file;
    bool m_isBeside = false; // closed under the name beside
};

} // namespace quillmere
