// The steps that make one list into another: rows that go, rows that move, rows that come. Pure.
#pragma once

#include <vector>

namespace tessaly::ListSteps {

struct Step {
  enum class Kind { remove, move, insert };

  Kind kind = Kind::remove;
  // Of rows that go or move, where they are at that time; of rows that come, where they will be.
  int first = 0;
  int last = 0;
  // Of rows that move: the row that they come in front of, counted before the move. `count` for the
  // end.
  int to = 0;

  friend bool operator==(const Step&, const Step&) = default;
};

// `origins` has, for each wanted row, the row that it has in a list of `count` rows, or -1 where it
// is not there; no row twice. First come the removals, from the end of the list, then the moves,
// from the beginning of the wanted list, then the insertions, in their order. As few rows move as
// possible, and neighbours go, move and come in one step. O(n log n).
std::vector<Step> between(int count, const std::vector<int>& origins);

}  // namespace tessaly::ListSteps
