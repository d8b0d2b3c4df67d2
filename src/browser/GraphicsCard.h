#pragma once

#include <QString>

namespace quillmere {

// Whether the system has a device that draws for programs; Linux lists them below `devices`. Elsewhere there
// always is one.
bool hasGraphicsCard(const QString &devices = QStringLiteral("/dev"));

// Whether what OpenGL calls its renderer has no card behind it, and fills the pixels with the processor.
bool drawsWithProcessor(const QByteArray &renderer);

} // namespace quillmere
