#include "app/panes/BreakdownLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace tessaly::BreakdownLayout {

std::vector<Segment> segments(const std::vector<double>& fractions, const Bar& bar) {
  if (fractions.empty()) return {};
  const auto gaps = static_cast<int>(fractions.size() - 1) * bar.gap;
  const double room = bar.width - gaps;
  std::vector<double> widths;
  widths.reserve(fractions.size());
  for (const double fraction : fractions)
    widths.push_back(std::max<double>(bar.least, fraction * room));

  double excess = std::accumulate(widths.begin(), widths.end(), 0.0) - room;
  while (excess > 0) {
    double& widest = *std::ranges::max_element(widths);
    const double taken = std::min(excess, widest - bar.least);
    if (taken <= 0) break;
    widest -= taken;
    excess -= taken;
  }

  std::vector<Segment> placed;
  placed.reserve(widths.size());
  double end = 0;
  int left = 0;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    end += widths[i];
    // Rounding the ends instead of the widths prevents that rounding errors add up.
    const int right = static_cast<int>(std::lround(end)) + static_cast<int>(i) * bar.gap;
    placed.push_back({left, right});
    left = right + bar.gap;
  }
  return placed;
}

}  // namespace tessaly::BreakdownLayout
