// What the machine has told last: how full the disk is, what is mounted, and how many items are in
// the Trash.
//
// Main thread only. A field stays as it is until the machine answers.
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
  // All of it outlives the object.
  struct Services {
    MachineFigures& figures;
    ApplicationIcon& icon;  // its badge tells how full the disk is
    MarrowPrefs& prefs;     // for the warning of a disk that is nearly full
    NotificationCenter& notifications;
    std::function<std::chrono::system_clock::time_point()> date;
  };

  // Asks how full the disk is and what is mounted. Neither badge nor warning comes of that.
  explicit MachineState(Services services);

  const DiskUsage& disk() const { return disk_; }  // of the start-up volume
  std::int64_t trashCount() const { return trashCount_; }
  const std::vector<VolumeMount>& volumes() const { return volumes_; }
  // The name of the mounted volume that holds the node on screen.
  std::string currentVolumeName(const std::optional<DiskNode>& current) const;

  // Asks anew how full the disk is and what is in the Trash. The second form answers as part of
  // the step where the machine answers at once.
  void refreshDisk();
  void refreshDisk(FieldChanges& changes);
  // Asks anew what is mounted.
  void refreshVolumes(FieldChanges& changes);

 signals:
  void diskChanged();
  void trashCountChanged();
  void volumesChanged();

 private:
  template <class Answer>
  using Question = void (MachineFigures::*)(MachineFigures::Take<Answer>);
  // `use` is given the step that the answer belongs to, and the answer.
  template <class Answer, class Use>
  void askFor(FieldChanges& changes, Question<Answer> question, Use use);
  void setDisk(FieldChanges& changes, const DiskUsage& disk);

  Services services_;
  DiskUsage disk_;
  std::int64_t trashCount_ = 0;
  std::vector<VolumeMount> volumes_;
};

}  // namespace tessaly
