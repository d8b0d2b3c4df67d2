#pragma once

#include "outline/Document.h"
#include "rows/ListRows.h"

#include <QString>

namespace quillmere {

// lvLang, the languages of a theme. Row: text = full path of the language file, sub-item 1 = id, sub-item 2 =
// file name as written. LvBhs, the strings of one language. Row: text empty, sub-item 1 = source, sub-item 2
// = translation, checked = translated.
ListRows makeLanguageRows();
ListRows makeStringRows();

// Clears the rows and reads `<language id="ID">FILE</language>` entries; `languageFolder` is put in front of
// every file name as it stands. A missing file leaves the rows empty.
void LoadLanguageList(ListRows &lvLang, const Document &file, const QString &languageFolder);

// The id under which the catalogue lists a language file; empty for one that it does not list.
QString languageOf(const ListRows &lvLang, const QString &path);

// Replaces the rows by the `<tran id="SOURCE">TRANSLATION</tran>` elements of a language file, none checked.
// An empty text leaves the rows as they are, one without `<language name="` empties them.
void OpenLgXml(ListRows &LvBhs, const QString &text);

// Translates a source: in its first row, which is looked for as it is written and then without blanks around
// it, or in a row of its own behind all others. The row is checked.
void putTranslation(ListRows &LvBhs, const QString &source, const QString &translation);

// The text of a language file, lines ending in CR LF. `encoding` is that of the text the rows were read from.
// The bytes E2 80 A6 of an ellipsis are written as "..."; the one byte that it has in Windows-1252 stays.
QString languageFileText(const QString &name, const ListRows &LvBhs, const Encoding &encoding);

// The language file that is open; its strings stand in rows that must outlive it.
class LanguageFile
{
public:
    explicit LanguageFile(ListRows &LvBhs) : document(LvBhs) {}

    // Replaces the strings by those of a file. One that is empty or not there leaves them, and they are saved
    // to its path; the answer is false then.
    bool open(Files &files, const QString &path, const QString &theme, CodePageRule rule);
    // Writes the file under the name of a language.
    void save(Files &files, const QString &name);
    QString asText(const QString &name) const; // as it is written

    RowsDocument document;
};

} // namespace quillmere
