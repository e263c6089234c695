// The figures of a system that has tools for them. Each question starts a tool and waits for it, so
// that the answer is there when the call returns; what a tool fails to tell counts as nothing.
#pragma once

#include <optional>

#include "system/MachineFigures.h"
#include "system/Shell.h"

namespace tessaly {

class ToolFigures final : public MachineFigures {
 public:
  using VolumeUsage = std::function<std::optional<DiskUsage>()>;

  // Where a function is empty, Shell::run and DiskSpace::volumeUsage are taken.
  explicit ToolFigures(Shell::Run run = {}, VolumeUsage volumeUsage = {});

  void askDisk(Take<DiskUsage> take) override;
  void askVolumes(Take<std::vector<VolumeMount>> take) override;
  void askTrashCount(Take<std::int64_t> take) override;

 private:
  Shell::Run run_;
  VolumeUsage volumeUsage_;
};

}  // namespace tessaly
