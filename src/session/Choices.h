// The user's choices that the settings keep: excluded folders, filters and pins; and the roots that
// were scanned last.
//
// Main thread only.
#pragma once

#include <string>
#include <vector>

#include <QObject>

#include "platform/FolderPanel.h"
#include "platform/SettingsStore.h"
#include "scan/DiskScanner.h"
#include "session/Messages.h"
#include "treemap/BloatFilter.h"

namespace tessaly {

class Choices : public QObject {
  Q_OBJECT

 public:
  // Reads the settings. Settings and panel must outlive the choices.
  Choices(SettingsStore& settings, FolderPanel& folderPanel, Flash flash);

  const std::vector<BloatFilter>& filters() const { return filters_; }
  void setFilters(std::vector<BloatFilter> filters);
  const std::vector<std::string>& excludes() const { return excludes_; }
  void setExcludes(std::vector<std::string> excludes);
  const std::vector<std::string>& pins() const { return pins_; }        // newest first
  const std::vector<std::string>& recents() const { return recents_; }  // newest first

  // The options of the next scan: what it leaves out.
  DiskScanner::Options scanOptions() const;

  // Asks for a folder that later scans leave out.
  Q_INVOKABLE void addExclude();
  void removeExclude(const std::string& path);
  // Switch a filter: its highlight on the map, and whether the next scan leaves out what it
  // matches.
  void toggleFilter(const std::string& id);
  void toggleSkip(const std::string& id);
  // Pins a folder, or unpins it.
  void togglePin(const std::string& path);
  // Puts `root` first among the recent roots, when a scan of it has ended.
  void pushRecent(FieldChanges& changes, const std::string& root);

 signals:
  void filtersChanged();
  void excludesChanged();
  void pinsChanged();
  void recentsChanged();

 private:
  void toggle(const std::string& id, bool BloatFilter::*which);

  SettingsStore& settings_;
  FolderPanel& folderPanel_;
  Flash flash_;
  std::vector<BloatFilter> filters_;
  std::vector<std::string> excludes_;
  std::vector<std::string> pins_;
  std::vector<std::string> recents_;
};

}  // namespace tessaly
