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
#endif
}

} // namespace quillmere
