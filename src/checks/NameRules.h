#pragma once

#include "checks/ThemeCheck.h"

namespace quillmere {

// The colours that stand for transparency on a receiver. They are known without a catalogue.
bool isKeyColour(QStringView name);

// What is wrong with a name that is used.
struct NameFault
{
    Rule rule;
    QString message;
    QString meant; // the name in other letters, where that one exists
};
// Nothing for a name that means something, and for kinds of names that need not be defined.
std::optional<NameFault> faultOf(NameKind kind, QStringView name, const ThemeIndex &index);

// Whether a text of a window has a letter.
bool needsTranslation(QStringView text);

// Of the names in a window the strings that have to be translated, each once.
std::vector<FoundName> stringsToTranslate(const std::vector<FoundName> &names);

} // namespace quillmere
