#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

namespace quillmere {

// Makes a file that is not there yet, and has the disk keep it: whatever bears its name by then, links too,
// is left alone. The system's reason where it fails, and no file then; else nothing.
QString writeNewFile(const QString &path, QByteArrayView bytes);

struct NewFile
{
    QString name; // below the folder, with "/"
    QByteArray bytes;
};
// Makes a folder, and those above it, that holds these files and nothing else, all or none: whoever looks at
// it sees all of them. One that is there may not hold anything; see whyNotNewFolder. RunTimeError says why it
// fails, and nothing is left then that was not there before.
void writeNewFolder(const QString &folder, const QList<NewFile> &files);
// Why a folder cannot be made anew, as a sentence for a person; empty where it can.
QString whyNotNewFolder(const QString &folder);

} // namespace quillmere
