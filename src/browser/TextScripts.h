#pragma once

#include "browser/MeasuredText.h"

#include <QList>
#include <QStringList>
#include <QVariant>

namespace quillmere {

// What we have the browser do to measure texts; see CellScripts.

// A document whose sheet sets texts: those in a span in a div of class "t".
QString measuringPage(const QString &sheet);

// The families of the document's fonts that texts can be set in, one a line, and a last line; "" as long as
// some are still being loaded.
QString familiesScript();

// Sets the texts beside each other, measures them and takes them away again.
QString measuringScript(const QList<SetText> &texts);
// What that answers; empty where it is no answer for so many texts.
QList<TextExtent> extentsOf(const QVariant &answer, qsizetype texts);

} // namespace quillmere
