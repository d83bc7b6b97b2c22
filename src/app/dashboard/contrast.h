#pragma once

#include <QColor>

namespace bridge {

// How well one colour stands out from another, from 1 to 21, as WCAG 2 measures it. Text needs 4.5.
constexpr double readable = 4.5;
double contrast(const QColor& one, const QColor& other);

// `wish`, or as little darker or lighter as makes it readable on the background.
QColor readableOn(const QColor& background, const QColor& wish);

} // namespace bridge
