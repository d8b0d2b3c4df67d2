#pragma once

#include <QString>

namespace quillmere {

// The source text as a widget file holds it: no carriage returns but in the one CR LF at its end, empty
// strings in their short form, text widgets marked as the receiver wants them.
QString textToSave(const QString &source);

} // namespace quillmere
