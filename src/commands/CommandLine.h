#pragma once

#include "commands/CheckReport.h"
#include "i18n/ExchangeFile.h"
#include "preview/PreviewPage.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillmere {

// What the words behind the program's name ask for.
struct CommandLine
{
    enum class Action { Edit, Render, Sheet, Compare, Check, Export, Import, Print, Fail };

    Action action = Action::Edit;
    QString text; // Print: help or version, for standard output; Fail: what is wrong, for standard error
    bool isVerbose = false;                   // says on the terminal what happens
    QString theme;                            // absolute path with own separators; empty where none was given
    QStringList windows;                      // Render: names of widget windows; none means all
    QString other;                            // Compare: the theme as it is after, a path as above
    QString out;                              // Render, Compare: folder; Sheet: file
    int columns = 4;                          // Sheet
    std::optional<Screen> size;               // Render: the theme's own size where none was given
    bool receiver = false;                    // Render: the receiver view
    QString language;                         // Render, Sheet: as the catalogue names it; as written if empty
    int state = 1;                            // Render: 1 to 3
    int jobs = 1;                             // Render: browser pages at once
    ReportFormat format = ReportFormat::Text; // Check
    QList<IgnoredRule> ignored;               // Check
    Severity failOn = Severity::Error;        // Check: what makes it fail, and all that is worse
    bool textFit = false;                     // Check: measure the texts, which takes a browser

    // Export and Import. `language` is the catalogue's name for it, `out` the file that is written.
    QString file;                                 // that is read, as given
    ExchangeFormat exchange = ExchangeFormat::Po; // of the file
    bool dryRun = false;
};

// `arguments` begin with the program's name. Needs an application object for the name and version.
CommandLine parseCommandLine(const QStringList &arguments);

} // namespace quillmere
