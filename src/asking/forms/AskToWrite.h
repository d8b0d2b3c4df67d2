#pragma once

#include "files/Files.h"

#include <QString>

#include <optional>

namespace quillmere {

class Prompts;

// What a command asks before it writes or deletes a file. A warning is added where that would write over what
// another program wrote.
struct WriteQuestion
{
    QString title, text;
    QString path;
    QString theme; // that led to the path; see Files
    Files::Step step = Files::Step::Save;
    // That the file is to hold: the person is told how much of it changes. By the rule its bytes become text.
    std::optional<QString> newText = {};
    CodePageRule rule = CodePageRule::Automatic;
};

// Some commands have always asked and gone on whatever the answer; designers know it so.
enum class No { Counts, IsIgnored };

// Asks, and then says whether the command may go on. Where the file really lies outside of the theme, "No"
// counts in any case, and the person is told the place, and may allow it.
bool askToWrite(Files &files, Prompts &prompts, const WriteQuestion &question, No no);

// The path, and how many lines saving this text changes in the file as it is now.
QString savingFacts(const QString &path, const QString &newText, CodePageRule rule);

// Only the second part of it, for a command that has asked already.
bool mayWrite(Files &files, Prompts &prompts, const WriteQuestion &question);

} // namespace quillmere
