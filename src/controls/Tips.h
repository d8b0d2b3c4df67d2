#pragma once

#include <QWidget>

#include <span>

namespace quillmere {

// What a control or a command does, in a sentence. The name is that of the object.
struct Tip
{
    const char *name;
    const char *text;
};

// Gives the controls and commands of a window their tips. Those that have one of their own keep it.
void giveTips(QWidget &window, std::span<const Tip> tips);

} // namespace quillmere
