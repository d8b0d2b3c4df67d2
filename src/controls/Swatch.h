#pragma once

#include "controls/Named.h"

#include <QFrame>

namespace quillmere {

// A framed area filled with one colour.
class Swatch : public QFrame
{
    Q_OBJECT

public:
    Swatch(const char *name, const QString &accessibleName, QWidget *parent = nullptr) : QFrame(parent)
    {
        named(this, name, accessibleName);
        setFrameShape(QFrame::StyledPanel);
        setAutoFillBackground(true);
    }

    void setColour(const QColor &colour)
    {
        QPalette filled = palette();
        filled.setColor(backgroundRole(), colour);
        setPalette(filled);
    }
};

} // namespace quillmere
