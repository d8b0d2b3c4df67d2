#pragma once

#include "checks/FitFacts.h"
#include "receiver/TextFit.h"

#include <QStringList>

namespace quillmere {

// What is shown of a text, and the languages, in their order, in which it is that; none where the theme has
// no languages.
struct ShownText
{
    SetText set;
    QStringList languages;
};
std::vector<ShownText> shownTexts(const TextInRoom &text, const FitFacts &facts);

// Its fonts alone.
ReceiverTheme receiverTheme(const MeasuredTheme &fonts);

} // namespace quillmere
