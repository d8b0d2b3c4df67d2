#pragma once

#include "outline/Document.h"
#include "rows/RowIndex.h"

#include <functional>

namespace quillmere {

class Files;

// The colour catalogue: names and the codes they stand for. Row: text empty, sub-item 1 = name, 2 = code,
// both as the file has them.
class ColourCatalogue
{
public:
    // The rows must outlive the catalogue.
    explicit ColourCatalogue(ListRows &lvColor) : document(lvColor), m_rows(lvColor), m_names(lvColor, 1) {}

    // Clears the rows and reads `<color name="NAME">CODE</color>` entries. A missing file leaves the rows
    // empty; its path is kept all the same.
    void LoadColorList(const Document &file);
    // Loads the file again.
    void reload(Files &files);
    // Has the rows and the document of the other one.
    void assign(const ColourCatalogue &other);
    // Replaces the file with ColourFileText. RunTimeError when it cannot be written.
    void save(Files &files);

    // The code of the first row with this name, both stripped of control characters, letter case minded;
    // empty when there is none. Constant time.
    QString GetColor(const QString &NamaColor) const;
    // The same question to the rows as they stand now: the answers stay, and may be asked for on any thread.
    std::function<QString(const QString &name)> lookup() const;
    // The name of the first row with this code, stripped; empty when there is none. Letter case does not
    // matter.
    QString nameOf(const QString &code) const;

    RowsDocument document;

private:
    ListRows &m_rows;
    RowIndex m_names;
};

// The whole colour file: a line a row, every line ended by CR LF, names and codes as they stand.
QString ColourFileText(const ListRows &lvColor);

// Removes every row with a check mark. Returns how many there were.
int RemoveCheckedRows(ListRows &rows);

} // namespace quillmere
