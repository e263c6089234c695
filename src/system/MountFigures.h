// The figures on a system that lists its mounts itself. Starts no tool and blocks nobody: each file
// system is asked on its own, on a worker queue, and for a few seconds at most.
//
// A volume that does not answer is listed without its figures, and its Trash is not counted. A
// volume that answers with an error is not listed.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "platform/Dispatch.h"
#include "platform/MountedVolumes.h"
#include "platform/Places.h"
#include "system/MachineFigures.h"

namespace tessaly {

class MountFigures final : public MachineFigures {
 public:
  using VolumeUsage = std::function<std::optional<DiskUsage>()>;

  // Time limits for the answer of one volume.
  static constexpr std::chrono::seconds diskPatience{5};
  static constexpr std::chrono::seconds volumePatience{6};
  static constexpr std::chrono::seconds trashPatience{6};

  struct Services {
    Dispatch& dispatch;                       // must outlive the object
    std::shared_ptr<MountedVolumes> volumes;  // kept alive while any volume has not answered
    VolumeUsage volumeUsage = {};             // empty: DiskSpace::volumeUsage
  };

  explicit MountFigures(Services services, const Places& places = Places::current());
  ~MountFigures() override;

  void askDisk(Take<DiskUsage> take) override;
  void askVolumes(Take<std::vector<VolumeMount>> take) override;
  void askTrashCount(Take<std::int64_t> take) override;

 private:
  class Looks;

  std::shared_ptr<Looks> looks_;
};

}  // namespace tessaly
