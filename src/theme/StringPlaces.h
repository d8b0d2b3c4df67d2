#pragma once

#include "theme/ThemeIndex.h"

#include <QHash>
#include <QStringList>

namespace quillmere {

// Where the windows of a theme hold a text, for whoever translates it.
class StringPlaces
{
public:
    // The index must outlive this.
    explicit StringPlaces(const ThemeIndex &index);

    // WINDOW:LINE of each use, in the order of the files; a document that no catalogue names, and the styles,
    // go by the name of their file.
    QStringList of(const QString &source) const;

private:
    const ThemeIndex &m_index;
    QHash<qint32, QString> m_windows; // by number of their file
};

} // namespace quillmere
