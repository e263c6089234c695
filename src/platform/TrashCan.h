// The whole Trash of the user: one Trash to the user, although each volume may have folders of its
// own for it.
//
// May block until a volume answers. Implementations are safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/SystemError.h"

namespace tessaly {

// The result of emptying a Trash.
struct EmptiedTrash {
  static constexpr std::size_t mostErrors = 8;

  std::int64_t deleted = 0;         // items deleted permanently
  std::int64_t failures = 0;        // items, or remains of items, that could not be deleted
  std::vector<SystemError> errors;  // of the first failures, at most mostErrors

  bool isComplete() const { return failures == 0; }

  void addFailure(SystemError error) {
    ++failures;
    if (errors.size() < mostErrors) errors.push_back(std::move(error));
  }
};

class TrashCan {
 public:
  virtual ~TrashCan() = default;

  // Number of items in the Trash, not counting the contents of folders.
  virtual Result<std::int64_t> count() = 0;

  // Permanently deletes all items that are in the Trash at the time of the call; items moved there
  // later stay. An item that cannot be deleted does not affect the others, and can still be put
  // back as far as that can be foreseen. After an error, or if the program was ended meanwhile,
  // another call continues the work.
  virtual EmptiedTrash empty() = 0;
};

}  // namespace tessaly
