// The latest figures of the machine: disk usage, mounted volumes, and number of items in the Trash.
//
// Main thread only. A field keeps its value until the machine answers.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "platform/ApplicationIcon.h"
#include "platform/NotificationCenter.h"
#include "scan/DiskNode.h"
#include "session/FieldChanges.h"
#include "session/MarrowPrefs.h"
#include "system/DiskUsage.h"
#include "system/MachineFigures.h"
#include "system/VolumeMount.h"

namespace tessaly {

class MachineState : public QObject {
  Q_OBJECT

 public:
  // All of them must outlive the object.
  struct Services {
    MachineFigures& figures;
    ApplicationIcon& icon;  // its badge shows the disk usage
    MarrowPrefs& prefs;     // for the warning about a nearly full disk
    NotificationCenter& notifications;
    std::function<std::chrono::system_clock::time_point()> date;
  };

  // Asks for the disk usage and the mounted volumes. Sets no badge and gives no warning.
  explicit MachineState(Services services);

  const DiskUsage& disk() const { return disk_; }  // of the start-up volume
  std::int64_t trashCount() const { return trashCount_; }
  const std::vector<VolumeMount>& volumes() const { return volumes_; }
  // The name of the mounted volume that contains the node on screen.
  std::string currentVolumeName(const std::optional<DiskNode>& current) const;

  // Asks for the disk usage and the number of items in the Trash. The second form makes an
  // immediate answer part of the step.
  void refreshDisk();
  void refreshDisk(FieldChanges& changes);
  // Asks for the mounted volumes.
  void refreshVolumes(FieldChanges& changes);

 signals:
  void diskChanged();
  void trashCountChanged();
  void volumesChanged();

 private:
  template <class Answer>
  using Question = void (MachineFigures::*)(MachineFigures::Take<Answer>);
  // Calls `use` with the step that the answer belongs to, and the answer.
  template <class Answer, class Use>
  void askFor(FieldChanges& changes, Question<Answer> question, Use use);
  void setDisk(FieldChanges& changes, const DiskUsage& disk);

  Services services_;
  DiskUsage disk_;
  std::int64_t trashCount_ = 0;
  std::vector<VolumeMount> volumes_;
};

}  // namespace tessaly
