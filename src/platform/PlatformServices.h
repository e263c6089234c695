// The operating system's services that are objects, each created on request. Each system has one
// implementation, in its own folder; CMake links one of them, and app/main passes it to the
// program.
#pragma once

#include <memory>

#include "platform/LoginItem.h"
#include "platform/MountedVolumes.h"
#include "platform/TrashCan.h"
#include "platform/TrashMover.h"

namespace tessaly {

// Safe from any thread. All services are for the user of this process.
class PlatformServices {
 public:
  virtual ~PlatformServices() = default;

  virtual std::unique_ptr<TrashMover> makeTrashMover() const = 0;
  virtual std::unique_ptr<TrashCan> makeTrashCan() const = 0;
  virtual std::unique_ptr<MountedVolumes> makeMountedVolumes() const = 0;  // of this machine
  virtual std::unique_ptr<LoginItem> makeLoginItem() const = 0;            // of the running program
};

// The services of the system that the program is built for.
const PlatformServices& platformServices();

}  // namespace tessaly
