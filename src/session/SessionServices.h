// The services of the machine that the session and its parts use.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/ApplicationIcon.h"
#include "platform/Dispatch.h"
#include "platform/FolderPanel.h"
#include "platform/NotificationCenter.h"
#include "platform/Pasteboard.h"
#include "platform/SavePanel.h"
#include "platform/TrashMover.h"
#include "platform/Workspace.h"
#include "reclaim/ZipEngine.h"
#include "scan/DiskNode.h"
#include "scan/DiskScanner.h"
#include "scan/FolderSnapshot.h"
#include "scan/FolderWatch.h"
#include "session/MarrowPrefs.h"
#include "session/PostScanAnalysis.h"
#include "session/ScanStore.h"
#include "session/WinsPass.h"
#include "system/DiskUsage.h"
#include "system/MachineFigures.h"
#include "system/Shell.h"

namespace tessaly {

// All of them must outlive the session, the Dispatch also its walks, and the Trash also the moves
// on a worker queue. If a function is empty, the named one is used.
struct SessionServices {
  using Clock = std::chrono::steady_clock;
  using Walk = std::function<DiskNode(const std::string& root, const DiskScanner::Callbacks&,
                                      const DiskScanner::Options&)>;
  using Archive = std::function<ZipEngine::Archived(const ZipEngine::Request&)>;
  using Snapshot =
      std::function<FolderSnapshot(const std::string& path, const FolderWatch::IsCancelled&)>;

  Dispatch& dispatch;
  FolderPanel& folderPanel;
  SavePanel& savePanel;
  Workspace& workspace;
  Pasteboard& pasteboard;
  ApplicationIcon& icon;
  NotificationCenter& notifications;
  TrashMover& trash;
  MarrowPrefs& prefs;  // the settings behind prefs
  std::string homeDirectory;
  ScanStore::Directory supportDirectory = {};                        // ScanStore::supportDir()
  PostScanAnalysis::Engines analysis = {};                           // none
  WinsPass::Engines wins = {};                                       // none
  Walk walk = {};                                                    // DiskScanner::scan
  Archive archive = {};                                              // ZipEngine::archive
  Snapshot snapshot = {};                                            // FolderWatch::snapshot
  Shell::Run run = {};                                               // Shell::run
  std::function<std::optional<DiskUsage>()> volumeUsage = {};        // DiskSpace::volumeUsage
  std::function<Clock::time_point()> now = {};                       // the steady clock
  std::function<std::chrono::system_clock::time_point()> date = {};  // the system's clock
  MachineFigures* figures = nullptr;  // ToolFigures of `run` and `volumeUsage`
};

}  // namespace tessaly
