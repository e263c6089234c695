// All that the user has thrown away, wherever it lies: one Trash to the user, though each volume
// may have folders of its own for it.
//
// May block for as long as a volume takes to answer. Implementations are safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/SystemError.h"

namespace tessaly {

// What came of emptying a Trash.
struct EmptiedTrash {
  static constexpr std::size_t mostErrors = 8;

  std::int64_t deleted = 0;  // items that are gone for good
  std::int64_t failures =
      0;  // what could not be deleted: items, or remains of some deleted earlier
  std::vector<SystemError> errors;  // of the first failures, mostErrors at the most

  bool isComplete() const { return failures == 0; }

  void addFailure(SystemError error) {
    ++failures;
    if (errors.size() < mostErrors) errors.push_back(std::move(error));
  }
};

class TrashCan {
 public:
  virtual ~TrashCan() = default;

  // How many items were thrown away and lie there still; what is inside a folder does not count.
  virtual Result<std::int64_t> count() = 0;

  // Deletes for good all that lies there when it is asked; what is thrown away meanwhile stays.
  // What cannot be deleted does not keep the others from it, and can still be put back as far as
  // that can be foreseen. Whoever empties the Trash once more, after an error or after the program
  // was ended meanwhile, takes it up where it stopped.
  virtual EmptiedTrash empty() = 0;
};

}  // namespace tessaly
