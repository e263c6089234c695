// What the storage gauge shows for a percentage: its level, and the length of its arc. Pure
// functions, safe from any thread.
#pragma once

#include "look/Color.h"

namespace tessaly {

enum class GaugeLevel { success, warning, error };

// Percentages are from 0 to 100; others are clamped, and NaN counts as 0.
namespace Gauge {

// The ring is open at the bottom: it covers these fractions of the circle, clockwise from the
// bottom.
inline constexpr double kArcStart = 0.15;
inline constexpr double kArcEnd = 0.85;

GaugeLevel levelFor(double usedPercent);

Color levelColor(GaugeLevel level);

// The fraction of the circle at the end of the value's arc; kArcStart if it is empty.
double arcEnd(double usedPercent);

}  // namespace Gauge

}  // namespace tessaly
