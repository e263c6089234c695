// The layout of the kinds' segments in the bar under a folder's name. All lengths are whole pixels
// of the screen, so that edges are sharp and all gaps equally wide. Pure functions.
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
  int right = 0;  // the first pixel behind the segment

  friend bool operator==(const Segment&, const Segment&) = default;
};

// One segment for each of `fractions`, in their order from left to right. The fractions must add up
// to 1. A segment has its fraction of the width without the gaps, but at least `least`; the widest
// segments are shortened for that. If the bar is too narrow, all segments have the width `least`
// and exceed it.
std::vector<Segment> segments(const std::vector<double>& fractions, const Bar& bar);

}  // namespace tessaly::BreakdownLayout
