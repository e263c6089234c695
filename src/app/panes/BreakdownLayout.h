// How the kinds in a folder share the bar under its name. All lengths are whole pixels of the
// screen, so that no edge is blurred and every gap is as wide as the others. Pure.
#pragma once

#include <vector>

namespace tessaly::BreakdownLayout {

struct Bar {
  int width = 0;
  int gap = 1;    // between two segments
  int least = 2;  // of a segment
};

struct Segment {
  int left = 0;   // from the left end of the bar
  int right = 0;  // the first pixel that is no longer the segment's

  friend bool operator==(const Segment&, const Segment&) = default;
};

// A segment for each of `fractions`, which add up to 1, in their order from end to end of the bar:
// its fraction of what the gaps leave over, but at least the least. What that takes too much is
// taken from the widest. A bar too narrow for all gives each the least, and is longer.
std::vector<Segment> segments(const std::vector<double>& fractions, const Bar& bar);

}  // namespace tessaly::BreakdownLayout
