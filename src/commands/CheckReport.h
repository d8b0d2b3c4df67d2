#pragma once

#include "checks/Ignored.h"

#include <QByteArray>

namespace quillmere {

enum class ReportFormat { Text, Json, Sarif };

// The problems in their order, files relative to `folder`, as UTF-8.
QByteArray checkReport(const QList<Problem> &problems, const QString &folder, ReportFormat format);

} // namespace quillmere
