#pragma once

#include <QLatin1String>
#include <QString>
#include <QWidget>

namespace quillmere {

// Gives a control the name by which style sheets, screen readers' scripts and tests find it, and the name
// that a screen reader says.
template <typename Control>
Control *named(Control *control, const char *name, const QString &accessibleName)
{
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    return control;
}

} // namespace quillmere
