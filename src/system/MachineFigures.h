// How full the start-up volume is, which volumes are mounted, and how many items lie in the Trash.
//
// Each is asked for, and the answer comes when the machine has it: before the call returns, or
// later. Where the machine does not answer at all, none comes, and whoever asked keeps what he had.
// Answers to one question come in the order in which it was asked; of several that wait, one look
// at the machine answers all.
//
// Main thread only; answers come there too. Once the object is gone, no more of them come.
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
