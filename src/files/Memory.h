#pragma once

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace quillmere {

// Called first of all. A large window is drawn anew again and again, each time through a dozen texts of
// several megabytes that live for a moment. Kept among the small blocks they leave holes that are never
// given back to the system; on their own pages they are.
inline void keepLargeTextsApart()
{
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 1 << 18); // bytes; naming it also keeps it from growing
    // Every thread would get a heap of its own and keep what it once needed; there are dozens of threads in
    // the browser alone.
    mallopt(M_ARENA_MAX, 2);
#endif
}

// For the end of work that took much memory for a while, beside the window's thread: what lies between blocks
// that are still in use is not given back to the system by itself.
inline void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace quillmere
