// Usage of the start-up volume, the mounted volumes, and the number of items in the Trash.
//
// Each function asks for one of them and passes the answer to `take` when the machine has it:
// before the call returns, or later. If the machine does not answer, `take` is not called, and the
// caller keeps its old values. Answers to one question come in the order of the calls; calls that
// wait together share one answer.
//
// Main thread only; answers come on it too. No answer comes after the object is destroyed.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "system/DiskUsage.h"
#include "system/VolumeMount.h"

namespace tessaly {

class MachineFigures {
 public:
  template <class Answer>
  using Take = std::function<void(const Answer& answer)>;

  virtual ~MachineFigures() = default;

  virtual void askDisk(Take<DiskUsage> take) = 0;
  virtual void askVolumes(Take<std::vector<VolumeMount>> take) = 0;
  virtual void askTrashCount(Take<std::int64_t> take) = 0;
};

}  // namespace tessaly
