#pragma once

#include "checks/FitFacts.h"
#include "checks/PictureStore.h"
#include "checks/Problem.h"
#include "theme/ThemeIndex.h"

#include <QHash>
#include <QSet>
#include <QSize>

#include <optional>
#include <stop_token>

namespace quillmere {

struct LanguageTexts
{
    QString name;
    QSet<QString> translated; // strings with a translation that is not empty
};

// What rules about a window have to know of the theme beside its index.
struct ThemeFacts
{
    std::optional<QSize> screen;         // pixels; nothing where the window catalogue does not say
    QHash<QString, QSize> pictures;      // by image ID, those that can be read
    QList<LanguageTexts> languages;      // those whose file can be read
    std::shared_ptr<const FitFacts> fit; // nothing where no texts have been measured
};

// Problems of one window, sorted by place: of the text that the outline was made of, which may be newer than
// what the index has of it. Reads no file. Where it is told to stop, some are missing.
QList<Problem> checkWindow(const Outline &outline, const IndexedFile &file, const ThemeIndex &index,
                           const ThemeFacts &facts, std::stop_token stop = {});

struct CheckedTheme
{
    ThemeFacts facts;        // for checkWindow, until a catalogue or a picture changes
    QList<Problem> problems; // of all files, sorted
};
// Holds a theme to every rule, on a few threads of its own. The index is to be made of the same sources, and
// so are its outlines, if they are at hand; they are used up. Texts are held to their room as far as they
// have been measured. Nothing where it was told to stop.
std::optional<CheckedTheme> checkTheme(const ThemeSources &sources, const ThemeIndex &index,
                                       PictureStore &pictures, std::stop_token stop = {},
                                       WindowOutlines outlines = {}, const MeasuredTheme &measured = {});

} // namespace quillmere
