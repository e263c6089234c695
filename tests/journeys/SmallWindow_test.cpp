// At the smallest size of the window, nothing overlaps and nothing is cut off.
#include <string>
#include <vector>

#include <QQuickItem>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

constexpr QSize smallest(1100, 680);
// Sizes of texts are not integers, but are laid out as integers.
constexpr double slack = 1.01;

const std::string disk = "/media/Photos-of-many-years-and-of-more-places-than-one-remembers";

DiskNode file(const std::string& path) {
  DiskNode::Fields fields;
  fields.path = path;
  fields.name = path.substr(path.rfind('/') + 1);
  fields.size = std::int64_t{3} << 30U;
  return DiskNode(fields);
}

DiskNode folder(const std::string& path, const std::vector<DiskNode>& children) {
  DiskNode::Fields fields;
  fields.path = path;
  fields.name = path.substr(path.rfind('/') + 1);
  fields.isDir = true;
  for (const DiskNode& child : children) fields.size += child.size();
  return DiskNode(fields, children);
}

struct Placed {
  QQuickItem* item;
  QRectF rect;  // visible part, in the window
};

// Names may have any length, and are shortened.
bool isName(const QQuickItem* text) {
  for (const QQuickItem* above = text; above != nullptr; above = above->parentItem()) {
    static const QStringList names = {"volumeName", "pathLabel",    "excludeName", "menuTitle",
                                      "toast",      "alertMessage", "name",        "chip"};
    if (names.contains(above->objectName())) return true;
  }
  return false;
}

QRectF rectOf(QQuickItem* item) {
  return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

bool isWhole(const Placed& placed) {
  const QRectF all = rectOf(placed.item);
  return placed.rect.width() > all.width() - slack && placed.rect.height() > all.height() - slack;
}

// An item out of view can be scrolled into view.
bool scrolls(const QQuickItem* item) {
  for (const QQuickItem* above = item->parentItem(); above != nullptr;
       above = above->parentItem()) {
    if (above->inherits("QQuickFlickable")) return true;
  }
  return false;
}

QString placeOf(const QQuickItem* item) {
  QString place;
  for (const QQuickItem* above = item; above != nullptr; above = above->parentItem()) {
    if (!above->objectName().isEmpty()) place = above->objectName() + '/' + place;
  }
  return place + item->property("text").toString();
}

class SmallWindow : public Journey {
 protected:
  SmallWindow() : Journey("nothing 1K\n", lend) {
    window().resize(smallest);
    settle(window());
  }

  // A disk with a long name, and folders with longer ones.
  static void lend(Application::Services& services) {
    services.run = [](const std::string& path, const std::vector<std::string>& args, double) {
      if (path != "/bin/df") return noTools(path, args);
      return "Filesystem 1024-blocks Used Available Capacity Mounted on\n"
             "/dev/sda1 900000000 500000000 400000000 56% /\n"
             "/dev/sdb1 900000000 500000000 400000000 56% " +
             disk + "\n";
    };
    services.walk = [](const std::string& root, const DiskScanner::Callbacks&,
                       const DiskScanner::Options&) {
      const std::string outer = root + "/A folder with a name as long as names hardly ever are";
      const std::string inner = outer + "/And one inside of it whose name is no shorter than that";
      return folder(
          root,
          {folder(outer, {folder(inner, {file(inner + "/film.mp4"), file(inner + "/song.mp3")}),
                          file(outer + "/notes.txt")}),
           file(root + "/disk.iso")});
    };
  }

  void scan() {
    session().scan(disk);
    finishScan();
    session().machine().refreshDisk();
    settle(window());
  }
  void drillIn() { session().open(session().navigation().current()->children()[0]); }

  static void collect(QQuickItem* item, QRectF seen, std::vector<Placed>& found) {
    if (!item->isVisible() || item->opacity() == 0) return;
    if (item->clip()) seen = seen & rectOf(item);
    const QRectF rect = rectOf(item) & seen;
    if (!rect.isEmpty()) found.push_back({item, rect});
    for (QQuickItem* child : item->childItems()) collect(child, seen, found);
  }

  std::vector<Placed> all(const QString& layer) {
    settle(window());
    QQuickItem* const top = layer.isEmpty() ? window().contentItem() : item(layer);
    std::vector<Placed> found;
    if (top != nullptr) collect(top, QRectF(-1e6, -1e6, 2e6, 2e6), found);
    return found;
  }

  // Checks the whole window, or the layer over it.
  void expectRoomForAll(const QString& layer = {}) {
    const QRectF inWindow{{}, QSizeF(smallest)};
    std::vector<Placed> controls;
    std::vector<Placed> texts;
    for (const Placed& placed : all(layer)) {
      if (placed.item->activeFocusOnTab() && placed.item->isEnabled()) controls.push_back(placed);
      if (placed.item->inherits("QQuickText") &&
          !placed.item->property("text").toString().isEmpty())
        texts.push_back(placed);
    }
    EXPECT_GT(controls.size(), 1U);
    EXPECT_GT(texts.size(), 1U);
    for (const Placed& text : texts) {
      const std::string place = placeOf(text.item).toStdString();
      EXPECT_TRUE(inWindow.contains(text.rect)) << place;
      EXPECT_TRUE(isName(text.item) || !text.item->property("truncated").toBool()) << place;
      EXPECT_TRUE(scrolls(text.item) || isWhole(text)) << place;
      expectInsideOfItsControl(text.item, place);
    }
    for (const Placed& control : controls) {
      EXPECT_TRUE(inWindow.contains(control.rect)) << placeOf(control.item).toStdString();
    }
    expectApart(controls);
    expectApart(texts);
  }

 private:
  static void expectInsideOfItsControl(QQuickItem* text, const std::string& place) {
    for (QQuickItem* above = text->parentItem(); above != nullptr; above = above->parentItem()) {
      if (!above->inherits("QQuickAbstractButton")) continue;
      const QRectF room = rectOf(above).adjusted(-slack, -slack, slack, slack);
      EXPECT_TRUE(room.contains(rectOf(text))) << place;
      return;
    }
  }

  static void expectApart(const std::vector<Placed>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
      for (std::size_t j = i + 1; j < items.size(); ++j) {
        if (items[i].item->isAncestorOf(items[j].item)) continue;
        const QRectF shared = items[i].rect & items[j].rect;
        EXPECT_TRUE(shared.width() < slack || shared.height() < slack)
            << placeOf(items[i].item).toStdString() << " and "
            << placeOf(items[j].item).toStdString();
      }
    }
  }
};

TEST_F(SmallWindow, everything_fits_before_the_first_scan) {
  expectRoomForAll();
}

TEST_F(SmallWindow, everything_fits_during_a_scan) {
  session().scan(disk);
  expectRoomForAll();
}

TEST_F(SmallWindow, everything_fits_on_the_map) {
  scan();
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()),
            disk.substr(7));
  expectRoomForAll();
}

TEST_F(SmallWindow, everything_fits_two_folders_down_with_a_selection) {
  scan();
  drillIn();
  drillIn();
  session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
  expectRoomForAll();
}

TEST_F(SmallWindow, everything_fits_in_the_other_panes) {
  scan();
  drillIn();
  for (const MainPane pane : {MainPane::apps, MainPane::monitor}) {
    session().shown().setPane(pane);
    expectRoomForAll();
  }
}

TEST_F(SmallWindow, everything_fits_in_the_views_over_the_window) {
  scan();
  drillIn();
  session().shown().setMenuNode(session().navigation().current());
  expectRoomForAll("nodeMenu");
  session().shown().setMenuNode(std::nullopt);
  session().removal().setCriticalWarning(session().navigation().current());
  expectRoomForAll("protectedLocation");
  session().removal().dismissWarning();
  application().access().setShowGate(true);
  expectRoomForAll("gate");
}

}  // namespace
}  // namespace tessaly
