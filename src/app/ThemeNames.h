#pragma once

#include "app/Going.h"
#include "app/ThemeEditing.h"

namespace quillmere {

class Commands;

// What the main window does with the names of a theme: leads to them and changes them.
class ThemeNames : public QObject
{
    Q_OBJECT

public:
    ThemeNames(Going::Parts parts, ThemeProject &theme, Files &files, Talk &talk, QObject *parent = nullptr);

    void addCommands(Commands &menu);

    Going going;
    ThemeEditing editing;
};

} // namespace quillmere
