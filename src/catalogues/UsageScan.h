#pragma once

#include "files/Progress.h"
#include "files/TextFile.h"

#include <QList>

namespace quillmere {

class ListRows;

// Which rows of the catalogues are in use, shown by their check marks. Names are sub-item 1 of the rows and
// are found ignoring letter case. Marks are set after everything has been read, so that
// a scan that is cancelled changes none. Progress counts documents, or lists. Documents are read by `rule`,
// as the names were.

// Checks exactly the images and colours that at least one document of LvWidget (row text = path; a missing
// one is empty) uses: an image where ">ID<" stands in it, a colour where its name stands between two of ","
// "[" and "]". Time is linear in the documents, however many rows there are.
void scanWindows(const ListRows &LvWidget, ListRows &lvImage, ListRows &lvColor, const Progress &progress,
                 CodePageRule rule = CodePageRule::Automatic);

// Checks exactly the rows of LvWidget whose document uses the image; returns how many.
int checkWindowsWith(const QString &imageId, ListRows &LvWidget, const Progress &progress,
                     CodePageRule rule = CodePageRule::Automatic);

// Checks the rows whose name occurs anywhere in the text and leaves every other mark as it is; returns for
// each list how many occur. An empty name occurs in every text that is not empty. One pass over the text for
// each different length of a name.
QList<int> checkNamesIn(const QString &text, const QList<ListRows *> &lists, const Progress &progress = {});

} // namespace quillmere
