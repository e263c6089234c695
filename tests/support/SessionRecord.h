// Which fields of a session and which settings a step changes, by name, so that a test can check
// that it changes nothing else.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

#include "platform/SettingsStore.h"
#include "session/ScanSession.h"

namespace tessaly {

class SessionRecord {
 public:
  using Names = std::set<std::string>;

  // Stores the present state. Both arguments must outlive the record.
  SessionRecord(ScanSession& session, const SettingsStore& settings) {
    keep("pane", session.shown(), &Shown::paneChanged, &Shown::pane);
    keep("status", session.run(), &ScanRun::statusChanged, &ScanRun::status);
    keep("progress", session.run(), &ScanRun::progressChanged, &ScanRun::progress);
    keep("scanPercent", session.run(), &ScanRun::scanPercentChanged, &ScanRun::scanPercent);
    keep("errorMessage", session.run(), &ScanRun::errorMessageChanged, &ScanRun::errorMessage);
    keep("stack", session.navigation(), &Navigation::stackChanged, &Navigation::stack);
    keep("vizMode", session.shown(), &Shown::vizModeChanged, &Shown::vizMode);
    keep("filters", session.choices(), &Choices::filtersChanged, &Choices::filters);
    keep("queue", session.cleanupQueue(), &CleanupQueue::queueChanged, &CleanupQueue::queue);
    keep("queueOpen", session.cleanupQueue(), &CleanupQueue::queueOpenChanged,
         &CleanupQueue::queueOpen);
    keep("queueMinimized", session.cleanupQueue(), &CleanupQueue::queueMinimizedChanged,
         &CleanupQueue::queueMinimized);
    keep("searchOpen", session.shown(), &Shown::searchOpenChanged, &Shown::searchOpen);
    keep("disk", session.machine(), &MachineState::diskChanged, &MachineState::disk);
    keep("trashCount", session.machine(), &MachineState::trashCountChanged,
         &MachineState::trashCount);
    keep("scanRoot", session.run(), &ScanRun::scanRootChanged, &ScanRun::scanRoot);
    keep("menuNode", session.shown(), &Shown::menuNodeChanged, &Shown::menuNode);
    keep("criticalWarning", session.removal(), &Removal::criticalWarningChanged,
         &Removal::criticalWarning);
    keep("recents", session.choices(), &Choices::recentsChanged, &Choices::recents);
    keep("volumes", session.machine(), &MachineState::volumesChanged, &MachineState::volumes);
    keep("deltas", session.result(), &ScanResult::deltasChanged,
         [](const ScanResult& part) { return std::pair(part.deltas(), part.grewPaths()); });
    keep("duplicates", session.findings(), &Findings::duplicatesChanged, &Findings::duplicates);
    keep("duplicateProgress", session.findings(), &Findings::duplicateProgressChanged,
         &Findings::duplicateProgress);
    keep("deadLinks", session.findings(), &Findings::deadLinksChanged, &Findings::deadLinks);
    keep("cloudItems", session.findings(), &Findings::cloudItemsChanged, &Findings::cloudItems);
    keep("cloneGroups", session.findings(), &Findings::cloneGroupsChanged, &Findings::cloneGroups);
    keep("safeItems", session.findings(), &Findings::safeItemsChanged, &Findings::safeItems);
    keep("toast", session.messages(), &Messages::toastChanged, &Messages::toast);
    keep("failures", session.messages(), &Messages::failureChanged, &Messages::failures);
    keep("focused", session.selection(), &Selection::focusedChanged, &Selection::focused);
    keep("selection", session.selection(), &Selection::selectionChanged,
         [](const Selection& part) { return std::pair(part.selected(), part.selectedNodes()); });
    keep("heatmap", session.shown(), &Shown::heatmapChanged, &Shown::heatmap);
    keep("compareRows", session.comparison(), &Comparison::compareRowsChanged,
         &Comparison::compareRows);
    keep("compareNames", session.comparison(), &Comparison::compareNamesChanged,
         [](const Comparison& part) {
           return std::pair(part.compareLeftName(), part.compareRightName());
         });
    keep("comparing", session.comparison(), &Comparison::comparingChanged, &Comparison::comparing);
    keep("watching", session.watch(), &LiveWatch::watchingChanged, &LiveWatch::watching);
    keep("watchPath", session.watch(), &LiveWatch::watchPathChanged, &LiveWatch::watchPath);
    keep("watchGrew", session.watch(), &LiveWatch::watchGrewChanged, &LiveWatch::watchGrew);
    keep("pins", session.choices(), &Choices::pinsChanged, &Choices::pins);
    keep("lastTrashed", session.removal(), &Removal::lastTrashedChanged, &Removal::lastTrashed);
    keep("moving", session.removal(), &Removal::movingChanged, &Removal::isMoving);
    keep("moveProgress", session.removal(), &Removal::progressChanged, &Removal::progress);
    keep("scanStats", session.result(), &ScanResult::scanStatsChanged, &ScanResult::scanStats);
    keep("unreadable", session.result(), &ScanResult::unreadableChanged, &ScanResult::unreadable);
    keep("largest", session.result(), &ScanResult::largestChanged, &ScanResult::largest);
    keep("emptyFolders", session.result(), &ScanResult::emptyFoldersChanged,
         &ScanResult::emptyFolders);
    keep("excludes", session.choices(), &Choices::excludesChanged, &Choices::excludes);
    keep("history", session.result(), &ScanResult::historyChanged, &ScanResult::history);
    keep("aiOpen", session.shown(), &Shown::aiOpenChanged, &Shown::aiOpen);
    keep("ocrOpen", session.shown(), &Shown::ocrOpenChanged, &Shown::ocrOpen);
    for (const char* key : {"marrow.recents", "marrow.pins", "marrow.excludes"})
      keepSetting(key, [&settings, key] { return settings.texts(key); });
    keepSetting("marrow.lastScanRoot",
                [&settings] { return settings.text("marrow.lastScanRoot"); });
    keepSetting("marrow.filters", [&settings] { return settings.binary("marrow.filters"); });
  }
  SessionRecord(const SessionRecord&) = delete;
  SessionRecord& operator=(const SessionRecord&) = delete;

  // The fields and settings that have changed since.
  Names changed() const {
    Names names = changedFields();
    for (const Row& row : settings_)
      if (!row.isAsItWas()) names.insert(row.name);
    return names;
  }
  Names changedFields() const {
    Names names;
    for (const Row& row : fields_)
      if (!row.isAsItWas()) names.insert(row.name);
    return names;
  }
  // The fields that have been announced since.
  const Names& announced() const { return announced_; }

 private:
  struct Row {
    std::string name;
    std::function<bool()> isAsItWas;
  };

  template <class Part, class Read>
  void keep(const char* name, const Part& part, void (Part::*signal)(), Read read) {
    using Value = std::decay_t<std::invoke_result_t<Read, const Part&>>;
    const Value before = std::invoke(read, part);
    fields_.push_back({name, [&part, read, before] { return std::invoke(read, part) == before; }});
    QObject::connect(&part, signal, &context_, [this, name] { announced_.insert(name); });
  }

  template <class Read>
  void keepSetting(const char* key, Read read) {
    settings_.push_back({key, [read, before = read()] { return read() == before; }});
  }

  QObject context_;
  std::vector<Row> fields_;
  std::vector<Row> settings_;
  Names announced_;
};

}  // namespace tessaly
