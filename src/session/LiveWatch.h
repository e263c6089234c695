// The live watch of a folder: looks at it every 20 seconds, and tells what in it has grown by a
// mebibyte or more since the watch began.
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
  // `services` and what they name outlive the watch.
  LiveWatch(const SessionServices& services, Flash flash);

  bool watching() const { return watching_; }
  const std::string& watchPath() const { return watchPath_; }
  // What has grown in the watched folder since the watch began, largest growth first.
  const std::vector<ScanDelta>& watchGrew() const { return watchGrew_; }

  // Replaces the watch that runs.
  void startWatch(const std::string& path, const std::string& name);
  // Neither a scan nor a way through the tree does this.
  Q_INVOKABLE void stopWatch();
  // Looks once more, out of turn. Does nothing before the watch has its first look, and while it
  // looks.
  void pollWatch();

  // Stops the watch without waiting for a look that is under way.
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
  Job first_;  // the first look of the watch that runs; once cancelled, its timer is void too
  Job look_;   // the latest of the others
  std::shared_ptr<const FolderSnapshot> baseline_;
  bool isLooking_ = false;  // a look of the watch that runs is under way, the first one aside
  bool watching_ = false;
  std::string watchPath_;
  std::vector<ScanDelta> watchGrew_;
};

}  // namespace tessaly
