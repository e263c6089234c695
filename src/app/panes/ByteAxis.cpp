#include "app/panes/ByteAxis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "scan/Format.h"

namespace tessaly {

namespace {

constexpr std::array<const char*, 6> units = {"B", "KB", "MB", "GB", "TB", "PB"};
constexpr double wantedSteps = 4;
constexpr double leastPart = 0.02;

// The smallest of 1, 2 and 5 times a power of ten that is not below `value`.
double roundedUp(double value) {
  constexpr double tolerance = 1e-9;
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= value * (1 - tolerance)) return factor * power;
  }
  return 10 * power;
}

}  // namespace

ByteAxis::ByteAxis(std::int64_t least, std::int64_t most) {
  constexpr double kilo = 1024;
  constexpr double tenth = 0.1;
  const auto from = static_cast<double>(least);
  const auto to = static_cast<double>(most);
  double unit = 1;
  std::size_t name = 0;
  while (name + 1 < units.size() && to >= unit * kilo) {
    unit *= kilo;
    ++name;
  }
  // The texts have one digit after the point, and none for bytes.
  const double finest = name == 0 ? 1 : unit * tenth;
  const double step =
      unit *
      roundedUp(std::max({finest, (to - from) / wantedSteps, to * leastPart / wantedSteps}) / unit);
  double first = std::floor(from / step);
  double last = std::ceil(to / step);
  if (first == last) {
    ++last;
    first = std::max(0.0, first - 1);
  }
  for (double count = first; count <= last; ++count) {
    const double bytes = count * step;
    const int decimals = step < unit ? 1 : 0;
    levels_.push_back({.bytes = bytes,
                       .text = QString::fromStdString(Format::fixed(bytes / unit, decimals) + " " +
                                                      units[name])});
  }
}

}  // namespace tessaly
