#include "app/Application.h"

#include <memory>
#include <utility>

#include <QApplication>
#include <QPalette>
#include <QQuickStyle>
#include <QStyleFactory>
#include <QtPlugin>
#include <QtQml/qqmlextensionplugin.h>

#include "app/controls/Fonts.h"
#include "app/controls/QtColor.h"
#include "app/desktop/Renderer.h"
#include "app/preview/PreviewReader.h"
#include "app/preview/ReaderProgram.h"
#include "app/window/ViewStates.h"
#include "app/window/WindowState.h"
#include "look/MarrowTheme.h"
#include "platform/FileAccess.h"
#include "platform/HomeDirectory.h"
#include "platform/Leftovers.h"
#include "platform/MountedVolumes.h"
#include "platform/ResolvedPath.h"
#include "reclaim/BigWinsEngine.h"
#include "reclaim/DeadLinks.h"
#include "reclaim/Offloaded.h"
#include "reclaim/ReclaimAnalysis.h"
#include "reclaim/ReclaimEngine.h"
#include "reclaim/Trash.h"
#include "session/DuplicateFiles.h"
#include "session/SharedBlocks.h"
#include "session/UnusedFiles.h"
#include "system/FullDiskAccess.h"
#include "system/MountFigures.h"
#include "system/ToolFigures.h"

Q_IMPORT_QML_PLUGIN(Tessaly_CommandsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_MapPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_OverlaysPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_PanesPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_QuickLookPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_QueuePlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_SidebarPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_WindowPlugin)

namespace tessaly {

namespace {

// Those of this machine.
WinsPass::Engines winsEnginesOf(const Application::Services& services) {
  const std::shared_ptr<MountedVolumes> volumes = services.platform.makeMountedVolumes();
  return {
      .analyse =
          [volumes, run = services.run](const std::string& home,
                                        const std::optional<DiskNode>& tree,
                                        const WinsPass::IsCancelled& isCancelled) {
            return ReclaimAnalysis::run(
                home, tree, {.files = FileAccess::ofMachine(), .volumes = *volumes, .run = run},
                isCancelled);
          },
      .thin =
          [run = services.run](const WinsPass::IsCancelled& isCancelled) {
            return BigWinsEngine::thinLocalSnapshots(run ? run : Shell::cancellable(isCancelled));
          },
      .isTrashAction = [](std::string_view id) { return ReclaimEngine::isTrashAction(id); }};
}

constexpr int longestList = 200;

std::vector<DeadLink> findDeadLinks(const PostScanAnalysis::FinishedScan& scan,
                                    const PostScanAnalysis::IsCancelled& isCancelled) {
  return ProInsights::deadLinks(scan.root, longestList, isCancelled);
}

std::vector<CloudItem> findOffloaded(const PostScanAnalysis::FinishedScan& scan,
                                     const PostScanAnalysis::IsCancelled& isCancelled) {
  return ProInsights::offloaded(scan.root, longestList, isCancelled);
}

// Those of this machine.
PostScanAnalysis::Engines analysisOf(const Application::Services& services) {
  const std::shared_ptr<MountedVolumes> volumes = services.platform.makeMountedVolumes();
  const auto mountPoints = [volumes] {
    std::vector<std::string> paths;
    if (const auto mounted = volumes->list()) {
      for (const MountedVolume& volume : mounted.value()) paths.push_back(volume.path);
    }
    return paths;
  };
  return {.duplicates = DuplicateFiles::engine(mountPoints),
          .deadLinks = findDeadLinks,
          .cloudItems = findOffloaded,
          .cloneGroups = SharedBlocks::engine(),
          .safeItems = UnusedFiles::engine(services.run)};
}

// Qt's own dialogs look like the window.
QPalette darkPalette() {
  const QColor surface = toQColor(MarrowTheme::bg2);
  const QColor ink = toQColor(MarrowTheme::ink);
  const QColor muted = toQColor(MarrowTheme::muted);
  QPalette palette(toQColor(MarrowTheme::bg3), surface);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText, QPalette::HighlightedText})
    palette.setColor(role, ink);
  palette.setColor(QPalette::Base, toQColor(MarrowTheme::bg));
  palette.setColor(QPalette::AlternateBase, surface);
  palette.setColor(QPalette::ToolTipBase, surface);
  palette.setColor(QPalette::PlaceholderText, muted);
  palette.setColor(QPalette::Highlight, toQColor(MarrowTheme::accent));
  palette.setColor(QPalette::Link, toQColor(MarrowTheme::accent));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, toQColor(MarrowTheme::other));
  return palette;
}

// The object that the test provides, or else the real one, created only then.
template <class Seam, class Own, class Make>
Seam& orOwn(Seam* lent, std::unique_ptr<Own>& own, Make make) {
  if (lent != nullptr) return *lent;
  own = make();
  return *own;
}

std::string folderOf(const std::string& file) {
  return file.substr(0, file.rfind('/'));
}

}  // namespace

void Application::setUpLook() {
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(darkPalette());
  Fonts::install();
  chooseRenderer();
}

Application::Application(const Services& services) {
  if (services.dispatch == nullptr)
    ownDispatch_ = std::make_unique<ThreadedDispatch>(
        [this](Dispatch::Work work) { mainQueue_.post(std::move(work)); });
  Dispatch& dispatch = services.dispatch != nullptr ? *services.dispatch : *ownDispatch_;
  const std::string home =
      services.homeDirectory.empty() ? homeDirectory() : services.homeDirectory;
  SettingsStore& settings = orOwn(services.settings, ownSettings_, [] {
    return std::make_unique<SettingsFile>(SettingsFile::standardPath());
  });
  prefs_ = std::make_unique<MarrowPrefs>(settings);

  NotificationCenter& notifications = orOwn(services.notifications, ownNotifications_, [&] {
    return services.desktop.makeNotifications(dispatch);
  });
  Workspace& workspace = orOwn(services.workspace, ownWorkspace_,
                               [&] { return services.desktop.makeWorkspace(dispatch); });
  Pasteboard& pasteboard =
      orOwn(services.pasteboard, ownPasteboard_, [&] { return services.desktop.makePasteboard(); });

  access_ = std::make_unique<AccessController>(
      settings, services.access ? services.access : [paths = FullDiskAccess::probePaths(home)] {
        return FullDiskAccess::isGranted(paths);
      });
  MachineFigures& figures =
      orOwn(services.figures, ownFigures_, [&]() -> std::unique_ptr<MachineFigures> {
        if (services.run || services.volumeUsage)
          return std::make_unique<ToolFigures>(services.run, services.volumeUsage);
        return std::make_unique<MountFigures>(MountFigures::Services{
            .dispatch = dispatch, .volumes = services.platform.makeMountedVolumes()});
      });
  session_ = std::make_unique<ScanSession>(ScanSession::Services{
      .dispatch = dispatch,
      .folderPanel = orOwn(services.folderPanel, ownFolderPanel_,
                           [&] { return services.desktop.makeFolderPanel(home); }),
      .savePanel = orOwn(services.savePanel, ownSavePanel_,
                         [&] { return services.desktop.makeSavePanel(home); }),
      .workspace = workspace,
      .pasteboard = pasteboard,
      .icon = orOwn(services.icon, ownIcon_, [&] { return services.desktop.makeIcon(dispatch); }),
      .notifications = notifications,
      .trash = orOwn(
          services.trash, ownTrash_,
          [&] { return std::make_unique<GuardedTrashMover>(services.platform.makeTrashMover()); }),
      .prefs = *prefs_,
      .homeDirectory = home,
      .supportDirectory = services.supportDirectory,
      .analysis = services.analysis ? *services.analysis : analysisOf(services),
      .wins = services.wins.analyse ? services.wins : winsEnginesOf(services),
      .walk = services.walk,
      .run = services.run,
      .now = services.now,
      .date = services.date,
      .figures = &figures});
  LoginItem& login =
      orOwn(services.loginItem, ownLoginItem_, [&] { return services.platform.makeLoginItem(); });
  installHotKey(
      orOwn(services.hotKey, ownHotKey_, [&] { return services.desktop.makeHotKey(dispatch); }));

  commandTarget_ = std::make_unique<CommandTarget>(*session_);
  engine_ = std::make_unique<QQmlApplicationEngine>();
  PreviewPanel& previewPanel = orOwn(services.previewPanel, ownPreviewPanel_, [&] {
    const auto reader = std::make_shared<ReaderProgram>();
    // A preview is likely then; before that, the process that reads it uses no memory.
    QObject::connect(
        commandTarget_.get(), &CommandTarget::changed, engine_.get(),
        [reader, &dispatch] {
          dispatch.async(Dispatch::Queue::utility, [reader] { reader->warmUp(); });
        },
        Qt::SingleShotConnection);
    return std::make_unique<PreviewWindow>(
        *engine_, dispatch,
        [reader](const std::string& path, const std::function<bool()>& isCancelled) {
          return PreviewReader::read(path, {.limits = {}, .cancelled = isCancelled}, *reader);
        },
        [&workspace](const std::string& path) { workspace.open(path); });
  });
  quickLook_ = std::make_unique<QuickLook>(&previewPanel);
  const OpenTool openTool = services.openTool.value_or(OpenTool::real());
  nodeActions_ = std::make_unique<NodeActions>(NodeActions::Services{
      .workspace = workspace,
      .pasteboard = pasteboard,
      .quickLook = [this](const std::string& path) { quickLook_->show(path); },
      .openTerminal =
          [&workspace, openTool](const std::string& path) {
            Trash::openTerminal(path, workspace, openTool);
          },
      .openInEditor =
          [&workspace, openTool](const std::string& path) {
            Trash::openInEditor(path, workspace, openTool);
          }});

  // Not quit(), which a window may refuse.
  const std::function<void()> quit =
      services.quit ? services.quit : [] { QCoreApplication::exit(); };
  QObject::connect(engine_.get(), &QQmlEngine::quit, engine_.get(), quit);
  gateActions_ = std::make_unique<AccessGateActions>(
      AccessGateActions::Services{.access = *access_,
                                  .workspace = workspace,
                                  .relaunch = {.dispatch = dispatch,
                                               .giveUpInstance = services.giveUpInstance,
                                               .quit = quit,
                                               .launch = services.launch}});
  commands_ = std::make_unique<MenuCommands>(MenuCommands::Services{
      .session = *session_, .target = *commandTarget_, .actions = *nodeActions_, .quit = quit});

  viewStates_ = std::make_unique<ViewStates>(*session_, *access_);
  windowState_ = std::make_unique<WindowState>(*session_, *access_, *commandTarget_);
  engine_->setInitialProperties(
      {{QStringLiteral("session"), QVariant::fromValue(session_.get())},
       {QStringLiteral("states"), QVariant::fromValue(viewStates_.get())},
       {QStringLiteral("bars"), QVariant::fromValue(windowState_.get())},
       {QStringLiteral("actions"), QVariant::fromValue(nodeActions_.get())},
       {QStringLiteral("commands"), QVariant::fromValue(commands_.get())},
       {QStringLiteral("gateActions"), QVariant::fromValue(gateActions_.get())}});
  engine_->load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Window/MainWindow.qml")));
  if (!engine_->rootObjects().isEmpty())
    window_ = qobject_cast<QQuickWindow*>(engine_->rootObjects().constFirst());
  if (window_ == nullptr) qFatal("The main window could not be created.");
  commandTarget_->follow(*window_);
  if (ownIcon_) ownIcon_->setWindow(window_);
  if (ownPreviewPanel_) ownPreviewPanel_->setOwner(window_);

  activation_.add(*window_);
  QObject::connect(prefs_.get(), &MarrowPrefs::mainWindowWanted, engine_.get(),
                   [this] { bringForward(); });

  StatusBarExtra& extra = orOwn(services.statusBar, ownStatusBar_,
                                [&] { return services.desktop.makeStatusBarExtra(dispatch); });
  statusBar_ = std::make_unique<StatusBar>(
      *session_, login, extra,
      StatusBar::Services{.showMainWindow = [this] { prefs_->showMainWindow(); },
                          .activate = [this] { bringForward(); },
                          .quit = quit});
  windowStart_ = std::make_unique<WindowStart>(
      dispatch, extra,
      WindowStart::Services{.show = [this] { window_->show(); },
                            .setQuitsOnClose = QGuiApplication::setQuitOnLastWindowClosed});
  delegate_ = std::make_unique<AppDelegate>(AppDelegate::Services{
      .prefs = *prefs_,
      .notifications = notifications,
      .beginWindow = [this](bool startHidden) { windowStart_->begin(startHidden); },
      .date = services.date,
      .figures = &figures});

  clearLeftovers_ = [this, &dispatch,
                     support = services.supportDirectory ? *services.supportDirectory
                                                         : ScanStore::supportDir()] {
    std::vector<std::string> others;
    // A user whose settings file is a link to another folder has temporary files in that folder.
    if (ownSettings_) others.push_back(folderOf(resolvedPath(SettingsFile::standardPath())));
    Leftovers::removeAll(dispatch, support, others);
  };

  session_->machine().refreshDisk();
  access_->refresh();
  // While the program was inactive, the user may have changed settings or files in other programs.
  QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, window_,
                   [this](Qt::ApplicationState state) {
                     if (state == Qt::ApplicationActive) lookAgain();
                   });
}

void Application::lookAgain() {
  access_->refresh();
  session_->machine().refreshDisk();
}

Application::~Application() = default;

void Application::launch() {
  clearLeftovers_();
  delegate_->applicationDidFinishLaunching();
}

void Application::reopen() {
  delegate_->applicationShouldHandleReopen(window_->isVisible());
}

void Application::hideWindows() {
  for (QWindow* const open : QGuiApplication::allWindows()) open->hide();
}

void Application::leaveDesktop() {
  // The window stays hidden, even if the presence of the status bar becomes known later.
  windowStart_->settle();
  ownHotKey_.reset();
  // Before the connection closes to a file manager that has not answered yet.
  if (ownWorkspace_) ownWorkspace_->close();
}

void Application::endWriting() {
  session_->end();
  if (ownSettings_) ownSettings_->close();
}

void Application::giveUpWork() {
  mainQueue_.close();
  if (ownWorkspace_) ownWorkspace_->close();
  if (ownTrash_) ownTrash_->close();
  if (ownDispatch_) ownDispatch_->close();
}

bool Application::isBusy() const {
  return isMoving() || (ownDispatch_ && !ownDispatch_->isAtRest());
}

bool Application::isMoving() const {
  return ownTrash_ && ownTrash_->isMoving();
}

void Application::bringForward() {
  windowStart_->settle();
  activation_.showMainWindow();
}

void Application::installHotKey(GlobalHotKey& hotKey) {
  hotKey.install([this] {
    bringForward();
    session_->shown().setSearchOpen(true);
  });
}

}  // namespace tessaly
