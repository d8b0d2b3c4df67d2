#pragma once

#include "checks/PictureStore.h"

namespace quillmere {

// Reads a picture made of pixels as the preview would; needs no window system.
PictureReading readPicture(const QByteArray &bytes);

} // namespace quillmere
