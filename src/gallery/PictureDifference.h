#pragma once

#include <QtGlobal>

#include <span>

namespace quillmere {

// Compares two pictures of one size, 0xAARRGGBB a pixel. Paints to `marked` those that differ in
// red, over the first picture as a pale ground. Returns how many differ.
qint64 pictureDifference(std::span<const quint32> before, std::span<const quint32> after,
                         std::span<quint32> marked);

} // namespace quillmere
