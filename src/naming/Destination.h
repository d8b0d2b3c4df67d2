#pragma once

#include "naming/FoundPlaces.h"

namespace quillmere {

// Where one can go: a range of a file, or the row of a list.
struct Destination
{
    QString file;
    Range range;
    qint32 row = -1;
};

// What the caret stands at in the text of `file`: a name, or the opening tag of a block. `index` may be
// missing; then there are only the names of windows.
std::optional<NamedThing> thingAt(const Outline &outline, qsizetype offset, const QString &file,
                                  const ThemeIndex *index);

// Where a name is defined; the first place where there are several. That of a block is its name. A string is
// defined by each language: first by the one at `language`, where it is among them.
std::optional<Destination> definitionOf(const NamedThing &thing, const ThemeIndex &index,
                                        const QString &language = {});

// Where else a caret leads: from a closing tag to the opening one, from a `style` to the block of style.xml
// that says how such blocks look. `style` is the text of style.xml.
std::optional<Destination> partnerAt(const Outline &outline, qsizetype offset, const QString &file,
                                     const QString &styleFile, const QString &style);

} // namespace quillmere
