// Figures that a test answers by hand, at any time or never.
#pragma once

#include <utility>
#include <vector>

#include "system/MachineFigures.h"

namespace tessaly {

class HeldFigures final : public MachineFigures {
 public:
  void askDisk(Take<DiskUsage> take) override { disk.push_back(std::move(take)); }
  void askVolumes(Take<std::vector<VolumeMount>> take) override {
    volumes.push_back(std::move(take));
  }
  void askTrashCount(Take<std::int64_t> take) override { trashCount.push_back(std::move(take)); }

  // Answers all questions so far.
  template <class Answer>
  static void answer(std::vector<Take<Answer>>& asked, const Answer& answer) {
    for (const Take<Answer>& take : std::exchange(asked, {})) take(answer);
  }

  std::vector<Take<DiskUsage>> disk;
  std::vector<Take<std::vector<VolumeMount>>> volumes;
  std::vector<Take<std::int64_t>> trashCount;
};

}  // namespace tessaly
