#include "system/ToolFigures.h"

#include <utility>

#include "system/DiskSpace.h"
#include "system/VolumeEngine.h"

namespace tessaly {

ToolFigures::ToolFigures(Shell::Run run, VolumeUsage volumeUsage)
    : run_(std::move(run)), volumeUsage_(std::move(volumeUsage)) {
  if (!volumeUsage_) volumeUsage_ = [] { return DiskSpace::volumeUsage(); };
}

void ToolFigures::askDisk(Take<DiskUsage> take) {
  take(DiskSpace::usage(volumeUsage_(), std::nullopt, run_));
}

void ToolFigures::askVolumes(Take<std::vector<VolumeMount>> take) {
  take(VolumeEngine::list(run_));
}

void ToolFigures::askTrashCount(Take<std::int64_t> take) {
  take(DiskSpace::trashCount(run_));
}

}  // namespace tessaly
