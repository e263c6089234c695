// A rectangle in points: origin at the top left, x grows to the right, y grows downward.
#pragma once

namespace tessaly {

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  friend bool operator==(const Rect&, const Rect&) = default;
};

// Whether the rectangles share an area. Touching edges do not count.
inline bool overlap(const Rect& a, const Rect& b) {
  const auto larger = [](double p, double q) { return p > q ? p : q; };
  const auto smaller = [](double p, double q) { return p < q ? p : q; };
  return larger(a.x, b.x) < smaller(a.x + a.width, b.x + b.width) &&
         larger(a.y, b.y) < smaller(a.y + a.height, b.y + b.height);
}

}  // namespace tessaly
