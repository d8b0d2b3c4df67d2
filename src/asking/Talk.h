#pragma once

#include "asking/Prompts.h"
#include "files/Progress.h"

#include <functional>

namespace quillmere {

// What one talks to the person with: questions and messages, a line in the status bar, and commands that may
// fail or take long. Handed once to whoever has something to say.
class Talk : public Prompts
{
public:
    // A line in the status bar; it stays until the next one.
    virtual void say(const QString &hint) = 0;
    // The same for what the next edit makes untrue, and takes away.
    virtual void sayUntilEdit(const QString &hint) { say(hint); }
    // Runs work that may be long and shows that it is under way; `what` is a caption for it. Cancelled comes
    // through.
    virtual void runLong(const QString &what, const std::function<void(const Progress &)> &work) = 0;
    // Runs a command and shows what goes wrong in it.
    void run(const std::function<void()> &command);
};

} // namespace quillmere
