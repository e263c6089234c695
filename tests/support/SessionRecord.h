// What one step changes of a session, by the names of its fields, and of its user's settings, by
// their keys: so that a test can say what a step changes and that it changes nothing else.
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

  // Keeps what everything is now. Both outlive the record.
  SessionRecord(ScanSession& session, const SettingsStore& settings) : session_(session) {
    using S = ScanSession;
    keep("pane", &S::paneChanged, &S::pane);
    keep("status", &S::statusChanged, &S::status);
    keep("progress", &S::progressChanged, &S::progress);
    keep("scanPercent", &S::scanPercentChanged, &S::scanPercent);
    keep("errorMessage", &S::errorMessageChanged, &S::errorMessage);
    keep("stack", &S::stackChanged, &S::stack);
    keep("vizMode", &S::vizModeChanged, &S::vizMode);
    keep("filters", &S::filtersChanged, &S::filters);
    keep("queue", &S::queueChanged, &S::queue);
    keep("queueOpen", &S::queueOpenChanged, &S::queueOpen);
    keep("queueMinimized", &S::queueMinimizedChanged, &S::queueMinimized);
    keep("searchOpen", &S::searchOpenChanged, &S::searchOpen);
    keep("disk", &S::diskChanged, &S::disk);
    keep("trashCount", &S::trashCountChanged, &S::trashCount);
    keep("scanRoot", &S::scanRootChanged, &S::scanRoot);
    keep("menuNode", &S::menuNodeChanged, &S::menuNode);
    keep("criticalWarning", &S::criticalWarningChanged, &S::criticalWarning);
    keep("recents", &S::recentsChanged, &S::recents);
    keep("volumes", &S::volumesChanged, &S::volumes);
    keep("deltas", &S::deltasChanged,
         [](const S& s) { return std::pair(s.deltas(), s.grewPaths()); });
    keep("toast", &S::toastChanged, &S::toast);
    keep("failures", &S::failureChanged, &S::failures);
    keep("focused", &S::focusedChanged, &S::focused);
    keep("selection", &S::selectionChanged,
         [](const S& s) { return std::pair(s.selected(), s.selectedNodes()); });
    keep("heatmap", &S::heatmapChanged, &S::heatmap);
    keep("compareRows", &S::compareRowsChanged, &S::compareRows);
    keep("compareNames", &S::compareNamesChanged,
         [](const S& s) { return std::pair(s.compareLeftName(), s.compareRightName()); });
    keep("watching", &S::watchingChanged, &S::watching);
    keep("watchPath", &S::watchPathChanged, &S::watchPath);
    keep("watchGrew", &S::watchGrewChanged, &S::watchGrew);
    keep("pins", &S::pinsChanged, &S::pins);
    keep("lastTrashed", &S::lastTrashedChanged, &S::lastTrashed);
    keep("scanStats", &S::scanStatsChanged, &S::scanStats);
    keep("unreadable", &S::unreadableChanged, &S::unreadable);
    keep("largest", &S::largestChanged, &S::largest);
    keep("emptyFolders", &S::emptyFoldersChanged, &S::emptyFolders);
    keep("excludes", &S::excludesChanged, &S::excludes);
    keep("history", &S::historyChanged, &S::history);
    keep("aiOpen", &S::aiOpenChanged, &S::aiOpen);
    keep("ocrOpen", &S::ocrOpenChanged, &S::ocrOpen);
    for (const char* key : {"marrow.recents", "marrow.pins", "marrow.excludes"})
      keepSetting(key, [&settings, key] { return settings.texts(key); });
    keepSetting("marrow.lastScanRoot",
                [&settings] { return settings.text("marrow.lastScanRoot"); });
    keepSetting("marrow.filters", [&settings] { return settings.binary("marrow.filters"); });
  }
  SessionRecord(const SessionRecord&) = delete;
  SessionRecord& operator=(const SessionRecord&) = delete;

  // The fields and settings that are not what they were.
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
  // The fields whose signal has come since.
  const Names& announced() const { return announced_; }

 private:
  struct Row {
    std::string name;
    std::function<bool()> isAsItWas;
  };

  template <class Read>
  void keep(const char* name, void (ScanSession::*signal)(), Read read) {
    using Value = std::decay_t<std::invoke_result_t<Read, const ScanSession&>>;
    const Value before = std::invoke(read, std::as_const(session_));
    fields_.push_back({name, [this, read, before] {
                         return std::invoke(read, std::as_const(session_)) == before;
                       }});
    QObject::connect(&session_, signal, &context_, [this, name] { announced_.insert(name); });
  }

  template <class Read>
  void keepSetting(const char* key, Read read) {
    settings_.push_back({key, [read, before = read()] { return read() == before; }});
  }

  ScanSession& session_;
  QObject context_;
  std::vector<Row> fields_;
  std::vector<Row> settings_;
  Names announced_;
};

}  // namespace tessaly
