#pragma once

#include <QLocale>

#include <optional>

namespace quillmere {

// The language that somebody calls so: in English ("German", "Indonesia"), in itself ("Deutsch"), or by a
// code of two or three letters. What stands behind a blank, a dot, a line or a number does not count. Nothing
// for a name that says no language.
std::optional<QLocale::Language> languageCalled(QStringView name);

// Whether a dictionary of this name may hold translations into a language: one that is named after another
// language does not.
bool mayTranslateInto(QStringView dictionary, QStringView language);

// The English name of the language that a file says it is in, where that is certainly not this language.
QString otherThan(QStringView language, QStringView said);

} // namespace quillmere
