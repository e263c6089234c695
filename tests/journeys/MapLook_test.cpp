// Sizes, colours, fonts and texts of the screens of the map pane, and of the views over the map.
#include <string>
#include <vector>

#include <QFont>

#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class MapLook : public Journey {
 protected:
  MapLook()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "notes.txt 2M\n") {}

  void scan() {
    session().scanHome();
    finishScan();
  }

  // An item's rectangle in the window.
  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }
  QRectF rectOf(const QString& name) { return rectOf(item(name)); }
};

TEST_F(MapLook, the_idle_screen_looks_as_designed) {
  QQuickItem* const screen = item("idleScreen");
  expectLook(screen,
             {{"emblem", "width", 88},
              {"emblem", "height", 88},
              {"emblem", "radius", 24},
              {"emblem", "color", "#007aff at 1.00"},
              {"emblem", "endColor", "#5856d6 at 1.00"},
              {"emblem", "shadowColor", "#007aff at 0.40"},
              {"emblem/emblemSymbol", "name", "externaldrive.fill"},
              {"emblem/emblemSymbol", "size", 40},
              {"title", "text", "Tessaly"},
              {"title", "font.pixelSize", 28},
              {"line", "text", "Disk space visualizer, developer cache cleaner & system monitor."},
              {"line", "font.pixelSize", 13},
              {"line", "width", 420},
              {"idleScanHome", "width", 200},
              {"idleScanHome/label", "text", "Scan Home Folder"},
              {"idleScanHome/symbol", "name", "house.fill"},
              {"idleScanHome/background", "endColor", "#0056b3 at 1.00"},
              {"idleChooseFolder", "width", 180},
              {"idleChooseFolder/label", "text", "Choose Folder…"},
              {"idleChooseFolder/symbol", "name", "folder.fill"},
              {"idleChooseFolder/background", "color", "#232530 at 1.00"}});
  const double middle = rectOf(screen).center().x();
  for (const char* name : {"emblem", "title", "line"})
    EXPECT_NEAR(rectOf(itemNamed(screen, name)).center().x(), middle, 0.5) << name;
  EXPECT_GT(rectOf("idleChooseFolder").left(), rectOf("idleScanHome").right());
}

TEST_F(MapLook, the_scanning_screen_looks_as_designed) {
  session().scanHome();
  QQuickItem* const screen = item("scanningScreen");
  expectLook(screen, {{"ring", "width", 68},
                      {"ring", "height", 68},
                      {"ring", "value", 0},
                      {"title", "text", "Analyzing Disk Hierarchy…"},
                      {"title", "font.pixelSize", 16},
                      {"progress", "font.pixelSize", 11},
                      {"progress", "font.family", "JetBrains Mono"},
                      {"progress", "width", 480},
                      {"percent", "text", "0%"},
                      {"cancel/label", "text", "Cancel"},
                      {"cancel", "width", 120}});
}

TEST_F(MapLook, the_banner_over_a_later_scan_looks_as_designed) {
  scan();
  session().rescan();
  QQuickItem* const banner = item("banner");
  expectLook(banner, {{"ring", "from", "#007aff at 1.00"},
                      {"progress", "text", "Scanning started…"},
                      {"progress", "font.pixelSize", 11},
                      {"progress", "font.family", "JetBrains Mono"},
                      {"percent", "text", "0%"},
                      {"percent", "font.pixelSize", 11},
                      {"percent", "font.weight", QFont::Bold},
                      {"cancel/label", "text", "Cancel"}});
  const QRectF screen = rectOf("resultScreen");
  EXPECT_NEAR(rectOf(banner).center().x(), screen.center().x(), 0.5);
  EXPECT_EQ(rectOf(banner).top(), rectOf("modeBar").bottom() + 8);
}

TEST_F(MapLook, a_failed_scan_looks_as_designed) {
  session().scan(tree_.at("gone"));
  finishScan();
  expectLook(item("failedScreen"), {{"warning", "name", "exclamationmark.triangle.fill"},
                                    {"warning", "size", 36},
                                    {"warning", "color", "#ff3b30 at 1.00"},
                                    {"title", "text", "Scan Failed"},
                                    {"title", "font.pixelSize", 18},
                                    {"message", "font.pixelSize", 12},
                                    {"message", "font.family", "JetBrains Mono"},
                                    {"message", "color", "#ff3b30 at 1.00"},
                                    {"message", "opacity", 0.9},
                                    {"message", "width", 420},
                                    {"tryAgain/label", "text", "Try Again"},
                                    {"tryAgain", "width", 140}});
}

TEST_F(MapLook, the_header_looks_as_designed) {
  scan();
  session().open(session().navigation().current()->children()[0]);
  QQuickItem* const header = item("header");
  expectLook(header, {{"folder", "name", "folder.fill"},
                      {"folder", "size", 11},
                      {"folder", "color", "#007aff at 1.00"},
                      {"name", "text", "Movies"},
                      {"name", "font.pixelSize", 12},
                      {"name", "font.weight", QFont::Bold},
                      {"size", "text", "6.0 MB"},
                      {"size", "font.pixelSize", 12},
                      {"size", "font.weight", QFont::Bold},
                      {"size", "color", "#9ca3af at 1.00"},
                      {"items", "text", "(1 items)"},
                      {"items", "font.pixelSize", 11},
                      {"items", "opacity", 0.8},
                      {"stats", "font.pixelSize", 10},
                      {"stats", "font.family", "JetBrains Mono"},
                      {"stats", "color", "#9ca3af at 1.00"}});
  EXPECT_EQ(rectOf(itemNamed(header, "stats")).right(), rectOf(header).right() - 14);
  EXPECT_GT(rectOf("breakdown").top(), rectOf(itemNamed(header, "name")).bottom());
}

TEST_F(MapLook, a_header_with_the_longest_name_looks_as_designed_in_the_smallest_window) {
  tree_.plant(std::string(200, 'n') + "/\n  film.mp4 20M\n");
  scan();
  session().open(session().navigation().current()->children()[0]);
  window().resize(1100, 680);
  QQuickItem* const header = item("header");
  double end = rectOf(header).left() + 14;
  for (const char* name : {"folder", "name", "size", "items", "stats"}) {
    QQuickItem* const part = itemNamed(header, name);
    EXPECT_GE(rectOf(part).left(), end) << name;
    EXPECT_EQ(part->property("truncated").toBool(), std::string(name) == "name") << name;
    end = rectOf(part).right();
  }
  EXPECT_EQ(end, 1100 - 14);
  EXPECT_GT(itemNamed(header, "name")->width(), 100);
}

TEST_F(MapLook, the_bar_of_kinds_looks_as_designed) {
  scan();
  QQuickItem* const bar = item("breakdown");
  EXPECT_EQ(bar->property("spacing").toDouble(), 6);
  EXPECT_EQ(itemNamed(bar, "segments")->height(), 10);

  const std::vector<QQuickItem*> entries = itemsNamed(itemNamed(bar, "legend"), "entry");
  ASSERT_EQ(entries.size(), 2U);
  expectLook(entries[0], {{"", "spacing", 4},
                          {"dot", "width", 5},
                          {"dot", "height", 5},
                          {"dot", "radius", 2.5},
                          {"word", "text", "Video"},
                          {"word", "font.pixelSize", 10},
                          {"percent", "text", "75%"},
                          {"percent", "font.pixelSize", 10},
                          {"percent", "font.family", "JetBrains Mono"}});
}

}  // namespace
}  // namespace tessaly
