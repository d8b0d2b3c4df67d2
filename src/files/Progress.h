#pragma once

#include <QString>

#include <functional>

namespace quillmere {

// How long work tells how far it is: `done` of `all` steps. Called from inside the work, which runs on the
// window's thread. It throws Cancelled when the person wants the work to end; the work lets that through and
// leaves everything it was to change as it was.
using Progress = std::function<void(qsizetype done, qsizetype all)>;

struct Cancelled
{
};

// For work that nobody may be watching.
inline void tell(const Progress &progress, qsizetype done, qsizetype all)
{
    if (progress)
        progress(done, all);
}

} // namespace quillmere
