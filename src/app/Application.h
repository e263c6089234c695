// Assembles the program: the desktop behind the interfaces of platform/, the session, and the
// window that shows it. The program, the journeys and the picture tool all use it.
//
// Main thread only. One at a time.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include "app/commands/MenuCommands.h"
#include "app/desktop/DesktopServices.h"
#include "app/desktop/MainQueue.h"
#include "app/desktop/WindowActivation.h"
#include "app/desktop/WindowStart.h"
#include "app/model/NodeActions.h"
#include "app/overlays/AccessGateActions.h"
#include "app/quicklook/PreviewWindow.h"
#include "app/quicklook/QuickLook.h"
#include "platform/ApplicationIcon.h"
#include "platform/Dispatch.h"
#include "platform/FolderPanel.h"
#include "platform/GlobalHotKey.h"
#include "platform/GuardedTrashMover.h"
#include "platform/LoginItem.h"
#include "platform/NotificationCenter.h"
#include "platform/Pasteboard.h"
#include "platform/PlatformServices.h"
#include "platform/PreviewPanel.h"
#include "platform/Process.h"
#include "platform/SavePanel.h"
#include "platform/SettingsStore.h"
#include "platform/StatusBarExtra.h"
#include "platform/ThreadedDispatch.h"
#include "platform/TrashMover.h"
#include "platform/Workspace.h"
#include "reclaim/OpenTool.h"
#include "session/AccessController.h"
#include "session/AppDelegate.h"
#include "session/MarrowPrefs.h"
#include "session/ScanSession.h"
#include "session/SettingsFile.h"
#include "session/StatusBar.h"

namespace tessaly {

class ViewStates;
class WindowState;

class Application {
 public:
  // The services of the system, and replacements for tests. Anything null or empty is made by
  // `platform` and `desktop`, or is the real thing. The objects must outlive the Application.
  struct Services {
    const PlatformServices& platform;
    const DesktopServices& desktop;
    Dispatch* dispatch = nullptr;
    FolderPanel* folderPanel = nullptr;
    SavePanel* savePanel = nullptr;
    Workspace* workspace = nullptr;
    Pasteboard* pasteboard = nullptr;
    PreviewPanel* previewPanel = nullptr;
    ApplicationIcon* icon = nullptr;
    NotificationCenter* notifications = nullptr;
    TrashMover* trash = nullptr;
    SettingsStore* settings = nullptr;
    std::optional<OpenTool> openTool = {};  // opens terminals and editors
    AccessController::Probe access = {};    // whether the whole disk can be read
    std::function<Outcome(const Process::Launch&)> launch = {};  // starts another instance
    std::function<void()> giveUpInstance = {};                   // lets it run beside this one
    std::function<void()> quit = {};
    LoginItem* loginItem = nullptr;
    StatusBarExtra* statusBar = nullptr;
    GlobalHotKey* hotKey = nullptr;
    std::string homeDirectory = {};
    ScanStore::Directory supportDirectory = {};  // where scans store their files
    SessionServices::Walk walk = {};
    // Of a finished scan; by default all that exist, with `run`.
    std::optional<PostScanAnalysis::Engines> analysis = {};
    WinsPass::Engines wins = {};  // find what can be won back
    Shell::Run run = {};
    std::function<std::optional<DiskUsage>()> volumeUsage = {};
    std::function<SessionServices::Clock::time_point()> now = {};
    std::function<std::chrono::system_clock::time_point()> date = {};
    // By default the figures of `run` and `volumeUsage` if one of these is set.
    MachineFigures* figures = nullptr;
  };

  // The look of everything drawn: style, fonts, colours of dialogs, renderer. Call it once, after
  // the QApplication is created.
  static void setUpLook();

  // Creates the session and the hidden window. Ends the program with a message if the window cannot
  // be created, which happens only in a broken build.
  explicit Application(const Services& services);
  ~Application();

  // Starts the program's work: shows the window unless it starts hidden.
  void launch();
  // The program was started again while it runs.
  void reopen();

  // The steps of Quitting that concern this object. Objects provided by a test are not touched.
  void hideWindows();
  void leaveDesktop();
  void endWriting();
  void giveUpWork();
  bool isBusy() const;
  bool isMoving() const;

  ScanSession& session() { return *session_; }
  AccessController& access() { return *access_; }
  QQuickWindow& window() { return *window_; }

 private:
  void lookAgain();
  void bringForward();
  void installHotKey(GlobalHotKey& hotKey);

  MainQueue mainQueue_;
  std::unique_ptr<GuardedTrashMover> ownTrash_;  // the workers of the dispatch use it
  std::unique_ptr<ThreadedDispatch> ownDispatch_;
  std::unique_ptr<FolderPanel> ownFolderPanel_;
  std::unique_ptr<SavePanel> ownSavePanel_;
  std::unique_ptr<Workspace> ownWorkspace_;
  std::unique_ptr<Pasteboard> ownPasteboard_;
  std::unique_ptr<DesktopIcon> ownIcon_;
  std::unique_ptr<NotificationCenter> ownNotifications_;
  std::unique_ptr<SettingsFile> ownSettings_;
  std::unique_ptr<LoginItem> ownLoginItem_;
  std::unique_ptr<StatusBarExtra> ownStatusBar_;
  std::unique_ptr<MarrowPrefs> prefs_;
  std::unique_ptr<MachineFigures> ownFigures_;  // destroyed before the objects that get its answers
  std::unique_ptr<AccessController> access_;
  std::unique_ptr<ScanSession> session_;
  WindowActivation activation_;
  std::unique_ptr<AppDelegate> delegate_;
  std::unique_ptr<NodeActions> nodeActions_;
  std::unique_ptr<CommandTarget> commandTarget_;
  std::unique_ptr<MenuCommands> commands_;
  std::unique_ptr<AccessGateActions> gateActions_;
  std::unique_ptr<ViewStates> viewStates_;
  std::unique_ptr<WindowState> windowState_;
  std::unique_ptr<QQmlApplicationEngine> engine_;
  std::unique_ptr<PreviewWindow> ownPreviewPanel_;
  std::unique_ptr<QuickLook> quickLook_;
  QQuickWindow* window_ = nullptr;
  std::unique_ptr<StatusBar> statusBar_;
  std::unique_ptr<WindowStart> windowStart_;
  std::function<void()> clearLeftovers_;
  std::unique_ptr<GlobalHotKey> ownHotKey_;  // destroyed first: it calls the others
};

}  // namespace tessaly
