#pragma once

#include "outline/Values.h"

#include <functional>

#include <QStringList>

namespace quillmere {

class ThemeProject;
struct ThemeSources;

// What a new window takes over from its theme, so that it looks like one of it and names nothing unknown.
struct WindowLook
{
    Box screen = {0, 0, 1280, 720}; // of a window that fills it, pixels
    QString picture;                // the ID of that behind everything; empty for none
    QString ground, panel, letters; // colours, by name or as a code; a panel stands on the ground
    QString font;                   // empty for none
    // The first of these words that every language of the theme translates; empty where none is.
    std::function<QString(const QStringList &words)> word;
};

// Looks into the first windows and into the languages. Rows that are not written count, as they do elsewhere.
WindowLook lookOf(const ThemeProject &theme, const ThemeSources &sources);

} // namespace quillmere
