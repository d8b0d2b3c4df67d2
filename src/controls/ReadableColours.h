#pragma once

#include <QPalette>

namespace quillmere {

// How well one colour is read on another, from 1 to 21: the contrast ratio of WCAG 2.1.
double contrast(const QColor &text, const QColor &ground);

// A colour on another as if it let that much of it through: at 1 there is nothing but the text's.
QColor mixed(const QColor &text, const QColor &ground, float share);

// The faintest mixture of `text` into `ground` that is seen on it, at 3:1.
QColor seenOn(const QColor &ground, const QColor &text);

// The ground, or as little away from it as it takes for the text to be read on it.
QColor readableGround(QColor ground, const QColor &text);

// What platforms make too faint to be read, or leave out on a dark desktop: the colour of placeholders, which
// numbers of lines have too. Only that role is set in it, so that all others go on following the desktop.
QPalette readablePlaceholders(const QPalette &palette);

// The colour of a ring around what has the focus: the highlight, where it has a contrast of 3 there.
QColor focusOn(const QPalette &palette, const QColor &ground);

} // namespace quillmere
