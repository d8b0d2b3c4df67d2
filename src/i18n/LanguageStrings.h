#pragma once

#include <QList>
#include <QString>

namespace quillmere {

// A string of a language file; views of the file's text.
struct LanguageString
{
    QStringView source;
    QStringView translation; // null where there is no place for one
};

// The `<tran id="SOURCE">TRANSLATION</tran>` elements of the text of a language file, in order; none in a
// text without `<language name="`.
QList<LanguageString> languageStrings(QStringView text);

} // namespace quillmere
