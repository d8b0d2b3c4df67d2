#pragma once

#include "checks/ThemeCheck.h"
#include "files/Progress.h"
#include "theme/ThemeEdit.h"
#include "theme/ThemeIndex.h"

#include <QSize>

namespace quillmere {

// The windows of a theme for a screen of another size.
struct ThemeConversion
{
    struct Window
    {
        IndexedFile file;
        QString text; // before
        QList<RangeChange> changes;
    };
    QList<Window> windows; // those that change
    int missing = 0;       // windows without a document that can be read
    int kept = 0;          // rects that hold no four numbers
    ThemeEdit edit;        // of the windows, and of the screen's size in the window catalogue
};

// Pixels of the screen that a theme is made for. RunTimeError where its window catalogue cannot be read, or
// says no such size.
QSize screenSize(const ThemeSources &sources, const QString &catalogue);

// Why no screen can have this size, as a sentence for a person; empty where one can.
QString whyNotScreen(const QSize &size);

// Scales every rect in the windows that the catalogue lists. RunTimeError as above. The index is to be made
// of the same sources.
ThemeConversion convertedTheme(const ThemeSources &sources, const ThemeIndex &index, const QString &catalogue,
                               const QSize &to, const Progress &progress = {});

// How many pictures and texts fit into their blocks before the conversion and do not afterwards. Texts count
// as far as the facts have their measures.
struct NoLongerFitting
{
    int pictures = 0, texts = 0;
};
NoLongerFitting noLongerFitting(const ThemeConversion &conversion, const ThemeIndex &index,
                                const ThemeFacts &facts, const Progress &progress = {});

} // namespace quillmere
