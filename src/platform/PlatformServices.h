// What an operating system does for the program by objects, each made when it is asked for. There
// is one implementation for each system, in the folder of that system; CMake links one of them, and
// app/main hands it to the program.
#pragma once

#include <memory>

#include "platform/LoginItem.h"
#include "platform/MountedVolumes.h"
#include "platform/TrashCan.h"
#include "platform/TrashMover.h"

namespace tessaly {

// Safe from any thread. All of it is for the user that this process runs as.
class PlatformServices {
 public:
  virtual ~PlatformServices() = default;

  virtual std::unique_ptr<TrashMover> makeTrashMover() const = 0;
  virtual std::unique_ptr<TrashCan> makeTrashCan() const = 0;
  virtual std::unique_ptr<MountedVolumes> makeMountedVolumes() const = 0;  // of this machine
  virtual std::unique_ptr<LoginItem> makeLoginItem() const = 0;  // of the program that runs
};

// Those of the system that the program is built for.
const PlatformServices& platformServices();

}  // namespace tessaly
