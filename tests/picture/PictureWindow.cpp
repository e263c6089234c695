#include "picture/PictureWindow.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <map>
#include <string_view>
#include <vector>

#include <QQmlEngine>
#include <QQmlIncubationController>
#include <QQuickItem>

#include "app/model/RowNode.h"
#include "app/panes/ListWinsState.h"
#include "picture/FixtureFindings.h"
#include "picture/FixtureTree.h"
#include "picture/FoundLists.h"
#include "picture/WinsScreens.h"
#include "support/WindowItems.h"

namespace tessaly {

namespace {

using Screen = PictureWindow::Screen;

constexpr QSize usual(1280, 820);
// The smallest size of the window. Makes smaller files, and suffices for views over or beside a
// map.
constexpr QSize smallest(1100, 680);
// Of a large display, where a list has room to spare.
constexpr QSize wide(2560, 1440);

struct KnownScreen {
  const char* name;
  Screen screen;
  QSize size = usual;
  int pixelsAPoint = 1;
};

constexpr std::array<KnownScreen, 89> screens = {{
    {"idle", Screen::idle},
    {"scanning", Screen::scanning},
    {"failed", Screen::failed},
    {"map", Screen::map},
    {"drilled", Screen::drilled},
    {"rescanning", Screen::rescanning, smallest},
    {"selected", Screen::selected},
    {"toast", Screen::toast, smallest},
    {"failure", Screen::failure, smallest},
    {"menu", Screen::menu, smallest},
    {"alert", Screen::alert, smallest},
    {"gate", Screen::gate},
    {"sidebar", Screen::sidebar},
    {"sidebar-end", Screen::sidebarEnd},
    {"commands", Screen::commands, smallest},
    {"queue", Screen::queue, smallest},
    {"queue-minimised", Screen::queueMinimised, smallest},
    {"largest", Screen::largest, smallest},
    {"largest-wide", Screen::largestWide, wide},
    {"largest-one", Screen::largestOne, smallest},
    {"largest-empty", Screen::largestEmpty, smallest},
    {"grew", Screen::grew, smallest},
    {"grew-wide", Screen::grewWide, wide},
    {"grew-one", Screen::grewOne, smallest},
    {"grew-empty", Screen::grewEmpty, smallest},
    {"safe", Screen::safe, smallest},
    {"safe-wide", Screen::safeWide, wide},
    {"safe-one", Screen::safeOne, smallest},
    {"safe-empty", Screen::safeEmpty, smallest},
    {"compare", Screen::compare, smallest},
    {"compare-wide", Screen::compareWide, wide},
    {"compare-one", Screen::compareOne, smallest},
    {"compare-empty", Screen::compareEmpty, smallest},
    {"history", Screen::history, smallest},
    {"history-wide", Screen::historyWide, wide},
    {"history-one", Screen::historyOne, smallest},
    {"history-empty", Screen::historyEmpty, smallest},
    {"wins", Screen::wins, smallest},
    {"wins-wide", Screen::winsWide, wide},
    {"wins-one", Screen::winsOne, smallest},
    {"wins-empty", Screen::winsEmpty, smallest},
    {"wins-banners", Screen::winsBanners, smallest},
    {"wins-moving", Screen::winsMoving, smallest},
    {"duplicates", Screen::duplicates, smallest},
    {"duplicates-wide", Screen::duplicatesWide, wide},
    {"duplicates-one", Screen::duplicatesOne, smallest},
    {"duplicates-one-wide", Screen::duplicatesOneWide, wide},
    {"duplicates-empty", Screen::duplicatesEmpty, smallest},
    {"duplicates-empty-wide", Screen::duplicatesEmptyWide, wide},
    {"duplicates-none-kept", Screen::duplicatesNoneKept, smallest},
    {"duplicates-comparing", Screen::duplicatesComparing, smallest},
    {"duplicates-awaited", Screen::duplicatesAwaited, smallest},
    {"clones", Screen::clones, smallest},
    {"clones-wide", Screen::clonesWide, wide},
    {"clones-one", Screen::clonesOne, smallest},
    {"clones-one-wide", Screen::clonesOneWide, wide},
    {"clones-empty", Screen::clonesEmpty, smallest},
    {"clones-empty-wide", Screen::clonesEmptyWide, wide},
    {"aliases", Screen::aliases, smallest},
    {"aliases-wide", Screen::aliasesWide, wide},
    {"aliases-one", Screen::aliasesOne, smallest},
    {"aliases-one-wide", Screen::aliasesOneWide, wide},
    {"aliases-empty", Screen::aliasesEmpty, smallest},
    {"aliases-empty-wide", Screen::aliasesEmptyWide, wide},
    {"cloud", Screen::cloud, smallest},
    {"cloud-wide", Screen::cloudWide, wide},
    {"cloud-one", Screen::cloudOne, smallest},
    {"cloud-one-wide", Screen::cloudOneWide, wide},
    {"cloud-empty", Screen::cloudEmpty, smallest},
    {"cloud-empty-wide", Screen::cloudEmptyWide, wide},
    {"largest-one-wide", Screen::largestOneWide, wide},
    {"largest-empty-wide", Screen::largestEmptyWide, wide},
    {"grew-one-wide", Screen::grewOneWide, wide},
    {"grew-empty-wide", Screen::grewEmptyWide, wide},
    {"safe-one-wide", Screen::safeOneWide, wide},
    {"safe-empty-wide", Screen::safeEmptyWide, wide},
    {"compare-one-wide", Screen::compareOneWide, wide},
    {"compare-empty-wide", Screen::compareEmptyWide, wide},
    {"history-one-wide", Screen::historyOneWide, wide},
    {"history-empty-wide", Screen::historyEmptyWide, wide},
    {"wins-one-wide", Screen::winsOneWide, wide},
    {"wins-empty-wide", Screen::winsEmptyWide, wide},
    {"band", Screen::band, smallest},
    {"tile-menu", Screen::tileMenu, smallest},
    {"hover", Screen::hover},
    {"heat-map", Screen::heatMap, smallest},
    {"watching", Screen::watching},
    {"smallest", Screen::smallest, smallest},
    {"two-pixels", Screen::twoPixels, smallest, 2},
}};

const KnownScreen& factsOf(Screen screen) {
  return *std::ranges::find(screens, screen, &KnownScreen::screen);
}

DiskNode childOf(const DiskNode& node, std::string_view name) {
  for (const DiskNode& child : node.children()) {
    if (child.name() == name) return child;
  }
  return node;
}

DiskNode fileThatWas(const std::string& path) {
  DiskNode::Fields gone;
  gone.path = path;
  gone.name = path.substr(path.rfind('/') + 1);
  return DiskNode(gone);
}

// What is shown on a screen that differs from another one only in its size.
Screen contentOf(Screen screen) {
  static const std::map<Screen, Screen> contents = {
      {Screen::largestOneWide, Screen::largestOne},
      {Screen::largestEmptyWide, Screen::largestEmpty},
      {Screen::grewOneWide, Screen::grewOne},
      {Screen::grewEmptyWide, Screen::grewEmpty},
      {Screen::safeOneWide, Screen::safeOne},
      {Screen::safeEmptyWide, Screen::safeEmpty},
      {Screen::compareOneWide, Screen::compareOne},
      {Screen::compareEmptyWide, Screen::compareEmpty},
      {Screen::historyOneWide, Screen::historyOne},
      {Screen::historyEmptyWide, Screen::historyEmpty},
      {Screen::winsOneWide, Screen::winsOne},
      {Screen::winsEmptyWide, Screen::winsEmpty},
      {Screen::duplicatesOneWide, Screen::duplicatesOne},
      {Screen::duplicatesEmptyWide, Screen::duplicatesEmpty},
      {Screen::clonesOneWide, Screen::clonesOne},
      {Screen::clonesEmptyWide, Screen::clonesEmpty},
      {Screen::aliasesOneWide, Screen::aliasesOne},
      {Screen::aliasesEmptyWide, Screen::aliasesEmpty},
      {Screen::cloudOneWide, Screen::cloudOne},
      {Screen::cloudEmptyWide, Screen::cloudEmpty},
  };
  const auto found = contents.find(screen);
  return found == contents.end() ? screen : found->second;
}

// The list of an analysis that a screen shows, and how many of its rows there are.
struct FoundList {
  VizMode mode;
  std::size_t count;
};

std::optional<FoundList> foundListOn(Screen screen) {
  constexpr std::size_t all = 100;
  static const std::map<Screen, FoundList> lists = {
      {Screen::safe, {VizMode::safe, all}},
      {Screen::safeWide, {VizMode::safe, all}},
      {Screen::safeOne, {VizMode::safe, 1}},
      {Screen::safeEmpty, {VizMode::safe, 0}},
      {Screen::duplicates, {VizMode::duplicates, all}},
      {Screen::duplicatesNoneKept, {VizMode::duplicates, all}},
      {Screen::duplicatesWide, {VizMode::duplicates, all}},
      {Screen::duplicatesComparing, {VizMode::duplicates, all}},
      {Screen::duplicatesAwaited, {VizMode::duplicates, 0}},
      {Screen::duplicatesOne, {VizMode::duplicates, 1}},
      {Screen::duplicatesEmpty, {VizMode::duplicates, 0}},
      {Screen::clones, {VizMode::clones, all}},
      {Screen::clonesWide, {VizMode::clones, all}},
      {Screen::clonesOne, {VizMode::clones, 1}},
      {Screen::clonesEmpty, {VizMode::clones, 0}},
      {Screen::aliases, {VizMode::aliases, all}},
      {Screen::aliasesWide, {VizMode::aliases, all}},
      {Screen::aliasesOne, {VizMode::aliases, 1}},
      {Screen::aliasesEmpty, {VizMode::aliases, 0}},
      {Screen::cloud, {VizMode::cloud, all}},
      {Screen::cloudWide, {VizMode::cloud, all}},
      {Screen::cloudOne, {VizMode::cloud, 1}},
      {Screen::cloudEmpty, {VizMode::cloud, 0}},
  };
  const auto found = lists.find(screen);
  return found == lists.end() ? std::nullopt : std::optional(found->second);
}

// Lists create the rows near the visible part one by one in idle time, and the length of a scroll
// bar depends on their heights.
void createRows(QQuickWindow& window) {
  QQmlIncubationController* const rows = qmlEngine(&window)->incubationController();
  constexpr int longerThanARowTakes = 1000;
  while (rows->incubatingObjectCount() > 0) {
    rows->incubateFor(longerThanARowTakes);
    window.grabWindow();
  }
}

// At the first scan of a folder everything counts as grown, and has that colour.
bool isGrown(Screen screen) {
  return screen == Screen::grew || screen == Screen::grewWide || screen == Screen::grewOne;
}

bool isHistory(Screen screen) {
  return screen == Screen::history || screen == Screen::historyWide ||
         screen == Screen::historyOne || screen == Screen::historyEmpty;
}

std::string run(const std::string& path, const std::vector<std::string>& args, double seconds) {
  if (path == "/bin/df")
    return "Filesystem 1024-blocks Used Available Capacity Mounted on\n"
           "/dev/nvme0n1p2 488245288 371066418 92310000 81% /\n"
           "/dev/sda1 976762584 410240284 566522300 43% /media/ada/Photos\n";
  if (path == "/usr/bin/osascript") return "12\n";
  return noTools(path, args, seconds);
}

// The disk and the clocks of the fake machine.
void lend(Application::Services& services, Screen screen) {
  services.walk = [screen](const std::string& root, const DiskScanner::Callbacks& callbacks,
                           const DiskScanner::Options&) {
    // The walk of a comparison has no callbacks.
    if (root == fixtureBackup)
      return screen == Screen::compareOne ? fixtureCopyTree() : fixtureBackupTree();
    callbacks.progress("Scanning " + root + "/Code/atlas/target");
    callbacks.percent(0.42);
    DiskNode::Fields nothing;
    nothing.path = root;
    nothing.isDir = true;
    if (screen == Screen::failed) return DiskNode(nothing);
    // Folders whose files were all too small to be kept have a size, and no file.
    nothing.size = 3 * (std::int64_t{1} << 30);
    if (screen == Screen::largestEmpty || screen == Screen::grewOne) return DiskNode(nothing);
    return screen == Screen::largestOne ? fixtureTreeOfOne() : fixtureTree();
  };
  const std::size_t count = foundListOn(screen) ? foundListOn(screen)->count : 0;
  services.analysis = analysisThatFinds(count);
  switch (screen) {
    case Screen::wins:
    case Screen::winsWide:
    case Screen::winsBanners:
    case Screen::winsMoving:
      services.wins = enginesThatFind(WinsOnDisk::many);
      break;
    case Screen::winsOne:
      services.wins = enginesThatFind(WinsOnDisk::one);
      break;
    case Screen::winsEmpty:
      services.wins = enginesThatFind(WinsOnDisk::none);
      break;
    default:
      break;
  }
  services.run = run;
  services.volumeUsage = [] {
    return DiskUsage{.total = 499963174912,
                     .used = 405436694528,
                     .free = 94526480384,
                     .usedPercent = 81.1,
                     .purgeable = 0,
                     .fileSystem = "ext4"};
  };
  services.now = [] { return SessionServices::Clock::time_point(); };
  services.date = [] {
    return std::chrono::system_clock::from_time_t(static_cast<std::time_t>(fixtureNow));
  };
}

// The state that the machine and the last run have left for this run.
void prepare(FakeMachine& machine, Screen screen) {
  machine.isAccessGranted = screen != Screen::gate;
  if (screen == Screen::history || screen == Screen::historyWide) {
    for (const HistoryPoint& point : fixtureHistory())
      ScanStore::appendHistory(point, fixtureHome, machine.support.path());
  }
  if (screen != Screen::sidebar && screen != Screen::sidebarEnd) return;
  const std::string home = fixtureHome;
  machine.settings.setTexts(ScanStore::pinsKey, {home + "/Code", "/media/ada/Photos"});
  machine.settings.setTexts(ScanStore::recentsKey, {home + "/Downloads", "/"});
  machine.settings.setTexts(ScanStore::excludesKey, {home + "/VirtualBox VMs"});
}

// Stops rings that turn at a fixed angle.
void holdRings(QQuickItem* item) {
  constexpr double aQuarter = 0.25;
  if (item->property("turn").isValid()) item->setProperty("turn", aQuarter);
  for (QQuickItem* const child : item->childItems()) holdRings(child);
}

}  // namespace

std::optional<Screen> PictureWindow::screenNamed(const QString& name) {
  for (const KnownScreen& known : screens) {
    if (name == QLatin1String(known.name)) return known.screen;
  }
  return std::nullopt;
}

QStringList PictureWindow::names() {
  QStringList all;
  for (const KnownScreen& known : screens) all << QString::fromLatin1(known.name);
  return all;
}

int PictureWindow::pixelsAPoint(Screen screen) {
  return factsOf(screen).pixelsAPoint;
}

PictureWindow::PictureWindow(Screen screen, std::optional<QSize> size)
    : fixture_(
          machine_, fixtureHome,
          [this, screen](Application::Services& services) {
            prepare(machine_, contentOf(screen));
            lend(services, contentOf(screen));
          },
          [screen, size](QQuickWindow& window) {
            window.resize(size.value_or(factsOf(screen).size));
          }) {
  show(contentOf(screen));
}

void PictureWindow::scan() {
  session().scanHome();
  machine_.dispatch.drainAll();
}

void PictureWindow::letMessageGo() {
  constexpr std::chrono::seconds longerThanItStays(3);
  machine_.dispatch.advance(longerThanItStays);
  machine_.dispatch.drain(Dispatch::Queue::main);
}

void PictureWindow::openMenu() {
  settle(fixture_.window());
  QMetaObject::invokeMethod(&fixture_.window(), "openMenu", Q_ARG(bool, true));
}

void PictureWindow::enterList(int row) {
  settle(fixture_.window());
  fixture_.tabTo("rowFace");
  for (int down = 0; down < row; ++down) fixture_.press(Qt::Key_Down);
}

void PictureWindow::scrollSidebarToItsEnd() {
  settle(fixture_.window());
  if (auto* const area = fixture_.window().findChild<QQuickItem*>(QStringLiteral("scrollArea")))
    area->setProperty("contentY", area->property("contentHeight").toDouble() - area->height());
}

void PictureWindow::scanHalfWay() {
  session().scanHome();
  machine_.dispatch.step(Dispatch::Queue::userInitiated);
  while (session().run().scanPercent() < 0.3 && machine_.dispatch.step(Dispatch::Queue::main)) {
  }
}

// The analysis has reported how far it is, and its lists have not arrived.
void PictureWindow::compareHalfWay() {
  session().scanHome();
  machine_.dispatch.drain(Dispatch::Queue::userInitiated);
  machine_.dispatch.drain(Dispatch::Queue::main);
  letMessageGo();
  machine_.dispatch.drain(Dispatch::Queue::utility);
  while (!session().findings().duplicateProgress() &&
         machine_.dispatch.step(Dispatch::Queue::main)) {
  }
}

void PictureWindow::showWins(Screen screen) {
  session().shown().setVizMode(VizMode::list);
  machine_.dispatch.drainAll();
  settle(fixture_.window());
  if (screen == Screen::winsOne || screen == Screen::winsEmpty) return;
  const std::string caches = std::string(fixtureHome) + "/.cache/";
  const QObject* const page = fixture_.item(QStringLiteral("winsPage"));
  if (page == nullptr) return;
  auto& state = *page->property("wins").value<ListWinsState*>();
  for (const char* name : {"cargo", "npm", "pip"}) state.toggle(PathHandle(caches + name));
  if (screen == Screen::winsWide || screen == Screen::wins) {
    fixture_.tabTo("rowFace");
    fixture_.press(Qt::Key_Down);
    return;
  }
  // The fake Trash does not know the other one.
  for (const char* name : {"cargo", "npm"}) machine_.trash.put(caches + name);
  state.trashSelected();
  if (screen == Screen::winsBanners) machine_.dispatch.drainAll();
}

void PictureWindow::showFound(Screen screen) {
  session().shown().setVizMode(foundListOn(screen)->mode);
  constexpr std::array withKeyboard = {Screen::safe, Screen::duplicates, Screen::clones,
                                       Screen::aliases, Screen::cloud};
  if (std::ranges::find(withKeyboard, screen) != withKeyboard.end()) enterList(1);
  if (screen == Screen::duplicatesComparing || screen == Screen::duplicatesAwaited)
    compareHalfWay();
  if (screen != Screen::duplicatesNoneKept) return;
  for (const PathSize& copy : session().findings().duplicates().front().files)
    session().cleanupQueue().addToQueue(*RowNode::ofFile(copy).node());
  session().cleanupQueue().setQueueMinimized(true);
}

void PictureWindow::show(Screen screen) {
  if (screen == Screen::idle || screen == Screen::gate) return;
  if (screen == Screen::scanning) return scanHalfWay();
  scan();
  if (screen == Screen::failed) return;
  if (!isGrown(screen) && !isHistory(screen)) scan();
  if (screen == Screen::toast) return;
  letMessageGo();
  const DiskNode tree = *session().navigation().current();
  const std::string home = fixtureHome;
  if (foundListOn(screen)) return showFound(screen);
  switch (screen) {
    case Screen::drilled:
    case Screen::twoPixels:
      session().open(childOf(tree, "Movies"));
      break;
    case Screen::rescanning:
      scanHalfWay();
      break;
    case Screen::selected:
      machine_.trash.put(home + "/old.iso");
      session().selection().setFocused(fileThatWas(home + "/old.iso"));
      session().trashFocused();
      machine_.dispatch.drainAll();
      session().selection().selectNodes(
          {childOf(childOf(tree, "Downloads"), "linux.iso"), childOf(tree, "VirtualBox VMs"),
           childOf(childOf(tree, "Movies"), "wedding.mkv")},
          false);
      letMessageGo();
      break;
    case Screen::failure:
      session().open(childOf(tree, "Movies"));
      session().messages().tellFailure("“notes.txt” could not be put back: not permitted");
      // The fake Trash does not know the items of the tree yet.
      for (const char* name : {"Downloads", "VirtualBox VMs", "Movies"})
        session().cleanupQueue().addToQueue(childOf(tree, name));
      session().emptyQueue();
      machine_.dispatch.drainAll();
      session().cleanupQueue().addToQueue(childOf(tree, "Downloads"));
      letMessageGo();
      break;
    case Screen::menu:
      session().shown().setMenuNode(childOf(tree, "Downloads"));
      break;
    case Screen::alert:
      session().removal().setCriticalWarning(tree);
      break;
    case Screen::band:
      fixture_.beginDrag({fixture_.mapPoint({140, 90}), fixture_.mapPoint({240, 190}),
                          fixture_.mapPoint({560, 430})});
      break;
    case Screen::tileMenu:
      fixture_.clickAt(fixture_.mapPoint({60, 14}), Qt::NoModifier, Qt::RightButton);
      break;
    case Screen::sidebar:
    case Screen::sidebarEnd:
      session().choices().toggleFilter(session().choices().filters()[0].id);
      session().choices().toggleSkip(session().choices().filters()[2].id);
      if (screen == Screen::sidebarEnd) scrollSidebarToItsEnd();
      break;
    case Screen::commands:
      session().open(childOf(tree, "Movies"));
      openMenu();
      break;
    case Screen::queue:
    case Screen::queueMinimised:
      for (const char* name : {"Downloads", "VirtualBox VMs", "Movies"})
        session().cleanupQueue().addToQueue(childOf(tree, name));
      session().cleanupQueue().setQueueMinimized(screen == Screen::queueMinimised);
      letMessageGo();
      break;
    case Screen::wins:
    case Screen::winsWide:
    case Screen::winsOne:
    case Screen::winsEmpty:
    case Screen::winsBanners:
    case Screen::winsMoving:
      showWins(screen);
      break;
    case Screen::grew:
    case Screen::grewWide:
    case Screen::grewOne:
    case Screen::grewEmpty:
      session().shown().setVizMode(VizMode::grew);
      break;
    case Screen::compareEmpty:
      session().shown().setVizMode(VizMode::compare);
      break;
    case Screen::compare:
    case Screen::compareWide:
    case Screen::compareOne:
      machine_.folderPanel.answer = fixtureBackup;
      session().compareWithFolder();
      machine_.dispatch.drainAll();
      break;
    case Screen::historyEmpty:
      std::filesystem::remove(machine_.support.at("history_home_ada.json"));
      fixture_.restart();
      session().shown().setVizMode(VizMode::history);
      break;
    case Screen::history:
    case Screen::historyWide:
    case Screen::historyOne:
      session().shown().setVizMode(VizMode::history);
      if (screen == Screen::history) enterList(16);
      break;
    case Screen::largest:
    case Screen::largestWide:
    case Screen::largestOne:
    case Screen::largestEmpty:
      session().shown().setVizMode(VizMode::largest);
      if (screen == Screen::largest) enterList(1);
      break;
    case Screen::hover:
      fixture_.hoverAt(fixture_.tilePoint(home + "/Downloads/linux.iso").value_or(QPoint()));
      break;
    case Screen::heatMap:
      session().shown().setHeatmap(true);
      break;
    case Screen::watching:
      session().startWatch();
      machine_.dispatch.drainAll();
      letMessageGo();
      break;
    default:
      break;
  }
}

QStringList PictureWindow::visibleNames() {
  QStringList names;
  std::vector<const QQuickItem*> waiting = {fixture_.window().contentItem()};
  while (!waiting.empty()) {
    const QQuickItem* const item = waiting.back();
    waiting.pop_back();
    if (!item->isVisible() || item->opacity() == 0) continue;
    names << item->objectName();
    for (const QQuickItem* const child : item->childItems()) waiting.push_back(child);
  }
  return names;
}

QImage PictureWindow::picture() {
  settle(fixture_.window());
  createRows(fixture_.window());
  // No event is handled after this that could turn them on.
  holdRings(fixture_.window().contentItem());
  return fixture_.window().grabWindow().convertToFormat(QImage::Format_RGB32);
}

}  // namespace tessaly
