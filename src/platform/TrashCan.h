// All that the user has thrown away, wherever it lies: one Trash to the user, though each volume
// may have folders of its own for it.
//
// May block for as long as a volume takes to answer. Implementations are safe from any thread.
#pragma once

#include <cstdint>

#include "platform/SystemError.h"

namespace tessaly {

class TrashCan {
 public:
  virtual ~TrashCan() = default;

  // How many items were thrown away and lie there still; what is inside a folder does not count.
  virtual Result<std::int64_t> count() = 0;

  // Deletes them all for good. An error of the kind notSupported when that is not to be had.
  virtual Outcome empty() = 0;
};

}  // namespace tessaly
