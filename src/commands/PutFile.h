#pragma once

#include <QFile>
#include <QString>

namespace quillmere {

// A file that a person asked for by name, made beside it under a name of its own. Whatever has the name is
// replaced at once when all is written, and a link there is not followed.
class PutFile
{
public:
    explicit PutFile(const QString &path);
    // What has not been put is gone.
    ~PutFile();
    Q_DISABLE_COPY_MOVE(PutFile)

    // Write to it; closed where it could not be made.
    QFile &file() { return m_beside; }
    // Puts the file in its place. Gives the reason where it cannot, also where something before has failed.
    QString put();

private:
    // Who ends the program has the file gone from here on, and no longer.
    void note();
    void forget();

    QString m_path;
    QFile m_beside;
    QByteArray m_name; // as the system knows it
};

// The same for what is there as a whole. Gives the reason where it cannot.
QString putFile(const QByteArray &bytes, const QString &path);

} // namespace quillmere
