// What the storage gauge tells of a percentage: how serious it is, and how long its arc is. Plain
// values, any thread.
#pragma once

#include "look/Color.h"

namespace tessaly {

enum class GaugeLevel { success, warning, error };

// Percentages run from 0 to 100; what lies outside, or is no number, counts as the nearer end.
namespace Gauge {

// The ring is open below: it runs over these fractions of the circle, clockwise from the bottom.
inline constexpr double kArcStart = 0.15;
inline constexpr double kArcEnd = 0.85;

GaugeLevel levelFor(double usedPercent);

Color levelColor(GaugeLevel level);

// The fraction of the circle at which the value's arc ends; kArcStart when it has no length.
double arcEnd(double usedPercent);

}  // namespace Gauge

}  // namespace tessaly
