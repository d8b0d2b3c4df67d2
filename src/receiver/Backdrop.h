#pragma once

#include <QSize>
#include <QString>

namespace quillmere {

// What stands behind the receiver's page, where the receiver has the television picture.
enum class Backdrop { Black, Chequers, TestPicture, Picture };

// The background of CSS for a screen of this size, pixels. `pictureUrl` is where the browser finds the
// picture of that choice, free of quotes; without one it is black.
QString groundOf(Backdrop backdrop, QSize screen, const QString &pictureUrl = {});

} // namespace quillmere
