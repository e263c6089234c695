// The figures on a system that has tools for them. Each call starts a tool and waits for it, so the
// answer comes before the call returns; a figure that a tool fails to print is 0 or empty.
#pragma once

#include <optional>

#include "system/MachineFigures.h"
#include "system/Shell.h"

namespace tessaly {

class ToolFigures final : public MachineFigures {
 public:
  using VolumeUsage = std::function<std::optional<DiskUsage>()>;

  // Empty functions stand for Shell::run and DiskSpace::volumeUsage.
  explicit ToolFigures(Shell::Run run = {}, VolumeUsage volumeUsage = {});

  void askDisk(Take<DiskUsage> take) override;
  void askVolumes(Take<std::vector<VolumeMount>> take) override;
  void askTrashCount(Take<std::int64_t> take) override;

 private:
  Shell::Run run_;
  VolumeUsage volumeUsage_;
};

}  // namespace tessaly
