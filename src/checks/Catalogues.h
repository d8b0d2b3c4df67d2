#pragma once

#include "checks/ThemeCheck.h"
#include "files/FolderListings.h"

namespace quillmere {

// A row of a catalogue or of a language file.
struct CatalogueRow
{
    QString name;
    QString value;               // the code of a colour, a translation
    QString path;                // the file that an image, a font, a language or a window names
    QString found;               // the one that is meant, which may have other letters; empty where none is
    Range range, element;        // of the name, and of the whole; empty in rows that are not written
    qint32 line = 0, column = 0; // of the name, from 1
    LineColumn elementPlace;
    LineColumn end, elementEnd; // behind them
    bool isFirst = true;        // of this name
};

struct Catalogue
{
    IndexedFile file;
    QList<CatalogueRow> rows; // in the order, and with the numbers, of the list it is loaded into
    QString font = {};        // that a language names
};

// The catalogues of a theme as the rules look at them: read once, and every file that they name looked for.
// Only languages are read when they are asked for, and whoever does lets go of them: they hold the most rows,
// and no rule looks at two of them.
class Catalogues
{
public:
    // What is told to stop has not read all.
    Catalogues(const ThemeSources &sources, const ThemeIndex &index, const std::stop_token &stop);

    const Catalogue &of(FileRole role) const { return m_catalogues[size_t(role)]; }
    // Those whose file can be read, in the order of the index.
    const QList<IndexedFile> &languages() const { return m_languages; }
    Catalogue language(const IndexedFile &file) const { return read(file); } // on any thread
    QString nameOfLanguage(const IndexedFile &file) const;

    // The existing file that is meant by a path; see FolderListings. May be asked on any thread.
    QString find(const QString &path) { return m_listings.find(path); }

private:
    Catalogue read(const IndexedFile &file) const;
    QString pathIn(const IndexedFile &file, const QString &value) const;
    QList<CatalogueRow> fromText(const IndexedFile &file, const QString &text) const;
    QList<CatalogueRow> fromRows(const IndexedFile &file, const QList<ListRows::Row> &rows) const;

    const ThemeSources &m_sources;
    const ThemeIndex &m_index;
    FolderListings m_listings;
    std::array<Catalogue, size_t(FileRole::Window) + 1> m_catalogues;
    QList<IndexedFile> m_languages;
};

} // namespace quillmere
