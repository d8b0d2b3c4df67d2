#pragma once

#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QList>
#include <QSet>
#include <QString>
#include <QTest>
#include <QWidget>

struct Attempt
{
    QString name;
    QByteArray markup;
    bool control;
};
using Attempts = QList<Attempt>;
using Names = QSet<QString>;

inline Attempts attemptsOf(const QByteArray &lines)
{
    Attempts attempts;
    for (const QByteArray &line : lines.trimmed().split('\n')) {
        const bool control = !line.startsWith('-');
        const qsizetype space = line.indexOf(' ');
        attempts.append(
            {QString::fromLatin1(line.first(space).mid(control ? 0 : 1)), line.mid(space + 1), control});
    }
    return attempts;
}

// Those below a heading of attempts.txt, which says how they are written.
inline Attempts attemptsBelow(const QByteArray &heading)
{
    QFile file(QFINDTESTDATA("attempts.txt"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("There is no attempts.txt");
    const QByteArray all = file.readAll(), start = "\n[" + heading + "]\n";
    const qsizetype from = all.indexOf(start) + start.size(), end = all.indexOf("\n\n", from);
    return attemptsOf(all.mid(from, end < 0 ? -1 : end - from));
}

inline Names controlsOf(const Attempts &attempts)
{
    Names names;
    for (const Attempt &attempt : attempts) {
        if (attempt.control)
            names.insert(attempt.name);
    }
    return names;
}

// The widget of an attempt has a place of its own, where red is looked for.
inline QRect placeOf(qsizetype index)
{
    return {int(index) % 14 * 70, int(index) / 14 * 50, 62, 42};
}

inline Names redPlaces(QWidget &view, const Attempts &attempts)
{
    const QImage shot = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    Names red;
    for (qsizetype i = 0; i < attempts.size(); ++i) {
        const QRect place = placeOf(i).adjusted(3, 3, -3, -3) & shot.rect();
        for (int y = place.top(); y <= place.bottom(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(shot.constScanLine(y));
            for (int x = place.left(); x <= place.right(); ++x) {
                if (qRed(line[x]) > 200 && qGreen(line[x]) < 60 && qBlue(line[x]) < 60)
                    red.insert(attempts[i].name);
            }
        }
    }
    return red;
}
