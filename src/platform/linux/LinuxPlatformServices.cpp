#include "platform/ApplicationSupport.h"
#include "platform/OwnExecutable.h"
#include "platform/PlatformServices.h"
#include "platform/linux/AutostartLoginItem.h"
#include "platform/linux/LinuxMountedVolumes.h"
#include "platform/linux/UserTrashCan.h"
#include "platform/linux/trash/UserTrashMover.h"

namespace tessaly {

namespace {

class LinuxPlatformServices final : public PlatformServices {
 public:
  std::unique_ptr<TrashMover> makeTrashMover() const override {
    return std::make_unique<UserTrashMover>();
  }

  std::unique_ptr<TrashCan> makeTrashCan() const override {
    return std::make_unique<UserTrashCan>();
  }

  std::unique_ptr<MountedVolumes> makeMountedVolumes() const override {
    return std::make_unique<LinuxMountedVolumes>();
  }

  std::unique_ptr<LoginItem> makeLoginItem() const override {
    return std::make_unique<AutostartLoginItem>(settingsDirectory() + "/autostart",
                                                ownExecutable());
  }
};

}  // namespace

const PlatformServices& platformServices() {
  static const LinuxPlatformServices services;
  return services;
}

}  // namespace tessaly
