#include "app/controls/GaugeLevel.h"

#include "look/MarrowTheme.h"

namespace tessaly::Gauge {

GaugeLevel levelFor(double usedPercent) {
  if (usedPercent >= 90) return GaugeLevel::error;
  if (usedPercent >= 75) return GaugeLevel::warning;
  return GaugeLevel::success;
}

Color levelColor(GaugeLevel level) {
  switch (level) {
    case GaugeLevel::warning:
      return MarrowTheme::warning;
    case GaugeLevel::error:
      return MarrowTheme::error;
    case GaugeLevel::success:
      break;
  }
  return MarrowTheme::success;
}

double arcEnd(double usedPercent) {
  if (!(usedPercent > 0)) return kArcStart;
  if (usedPercent > 100) return kArcEnd;
  return usedPercent / 100 * 0.7 + kArcStart;
}

}  // namespace tessaly::Gauge
