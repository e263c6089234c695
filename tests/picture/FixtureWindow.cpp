#include "picture/FixtureWindow.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickItem>

#include "picture/FixtureTree.h"
#include "support/WindowItems.h"

namespace tessaly {

namespace {

using Screen = FixtureWindow::Screen;

constexpr std::array<std::pair<const char*, Screen>, 20> screens = {{
    {"idle", Screen::idle},
    {"scanning", Screen::scanning},
    {"failed", Screen::failed},
    {"map", Screen::map},
    {"drilled", Screen::drilled},
    {"rescanning", Screen::rescanning},
    {"selected", Screen::selected},
    {"toast", Screen::toast},
    {"failure", Screen::failure},
    {"menu", Screen::menu},
    {"alert", Screen::alert},
    {"gate", Screen::gate},
    {"sidebar", Screen::sidebar},
    {"sidebar-end", Screen::sidebarEnd},
    {"commands", Screen::commands},
    {"queue", Screen::queue},
    {"queue-minimised", Screen::queueMinimised},
    {"list", Screen::list},
    {"band", Screen::band},
    {"tile-menu", Screen::tileMenu},
}};

DiskNode childOf(const DiskNode& node, std::string_view name) {
  for (const DiskNode& child : node.children()) {
    if (child.name() == name) return child;
  }
  return node;
}

Application::Seams seamsOf(FakeMachine& machine, bool canBeRead) {
  return {.dispatch = &machine.dispatch,
          .folderPanel = &machine.folderPanel,
          .savePanel = &machine.savePanel,
          .workspace = &machine.workspace,
          .pasteboard = &machine.pasteboard,
          .previewPanel = &machine.previewPanel,
          .icon = &machine.icon,
          .notifications = &machine.notifications,
          .trash = &machine.trash,
          .settings = &machine.settings,
          .openTool = machine.openTool.tool(),
          .access = [&machine] { return machine.isAccessGranted; },
          .launch =
              [&machine](const Process::Launch& launch) {
                machine.launched.push_back(launch);
                return succeeded();
              },
          .quit = [&machine] { ++machine.timesQuit; },
          .homeDirectory = fixtureHome,
          .supportDirectory = machine.support.path(),
          .walk =
              [canBeRead](const std::string& root, const DiskScanner::Callbacks& callbacks,
                          const DiskScanner::Options&) {
                callbacks.progress("Scanning " + root + "/Code/atlas/target");
                callbacks.percent(0.42);
                DiskNode::Fields nothing;
                nothing.path = root;
                nothing.isDir = true;
                return canBeRead ? fixtureTree() : DiskNode(nothing);
              },
          .run = [](const std::string& path, const std::vector<std::string>& args,
                    double) -> std::string {
            if (path == "/bin/df")
              return "Filesystem 1024-blocks Used Available Capacity Mounted on\n"
                     "/dev/nvme0n1p2 488245288 371066418 92310000 81% /\n"
                     "/dev/sda1 976762584 410240284 566522300 43% /media/ada/Photos\n";
            if (path == "/usr/bin/osascript") return "12\n";
            return noTools(path, args);
          },
          .volumeUsage =
              [] {
                return DiskUsage{.total = 499963174912,
                                 .used = 405436694528,
                                 .free = 94526480384,
                                 .usedPercent = 81.1,
                                 .purgeable = 0};
              },
          .now = [] { return ScanSession::Clock::time_point(); },
          .date = [] { return std::chrono::system_clock::from_time_t(1700000000); }};
}

}  // namespace

std::optional<Screen> FixtureWindow::screenNamed(const QString& name) {
  for (const auto& [known, screen] : screens) {
    if (name == QLatin1String(known)) return screen;
  }
  return std::nullopt;
}

QStringList FixtureWindow::names() {
  QStringList all;
  for (const auto& [name, screen] : screens) all << QString::fromLatin1(name);
  return all;
}

FixtureWindow::FixtureWindow(Screen screen, QSize size) {
  prepare(screen);
  application_ = std::make_unique<Application>(seamsOf(machine_, screen != Screen::failed));
  QQuickWindow& window = application_->window();
  window.resize(size);
  window.show();
  settle(window);
  show(screen);
}

// What the machine and the last run have left for this one.
void FixtureWindow::prepare(Screen screen) {
  machine_.isAccessGranted = screen != Screen::gate;
  if (screen != Screen::sidebar && screen != Screen::sidebarEnd) return;
  const std::string home = fixtureHome;
  machine_.settings.setTexts(ScanStore::pinsKey, {home + "/Code", "/media/ada/Photos"});
  machine_.settings.setTexts(ScanStore::recentsKey, {home + "/Downloads", "/"});
  machine_.settings.setTexts(ScanStore::excludesKey, {home + "/VirtualBox VMs"});
}

void FixtureWindow::scan() {
  application_->session().scanHome();
  machine_.dispatch.drainAll();
}

void FixtureWindow::letMessagesGo() {
  while (machine_.dispatch.advanceToNextDue()) machine_.dispatch.drain(Dispatch::Queue::main);
}

void FixtureWindow::openMenu() {
  QQuickWindow& window = application_->window();
  settle(window);
  QMetaObject::invokeMethod(&window, "openMenu", Q_ARG(bool, true));
}

void FixtureWindow::scrollSidebarToItsEnd() {
  QQuickWindow& window = application_->window();
  settle(window);
  if (auto* const area = window.findChild<QQuickItem*>(QStringLiteral("scrollArea")))
    area->setProperty("contentY", area->property("contentHeight").toDouble() - area->height());
}

void FixtureWindow::scanHalfWay() {
  ScanSession& session = application_->session();
  session.scanHome();
  machine_.dispatch.step(Dispatch::Queue::userInitiated);
  while (session.scanPercent() < 0.3 && machine_.dispatch.step(Dispatch::Queue::main)) {
  }
}

void FixtureWindow::show(Screen screen) {
  ScanSession& session = application_->session();
  if (screen == Screen::idle || screen == Screen::gate) return;
  if (screen == Screen::scanning) return scanHalfWay();
  scan();
  if (screen == Screen::failed) return;
  // At the first scan of a folder all of it counts as grown, and has the colour of that.
  scan();
  const DiskNode tree = *session.current();
  switch (screen) {
    case Screen::drilled:
      session.open(childOf(tree, "Movies"));
      break;
    case Screen::rescanning:
      letMessagesGo();
      return scanHalfWay();
    case Screen::selected:
      machine_.trash.put(std::string(fixtureHome) + "/old.iso");
      session.setFocused([] {
        DiskNode::Fields gone;
        gone.path = std::string(fixtureHome) + "/old.iso";
        gone.name = "old.iso";
        return DiskNode(gone);
      }());
      session.trashFocused();
      machine_.dispatch.drainAll();
      session.selectNodes(
          {childOf(childOf(tree, "Downloads"), "linux.iso"), childOf(tree, "VirtualBox VMs"),
           childOf(childOf(tree, "Movies"), "wedding.mkv")},
          false);
      break;
    case Screen::failure: {
      session.open(childOf(tree, "Movies"));
      session.tellFailure("“notes.txt” could not be put back: not permitted");
      // Nothing of the tree is on the disk that the Trash knows.
      for (const char* name : {"Downloads", "VirtualBox VMs", "Movies"})
        session.addToQueue(childOf(tree, name));
      session.emptyQueue();
      machine_.dispatch.drainAll();
      session.addToQueue(childOf(tree, "Downloads"));
      break;
    }
    case Screen::menu:
      session.setMenuNode(childOf(tree, "Downloads"));
      break;
    case Screen::alert:
      session.setCriticalWarning(tree);
      break;
    case Screen::band:
      settle(application_->window());
      point(QEvent::MouseButtonPress, Qt::LeftButton, {140, 90});
      point(QEvent::MouseMove, Qt::LeftButton, {240, 190});
      point(QEvent::MouseMove, Qt::LeftButton, {560, 430});
      break;
    case Screen::tileMenu:
      settle(application_->window());
      point(QEvent::MouseButtonPress, Qt::RightButton, {60, 14});
      point(QEvent::MouseButtonRelease, Qt::RightButton, {60, 14});
      break;
    case Screen::sidebar:
    case Screen::sidebarEnd:
      session.toggleFilter(session.filters()[0].id);
      session.toggleSkip(session.filters()[2].id);
      if (screen == Screen::sidebarEnd) scrollSidebarToItsEnd();
      break;
    case Screen::commands:
      // As low as the window gets, the menu still fits.
      application_->window().resize(1100, 680);
      session.open(childOf(tree, "Movies"));
      openMenu();
      break;
    case Screen::queue:
    case Screen::queueMinimised:
      for (const char* name : {"Downloads", "VirtualBox VMs", "Movies"})
        session.addToQueue(childOf(tree, name));
      session.setQueueMinimized(screen == Screen::queueMinimised);
      break;
    case Screen::list:
      session.setVizMode(VizMode::list);
      break;
    default:
      break;
  }
  // The message that the scan is complete goes, but where it is what is wanted.
  if (screen != Screen::toast) letMessagesGo();
}

QStringList FixtureWindow::visibleNames() const {
  QStringList names;
  std::vector<const QQuickItem*> waiting = {application_->window().contentItem()};
  while (!waiting.empty()) {
    const QQuickItem* const item = waiting.back();
    waiting.pop_back();
    if (!item->isVisible() || item->opacity() == 0) continue;
    names << item->objectName();
    for (const QQuickItem* const child : item->childItems()) waiting.push_back(child);
  }
  return names;
}

void FixtureWindow::point(QEvent::Type type, Qt::MouseButton button, QPointF place) {
  QQuickWindow& window = application_->window();
  const auto* const canvas = window.findChild<QQuickItem*>(QStringLiteral("canvas"));
  if (canvas == nullptr) return;
  const QPointF inWindow = canvas->mapToScene(place);
  const bool isMove = type == QEvent::MouseMove;
  QMouseEvent event(type, inWindow, window.mapToGlobal(inWindow), isMove ? Qt::NoButton : button,
                    type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &event);
}

QImage FixtureWindow::picture() {
  settle(application_->window());
  return application_->window().grabWindow();
}

}  // namespace tessaly
