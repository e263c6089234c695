// Fakes of all services of the machine that a session uses. Nothing of the user's is read or
// changed, and no tool can be started unless a test provides one.
#pragma once

#include <string>
#include <vector>

#include "platform/Process.h"
#include "session/MarrowPrefs.h"
#include "session/ScanSession.h"
#include "support/FakeApplicationIcon.h"
#include "support/FakeFolderPanel.h"
#include "support/FakeHotKey.h"
#include "support/FakeLoginItem.h"
#include "support/FakeNotificationCenter.h"
#include "support/FakeOpenTool.h"
#include "support/FakePasteboard.h"
#include "support/FakePreviewPanel.h"
#include "support/FakeSavePanel.h"
#include "support/FakeStatusBarExtra.h"
#include "support/FakeWorkspace.h"
#include "support/HandSteppedDispatch.h"
#include "support/MemorySettings.h"
#include "support/MemoryTrash.h"
#include "support/NoTools.h"
#include "support/TempTree.h"
#include "system/DiskUsage.h"

namespace tessaly {

struct FakeMachine {
  HandSteppedDispatch dispatch;
  FakeFolderPanel folderPanel;
  FakeSavePanel savePanel;
  FakeWorkspace workspace;
  FakePasteboard pasteboard;
  FakePreviewPanel previewPanel;
  FakeOpenTool openTool;
  FakeApplicationIcon icon;
  FakeNotificationCenter notifications;
  FakeLoginItem loginItem;
  FakeStatusBarExtra statusBar;
  FakeHotKey hotKey;
  MemoryTrash trash;
  bool isAccessGranted = true;
  DiskUsage disk = {.total = 1000, .used = 400, .free = 600, .usedPercent = 40, .purgeable = 0};
  std::vector<Process::Launch> launched;  // starts of another instance
  int timesQuit = 0;
  MemorySettings settings;
  MarrowPrefs prefs{settings};
  TempTree support;

  // Services for a session of a user with the home `homeDirectory`.
  ScanSession::Services services(const std::string& homeDirectory) {
    return services(homeDirectory, dispatch, folderPanel);
  }

  // The same with other queues and another panel.
  ScanSession::Services services(const std::string& homeDirectory, Dispatch& lentDispatch,
                                 FolderPanel& lentPanel) {
    return {.dispatch = lentDispatch,
            .folderPanel = lentPanel,
            .savePanel = savePanel,
            .workspace = workspace,
            .pasteboard = pasteboard,
            .icon = icon,
            .notifications = notifications,
            .trash = trash,
            .prefs = prefs,
            .homeDirectory = homeDirectory,
            .supportDirectory = support.path(),
            .run = noTools};
  }
};

}  // namespace tessaly
