#include "session/MachineState.h"

#include <memory>
#include <utility>

#include <QPointer>

#include "look/Wording.h"
#include "scan/Percent.h"
#include "session/DiskAlert.h"

namespace tessaly {

MachineState::MachineState(Services services) : services_(std::move(services)) {
  // Nothing is connected yet, so answers that come at once need no signal.
  FieldChanges changes;
  askFor(changes, &MachineFigures::askDisk, [this](FieldChanges& step, const DiskUsage& disk) {
    step.set(this, disk_, disk, &MachineState::diskChanged);
  });
  refreshVolumes(changes);
}

// An answer that comes at once is part of the step that asked. A later one is a step of its own.
template <class Answer, class Use>
void MachineState::askFor(FieldChanges& changes, Question<Answer> question, Use use) {
  const auto step = std::make_shared<FieldChanges*>(&changes);
  (services_.figures.*question)([self = QPointer(this), step, use](const Answer& answer) {
    if (!self) return;
    if (*step != nullptr) {
      use(**step, answer);
      return;
    }
    FieldChanges own;
    use(own, answer);
    own.announce();
  });
  *step = nullptr;
}

void MachineState::refreshDisk() {
  FieldChanges changes;
  refreshDisk(changes);
  changes.announce();
}

void MachineState::refreshDisk(FieldChanges& changes) {
  askFor(changes, &MachineFigures::askDisk,
         [this](FieldChanges& step, const DiskUsage& disk) { setDisk(step, disk); });
  askFor(changes, &MachineFigures::askTrashCount,
         [this](FieldChanges& step, const std::int64_t& count) {
           step.set(this, trashCount_, count, &MachineState::trashCountChanged);
         });
}

void MachineState::refreshVolumes(FieldChanges& changes) {
  askFor(changes, &MachineFigures::askVolumes,
         [this](FieldChanges& step, const std::vector<VolumeMount>& volumes) {
           step.set(this, volumes_, volumes, &MachineState::volumesChanged);
         });
}

void MachineState::setDisk(FieldChanges& changes, const DiskUsage& disk) {
  changes.set(this, disk_, disk, &MachineState::diskChanged);
  services_.icon.setBadge(Percent::rounded(disk_.usedPercent));
  DiskAlert::check(disk_.usedPercent, services_.prefs, services_.prefs.defaults(),
                   services_.notifications, services_.date());
}

std::string MachineState::currentVolumeName(const std::optional<DiskNode>& current) const {
  if (current) {
    const std::string path = current->path();
    for (const VolumeMount& volume : volumes_) {
      if (volume.path != "/" && path.starts_with(volume.path)) return volume.name;
    }
  }
  return Wording::current().startupDisk;
}

}  // namespace tessaly
