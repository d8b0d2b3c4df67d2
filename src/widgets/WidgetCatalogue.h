#pragma once

#include "files/Progress.h"
#include "outline/Document.h"
#include "rows/ListRows.h"

namespace quillmere {

class FileList;
class Files;

// The widget catalogue: the windows of the receiver, each with a document of its own beside the catalogue.
// LvWidget row: text = full path of the document, sub-item 1 = window name, 2 = date and time of the document
// (yyyy-MM-dd hh:mm:ss), 3 = "Y" when a file of exactly that name exists.
// lvWidgetDel row: text = name of a file in the folder of the last window (without windows, of the catalogue)
// that no LvWidget row names, except "widget.xml".
class WidgetCatalogue
{
public:
    WidgetCatalogue();

    // `folder` ends in a separator. A missing or empty file leaves both lists and the three values empty.
    void LoadWidgetList(const Document &file, const QString &folder, FileList &file1,
                        const Progress &progress = {});
    // Has all that the other one has.
    void assign(const WidgetCatalogue &other);
    // The full path of the file that this row of lvWidgetDel shows.
    QString unlistedPath(int row) const;
    // Loads the file again; nothing where there is none.
    void reload(Files &files, FileList &file1);

    // The catalogue text with a line for the window `name` put before every "</interface>", ignoring case.
    // Unchanged where the line is there already. The text ends in CR LF, as it is written.
    static QString withWindow(const QString &text, const QString &name);

    // The catalogue text without the window's entry, and then without line breaks and with blanks thinned
    // out, which is how catalogues have always come out of this. A window without an entry loses only the
    // line breaks.
    static QString withoutWindow(const QString &text, const QString &name);

    ListRows LvWidget;
    ListRows lvWidgetDel;

    Document document;
    QString folder;             // ends in a separator
    QString width, height, bpp; // as written: pixels, pixels, bits a pixel

private:
    QString m_unlistedFolder; // of the files in lvWidgetDel
};

} // namespace quillmere
