#pragma once

#include "browser/PageView.h"

#include <QJsonArray>
#include <QString>

namespace quillmere {

// What we have the browser do with a document, in a world of scripts that the page's markup does not reach.

// Text is handed over as JSON, so that nothing in it can end the string it travels in.
QString quoted(const QString &text);

// A function for scripts: beside(name, rules) has rules count behind those of the page, in a sheet that is no
// part of its document; "" takes them away. The sheet is kept under the name.
QString besideFunction();

// Whether nothing has been written into the document: true or false.
QString untouchedScript();

// Writes the page into the document, where it replaces all there was, and keeps its number. It is seen first
// as `view` says. The scroll position stays.
QString writingScript(const QString &pageExpression, int number, const PageView &view);

// Makes the changes of changesBetween() in the document of the page with the number `from`, which gets the
// other. True when done; false, and nothing is changed, where the document is not what it should be. The
// `rules` count behind those of the page until the next page or change.
QString patchingScript(const QJsonArray &changes, int from, int number, const QString &rules = {});

// Markup can set rules (a policy, a refresh) that stay with the document when another page is written into
// it. True where the page's markup may do so.
bool bindsDocument(const QString &page);

// Shows the page like this. The document itself stays as it is: the rule lies in a style sheet beside it.
QString viewScript(const PageView &view);

// How far the page reaches, as it is laid out: width and height in pixels, as JSON.
QString extentScript();

// What stands where: for each div of the page, in order, its id and eight numbers: left, top, width and
// height of its box, and of what the divs around it let be seen of it. Pixels of the page as it is laid out,
// however it is scaled or scrolled. Widths are -1 where nothing is drawn.
QString placesScript();

// Sets window.__drawn once the page's pictures are loaded and it has been laid out since.
QString watchingScript();

} // namespace quillmere
