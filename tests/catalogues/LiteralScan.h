#pragma once

#include "markup/Matching.h"

#include <QStringList>

// The scans as their rules read, one search a name; what the fast ones are held to.
namespace literal {

// True for each image ID and then for each colour name that one of the documents uses.
inline QList<bool> scan(const QStringList &documents, const QStringList &images, const QStringList &colours)
{
    QList<bool> used(images.size() + colours.size());
    for (QString text : documents) {
        for (qsizetype i = 0; i < images.size(); ++i)
            used[i] |= quillmere::containsIgnoringCase(text, QString(u'>' + images[i] + u'<'));
        text.replace(u'[', u',').replace(u']', u',');
        for (qsizetype i = 0; i < colours.size(); ++i)
            used[images.size() + i] |=
                quillmere::containsIgnoringCase(text, QString(u',' + colours[i] + u','));
    }
    return used;
}

inline QList<bool> namesIn(const QString &text, const QStringList &names)
{
    QList<bool> found;
    for (const QString &name : names)
        found.append(quillmere::containsIgnoringCase(text, name));
    return found;
}

} // namespace literal
