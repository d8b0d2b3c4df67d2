#pragma once

#include "files/Progress.h"
#include "naming/LineAround.h"
#include "theme/ThemeEdit.h"
#include "theme/ThemeIndex.h"

#include <QHash>
#include <QSet>

#include <functional>
#include <optional>

namespace quillmere {

// A place in the theme's files or lists, with what stands there.
struct FoundPlace
{
    enum class Of : quint8 {
        Text,     // of a file
        Row,      // of a list that is open: the range is in its sub-item 1
        FileName, // of the document of a window: the range is in the name
    };

    Of of = Of::Text;
    QString file;
    Range range;
    QString text;    // in the range
    qint32 row = -1; // in the list of a catalogue, also of a text
    LineAround line;
    bool isDefinition = false;
    bool isSure = true; // false where it may well be another thing of the same name
};

// Places, file by file in the order of the text, and what tells that their files are still the same.
struct FoundPlaces
{
    QList<FoundPlace> places;
    QHash<QString, QByteArray> marks;          // by file; see ThemeEdit::markOf
    QHash<QString, QList<ListRows::Row>> rows; // by file
    qsizetype more = 0;                        // places that are not listed
    QSet<QString> taken;                       // the names of the other blocks of the window

    void addText(const QString &file, const QString &text, Range range, qint32 line);
    // Puts those that were found in a file by now in place of those found before. False, and nothing has
    // changed, where it cannot be told which is which.
    bool renew(const QString &file, const FoundPlaces &now);
    // How many files the places are in; of those for which `isTaken` holds a true, where it is given.
    qsizetype files(const QList<bool> &isTaken = {}) const;
};

// The edit that puts `after` in those of the places for which `isTaken` holds a true.
ThemeEdit editOf(const FoundPlaces &found, const QList<bool> &isTaken, const QString &after);

// A name, or a block of one window.
struct NamedThing
{
    std::optional<NameKind> kind; // none for a block
    QString name;
    QString file = {};    // of a block: its window
    qint32 blockRow = -1; // of a block: its row in the block list

    bool operator==(const NamedThing &) const = default;
};
// "image", "block": what stands before the name in a sentence.
QString wordFor(std::optional<NameKind> kind);

// The rows of a catalogue that is open, by the path of its file; nothing where it is not.
using OpenRowsAt = std::function<std::optional<QList<ListRows::Row>>(const QString &path)>;

// Where a name is defined and used, in the texts and rows as they are now: the index only says in which
// files. Files that cannot be read have no places. Cancelled comes through.
FoundPlaces placesOf(const NamedThing &thing, const ThemeIndex &index, const ThemeSources &sources,
                     const OpenRowsAt &openRows, const Progress &progress = {});

} // namespace quillmere
