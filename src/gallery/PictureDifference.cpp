#include "gallery/PictureDifference.h"

namespace quillmere {

qint64 pictureDifference(std::span<const quint32> before, std::span<const quint32> after,
                         std::span<quint32> marked)
{
    constexpr quint32 kRed = 0xffe00000;
    qint64 count = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        if (before[i] != after[i]) {
            ++count;
            marked[i] = kRed;
            continue;
        }
        const quint32 light =
            ((before[i] >> 16 & 0xff) * 2 + (before[i] >> 8 & 0xff) * 5 + (before[i] & 0xff)) / 8;
        marked[i] = 0xff000000 | (192 + light / 4) * 0x010101;
    }
    return count;
}

} // namespace quillmere
