// The live watch of a folder: reads its sizes every 20 seconds (a look), and reports items that
// have grown by at least a mebibyte since the watch began.
//
// Main thread only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QObject>

#include "scan/FolderSnapshot.h"
#include "scan/ScanDelta.h"
#include "session/Jobs.h"
#include "session/Messages.h"
#include "session/SessionServices.h"

namespace tessaly {

class LiveWatch : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool watching READ watching NOTIFY watchingChanged)

 public:
  // `services` and everything it refers to must outlive the watch.
  LiveWatch(const SessionServices& services, Flash flash);

  bool watching() const { return watching_; }
  const std::string& watchPath() const { return watchPath_; }
  // The items of the watched folder that have grown since the watch began, largest growth first.
  const std::vector<ScanDelta>& watchGrew() const { return watchGrew_; }

  // Replaces the running watch.
  void startWatch(const std::string& path, const std::string& name);
  // Scans and navigation do not stop the watch.
  Q_INVOKABLE void stopWatch();
  // Looks once more, outside of the schedule. Does nothing before the watch has its baseline, or
  // during a look.
  void pollWatch();

  // Stops the watch without waiting for a running look.
  void end() { jobs_.end(); }

 signals:
  void watchingChanged();
  void watchPathChanged();
  void watchGrewChanged();

 private:
  void forget();
  void begin(std::shared_ptr<const FolderSnapshot> baseline, const std::string& name);
  void tickLater();
  void takeGrowth(std::vector<ScanDelta> grown);

  const SessionServices& services_;
  Flash flash_;
  Jobs jobs_;
  Job first_;  // the look that takes the baseline; cancelling it also disables the watch's timer
  Job look_;   // the latest of the other looks
  std::shared_ptr<const FolderSnapshot> baseline_;
  bool isLooking_ = false;  // whether one of the other looks is running
  bool watching_ = false;
  std::string watchPath_;
  std::vector<ScanDelta> watchGrew_;
};

}  // namespace tessaly
