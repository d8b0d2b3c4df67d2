#include "theme/StringPlaces.h"

#include "files/Paths.h"

namespace quillmere {

StringPlaces::StringPlaces(const ThemeIndex &index) : m_index(index)
{
    index.eachName(NameKind::Window, [&](const QString &window) {
        for (const NamePlace &place : index.definitions(NameKind::Window, window))
            m_windows.insert(place.file, window);
    });
}

QStringList StringPlaces::of(const QString &source) const
{
    QStringList places;
    for (const NamePlace &use : m_index.uses(NameKind::String, source)) {
        QString window = m_windows.value(use.file);
        if (window.isEmpty()) {
            window = fileNameOf(m_index.files().at(use.file).path).toString();
            window = window.first(window.lastIndexOf(u'.') < 0 ? window.size() : window.lastIndexOf(u'.'));
        }
        places.append(window + u':' + QString::number(use.line));
    }
    return places;
}

} // namespace quillmere
