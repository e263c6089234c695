// The steps that turn one list into another: rows are removed, moved and inserted. Pure functions.
#pragma once

#include <vector>

namespace tessaly::ListSteps {

struct Step {
  enum class Kind { remove, move, insert };

  Kind kind = Kind::remove;
  // The indexes of the rows: for removals and moves before the step, for insertions after it.
  int first = 0;
  int last = 0;
  // For moves, the row before which they are inserted, counted before the move; `count` for the
  // end.
  int to = 0;

  friend bool operator==(const Step&, const Step&) = default;
};

// `origins` has, for each wanted row, its index in a list of `count` rows, or -1 if it is new; no
// index twice. First come the removals, from the end of the list, then the moves, from the
// beginning of the wanted list, then the insertions, in their order. The number of moved rows is
// minimal, and neighbours are removed, moved or inserted in one step. O(n log n).
std::vector<Step> between(int count, const std::vector<int>& origins);

}  // namespace tessaly::ListSteps
