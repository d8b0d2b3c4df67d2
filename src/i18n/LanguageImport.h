#pragma once

#include "files/TextFile.h"
#include "i18n/ExchangeUnits.h"

#include <functional>

namespace quillmere {

// What a file of a translator's program would change in a language.
struct ImportChange
{
    enum class Kind {
        New,     // there was no translation
        Changed, // there was another
        Gone,    // there will be none
    };

    int row = 0;  // of the language's strings
    int line = 0; // of the file
    QString source, before, after;
    bool isFuzzy = false; // somebody has to look at it yet

    Kind kind() const
    {
        return !isTranslated(before) ? Kind::New : isTranslated(after) ? Kind::Changed : Kind::Gone;
    }
};

struct ImportPlan
{
    QList<ImportChange> changes; // in the order of the rows
    // What else there is to choose from for rows whose source the file translates in two ways.
    QList<ImportChange> choices;
    // In the order of the lines: translations that no language file can hold, sources that the language
    // lacks, and sources that the file translates in two ways. All of these are left alone.
    QList<LineNote> refused, unknown, conflicting;
    int absent = 0; // sources that the file lacks; they stay as they are
};

// Compares the strings with the units of a file. Of rows with one source the first counts. Line ends count as
// equal, and so do two translations that are none. An ellipsis that is not there yet becomes three dots where
// the language is not written in Windows-1252, as it does when the language is saved. `reasonAgainst` says
// why a row cannot take a text; empty where it can.
ImportPlan planImport(const QList<ListRows::Row> &strings, const ExchangeTable &table, CodePage page,
                      const std::function<QString(int row, const QString &after)> &reasonAgainst = {});

} // namespace quillmere
