#pragma once

#include "naming/FoundPlaces.h"

#include <QObject>

#include <functional>

class QWidget;

namespace quillmere {

class Commands;
class LiveIndex;
struct NewLanguage;
class OpenDocument;
class SourceBox;
class TabStrip;
class Talk;
class ThemeNames;
class ThemeProject;

// What the menus make anew: windows, languages and themes.
class NewThings : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ThemeProject &theme;
        LiveIndex &index;
        ThemeNames &names;
        OpenDocument &document;
        SourceBox &source;
        TabStrip &strip;
        Talk &talk;
    };
    NewThings(const Parts &parts, QWidget &window);

    void addCommands(Commands &menu);

private:
    void mnuWidgetNew_Click();
    void mnuWidgetDuplicate_Click();
    void mnuWidgetRename_Click();
    void mnuLangNew_Click();
    // Row of the window in the source box where that is what one looks at, else of the one selected in
    // LvWidget; -1, after a hint, where there is none.
    int windowInHand() const;
    // RunTimeError where no theme is open, or it names no window catalogue.
    void requireWindows() const;
    bool makeLanguage(const NewLanguage &language, int model);
    bool makeWindow(const QString &name, const QString &text, CodePage page);

    Parts m_parts;
    QWidget &m_window;
};

} // namespace quillmere
