// The contents of the sidebar in each case, and its controls operated by pointer.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/sidebar/SidebarScene_test.h"
#include "support/PointerMoves.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

class Sidebar : public SidebarScene {
 protected:
  QQuickItem* rowOf(const QString& section, const QString& name) const {
    for (QQuickItem* row : all("pathRow", find(section)))
      if (row->property("name") == name) return row;
    ADD_FAILURE() << "no row for " << name.toStdString();
    return find(section);
  }
  QQuickItem* in(QQuickItem* row, const QString& name) const { return all(name, row).front(); }
  std::vector<std::string> many(const std::string& start, int count) const {
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) paths.push_back(start + std::to_string(i));
    return paths;
  }
};

TEST_F(Sidebar, a_sidebar_without_content_shows_the_permanent_sections) {
  show(1000);
  EXPECT_FALSE(shows("volumeMenu"));
  EXPECT_FALSE(shows("volumesAndHistorySection"));
  EXPECT_TRUE(shows("noExcludes"));
  EXPECT_FALSE(shows("cancelScan"));
  EXPECT_TRUE(all("badge", find("diskTreemap")).empty());
  EXPECT_TRUE(all("badge", find("emptyTrash")).empty());
  EXPECT_EQ(rectOf(find("excludedSection")).top(),
            rectOf(find("cleanupCategoriesSection")).bottom() + 14);
  keepPicture("sidebar-empty");
}

TEST_F(Sidebar, the_first_scanned_folder_appears_at_once) {
  show(1000);
  ASSERT_FALSE(shows("recents"));
  scanTo(folder("/srv/a", 1, {file("/srv/a/b", 1)}));
  settle();
  EXPECT_TRUE(shows("recents"));
  EXPECT_EQ(labels("recents"), QStringList{"a"});
}

TEST_F(Sidebar, a_full_sidebar_keeps_its_items_in_the_column_without_overlaps) {
  fill();
  show(680);
  keepPicture("sidebar-680");
  double bottom = 0;
  for (const char* name : {"volumeName", "volumeTotal", "gauge", "headerTitle", "background",
                           "pathLabel", "star", "excludeName", "removeExclude", "highlight", "skip",
                           "devBloatHint", "dotLabel", "rescanVolume"}) {
    const auto items = all(name);
    EXPECT_FALSE(items.empty()) << name;
    for (QQuickItem* item : items) {
      EXPECT_GE(rectOf(item).left(), 12) << name;
      EXPECT_LE(rectOf(item).right(), 248) << name;
    }
  }
  for (const char* name : {"driveCard", "quickActionsSection", "cleanupCategoriesSection", "pinned",
                           "recents", "excludedSection", "devBloatSection", "fileTypeLegend"}) {
    QQuickItem* section = find(name);
    EXPECT_GE(rectOf(section).top(), bottom) << name;
    bottom = rectOf(section).bottom();
    double above = rectOf(section).top();
    for (QQuickItem* child : section->childItems()) {
      if (!child->isVisible() || child->height() == 0 || section->objectName() == "driveCard")
        continue;
      EXPECT_GE(rectOf(child).top(), above) << name;
      above = rectOf(child).bottom();
    }
  }
  find("scrollArea")->setProperty("contentY", 500);
  keepPicture("sidebar-680-below");
  view().resize(260, 1420);
  keepPicture("sidebar-full");
}

TEST_F(Sidebar, an_empty_list_is_hidden) {
  remember(ScanStore::recentsKey, {"/srv/a"});
  show(1000);
  EXPECT_FALSE(shows("pinned"));
  EXPECT_TRUE(shows("recents"));
  EXPECT_EQ(rectOf(find("recents")).top(), rectOf(find("cleanupCategoriesSection")).bottom() + 14);
  click(in(rowOf("recents", "a"), "star"));
  EXPECT_TRUE(shows("pinned"));
  EXPECT_EQ(rectOf(find("recents")).top(), rectOf(find("pinned")).bottom() + 14);
}

TEST_F(Sidebar, the_volume_menu_is_shown_for_two_or_more_volumes) {
  mount({"/"});
  show();
  EXPECT_FALSE(shows("volumeMenu"));
  mount({"/", "Backup"});
  settle();
  EXPECT_TRUE(shows("volumeMenu"));
  mount({"/"});
  settle();
  EXPECT_FALSE(shows("volumeMenu"));
}

TEST_F(Sidebar, choosing_a_volume_scans_it) {
  mount({"/", "Backup", "Films"});
  show();
  click("volumeMenu");
  EXPECT_EQ(labels("menuRows", "menuLabel"), (QStringList{"System Disk", "Backup", "Films"}));
  keepPicture("sidebar-volumes");
  click(all("volume")[2]);
  EXPECT_EQ(session().run().scanRoot(), "/media/Films");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_FALSE(shows("menuRows"));
}

TEST_F(Sidebar, the_volume_menu_closes_without_a_choice) {
  mount({"/", "Backup"});
  show();
  click("volumeMenu");
  click("volumeMenu");
  EXPECT_FALSE(shows("menuRows"));
  click("volumeMenu");
  EXPECT_TRUE(shows("menuRows"));
  click("rescanVolume");
  EXPECT_FALSE(shows("menuRows"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  click("volumeMenu");
  EXPECT_TRUE(shows("menuRows"));
  mount({"/"});
  settle();
  EXPECT_FALSE(shows("volumeMenu"));
  EXPECT_FALSE(shows("menuRows"));
}

TEST_F(Sidebar, wheel_and_finger_scroll_the_volumes_and_dragging_with_the_mouse_does_not) {
  QStringList names = {"/"};
  for (int i = 1; i < 200; ++i) names << QStringLiteral("disk%1").arg(i);
  mount(names);
  show();
  click("volumeMenu");
  const QPoint middle = rectOf(find("menuPlace")).center().toPoint();
  pullByMouse(view(), middle, {0, -100});
  EXPECT_EQ(read("menuPlace", "contentY").toDouble(), 0);
  turnWheel(view(), middle, {0, -120});
  EXPECT_EQ(read("menuPlace", "contentY").toDouble(), 60);
  turnWheel(view(), middle, {0, 1200});
  EXPECT_EQ(read("menuPlace", "contentY").toDouble(), 0);
  pullByFinger(view(), middle, {0, -100});
  EXPECT_GT(read("menuPlace", "contentY").toDouble(), 20);
  EXPECT_TRUE(shows("menuRows"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(Sidebar, items_below_the_volume_menu_are_not_hovered) {
  mount({"/", "Backup"});
  show();
  QQuickItem* const below = find("rescanVolume");
  hover(below);
  ASSERT_TRUE(below->property("hovered").toBool());
  click("volumeMenu");
  ASSERT_TRUE(shows("menuRows"));
  hover(below);
  EXPECT_FALSE(below->property("hovered").toBool());
}

TEST_F(Sidebar, each_way_to_scan_the_whole_disk_raises_the_gate) {
  settings_.setTexts(ScanStore::pinsKey, {"/"});
  remember(ScanStore::recentsKey, {"/"});
  mount({"/", "Backup"});
  const std::string before = session().run().scanRoot();
  show(1000);
  const std::vector<std::function<void()>> ways = {
      [&] { click("scanFullMac"); },
      [&] { click(in(rowOf("pinned", "System Disk"), "pathLabel")); },
      [&] { click(in(rowOf("recents", "System Disk"), "pathLabel")); },
      [&] {
        click("volumeMenu");
        click(all("volume")[0]);
      }};
  for (const auto& way : ways) {
    access().setShowGate(false);
    way();
    EXPECT_TRUE(access().showGate());
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
    EXPECT_EQ(session().run().scanRoot(), before);
  }
  mayRead_ = true;
  for (const auto& way : ways) {
    way();
    EXPECT_EQ(session().run().status(), ScanStatus::scanning);
    EXPECT_EQ(session().run().scanRoot(), "/");
    session().run().cancel();
    settle();
  }
  EXPECT_FALSE(access().showGate());
}

TEST_F(Sidebar, another_folder_is_scanned_at_once) {
  settings_.setTexts(ScanStore::pinsKey, {"/srv/pin"});
  remember(ScanStore::recentsKey, {"/srv/caf\xe9"});
  show(1000);
  click(in(rowOf("pinned", "pin"), "pathLabel"));
  EXPECT_EQ(session().run().scanRoot(), "/srv/pin");
  session().run().cancel();
  settle();
  click(in(rowOf("recents", QStringLiteral("caf\uFFFD")), "pathLabel"));
  EXPECT_EQ(session().run().scanRoot(), "/srv/caf\xe9");
  session().run().cancel();
  settle();
  click("scanHome");
  EXPECT_EQ(session().run().scanRoot(), "/home/user");
  session().run().cancel();
  settle();
  folderPanel_.answer = "/chosen";
  click("chooseFolder");
  EXPECT_EQ(session().run().scanRoot(), "/chosen");
  EXPECT_FALSE(access().showGate());
}

TEST_F(Sidebar, no_second_scan_starts_while_one_runs) {
  fill();
  show(1180);
  session().scan("/srv/running");
  settle();
  for (const char* name : {"scanFullMac", "scanHome", "chooseFolder"}) {
    EXPECT_FALSE(find(name)->isEnabled()) << name;
    click(name);
  }
  for (QQuickItem* label : all("pathLabel")) {
    EXPECT_FALSE(label->isEnabled());
    click(label);
  }
  for (QQuickItem* star : all("star")) EXPECT_TRUE(star->isEnabled());
  EXPECT_EQ(session().run().scanRoot(), "/srv/running");
  EXPECT_FALSE(access().showGate());
  EXPECT_TRUE(folderPanel_.requests.empty());
  keepPicture("sidebar-scanning");
  click("cancelScan");
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_FALSE(shows("cancelScan"));
  EXPECT_TRUE(find("scanHome")->isEnabled());
}

TEST_F(Sidebar, the_footer_scans_again) {
  fill();
  show();
  click("rescanVolume");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().scanRoot(), "/home/user");
}

TEST_F(Sidebar, the_entries_show_their_panes) {
  show();
  click("systemPulse");
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  EXPECT_TRUE(read("systemPulse", "active").toBool());
  EXPECT_FALSE(read("diskTreemap", "active").toBool());
  click("appLeftovers");
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
  EXPECT_TRUE(read("appLeftovers", "active").toBool());
  click("diskTreemap");
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  EXPECT_TRUE(read("diskTreemap", "active").toBool());
}

TEST_F(Sidebar, a_click_empties_the_trash_and_a_second_one_does_nothing) {
  fillTrash(3);
  show();
  click("emptyTrash");
  click("emptyTrash");
  dispatch_.drainAll();
  settle();
  EXPECT_EQ(emptyings_, 1);
  EXPECT_TRUE(all("badge", find("emptyTrash")).empty());
  EXPECT_FALSE(read("emptyTrash", "active").toBool());
  click("emptyTrash");
  dispatch_.drainAll();
  EXPECT_EQ(emptyings_, 1);
}

TEST_F(Sidebar, a_pinned_folder_that_is_also_recent_is_in_both_lists) {
  remember(ScanStore::recentsKey, {"/srv/a", "/srv/b"});
  show(1000);
  click(in(rowOf("recents", "b"), "star"));
  EXPECT_THAT(session().choices().pins(), ElementsAre("/srv/b"));
  EXPECT_EQ(labels("pinned"), QStringList{"b"});
  EXPECT_EQ(labels("recents"), (QStringList{"a", "b"}));
  EXPECT_EQ(in(in(rowOf("pinned", "b"), "star"), "symbol")->property("name"), "star.fill");
  EXPECT_EQ(in(in(rowOf("recents", "b"), "star"), "symbol")->property("name"), "star");
  click(in(rowOf("pinned", "b"), "star"));
  EXPECT_TRUE(session().choices().pins().empty());
  EXPECT_FALSE(shows("pinned"));
}

TEST_F(Sidebar, folders_are_added_to_the_excluded_ones_and_removed) {
  show(1000);
  folderPanel_.answer = "/srv/caf\xe9";
  click("addExclude");
  EXPECT_THAT(session().choices().excludes(), ElementsAre("/srv/caf\xe9"));
  EXPECT_EQ(labels("excludedSection", "excludeName"), QStringList{QStringLiteral("caf\uFFFD")});
  EXPECT_FALSE(shows("noExcludes"));
  click("removeExclude");
  EXPECT_TRUE(session().choices().excludes().empty());
  EXPECT_TRUE(shows("noExcludes"));
}

std::vector<std::string> manyFolders() {
  std::vector<std::string> folders;
  for (int i = 0; i < 10000; ++i) folders.push_back("/srv/" + std::to_string(i));
  return folders;
}

// The number of rows that are built, visible or not.
int rowsBuilt(QQuickItem* top, const QString& name) {
  int count = top->objectName() == name ? 1 : 0;
  for (QQuickItem* child : top->childItems()) count += rowsBuilt(child, name);
  return count;
}

TEST_F(Sidebar, only_the_rows_near_the_visible_part_of_10000_excluded_folders_are_built) {
  remember(ScanStore::excludesKey, manyFolders());
  show(1400);
  EXPECT_EQ(read("excludes", "count"), 10000);
  EXPECT_LE(rowsBuilt(find("excludedSection"), "excludeRow"), 40);
  EXPECT_GE(rowsBuilt(find("excludedSection"), "excludeRow"), 10);
  EXPECT_LE(rectOf(find("excludes")).height(), 300);
  EXPECT_EQ(labels("excludedSection", "excludeName").front(), "0");
  find("excludes")->setProperty("contentY", 1e9);
  settle();
  EXPECT_LE(rowsBuilt(find("excludedSection"), "excludeRow"), 40);
  find("scrollArea")->setProperty("contentY", 1e9);
  settle();
  EXPECT_LE(rowsBuilt(find("excludedSection"), "excludeRow"), 40);
}

TEST_F(Sidebar, the_wheel_scrolls_a_long_list_first_and_then_the_column) {
  remember(ScanStore::excludesKey, manyFolders());
  show(680);
  QQuickItem* const area = find("scrollArea");
  area->setProperty("contentY", rectOf(find("excludes")).top() - 200);
  settle();
  const double column = scrolled();
  ASSERT_TRUE(rectOf(find("excludes")).contains(130, 300));
  wheel(-30);
  EXPECT_GT(read("excludes", "contentY").toDouble(), 0);
  EXPECT_EQ(scrolled(), column);
  wheel(30);
  EXPECT_EQ(read("excludes", "contentY").toDouble(), 0);
  wheel(30);
  EXPECT_LT(scrolled(), column);
}

TEST_F(Sidebar, the_clicked_row_of_a_long_list_is_removed) {
  remember(ScanStore::excludesKey, manyFolders());
  show(1400);
  find("excludes")->setProperty("contentY", 26 * 5000.0);
  settle();
  const QRectF list = rectOf(find("excludes"));
  const std::vector<QQuickItem*> rows = all("excludeRow");
  const auto inSight = std::ranges::find_if(
      rows, [&](QQuickItem* candidate) { return list.contains(rectOf(candidate)); });
  ASSERT_NE(inSight, rows.end());
  QQuickItem* const row = *inSight;
  const std::string path = "/srv/" + text(row, "excludeName").toStdString();
  click(all("removeExclude", row).front());
  EXPECT_EQ(session().choices().excludes().size(), 9999U);
  EXPECT_EQ(std::ranges::count(session().choices().excludes(), path), 0);
}

TEST_F(Sidebar, at_most_8_pins_and_5_recent_folders_are_shown) {
  settings_.setTexts(ScanStore::pinsKey, manyFolders());
  remember(ScanStore::recentsKey, manyFolders());
  show(1400);
  EXPECT_EQ(rowsBuilt(find("pinned"), "pathRow"), 8);
  EXPECT_EQ(rowsBuilt(find("recents"), "pathRow"), 5);
}

TEST_F(Sidebar, highlighting_and_skipping_a_filter_are_independent) {
  show(1000);
  click("xcode/highlight");
  click("build/skip");
  EXPECT_TRUE(session().choices().filters()[1].enabled);
  EXPECT_FALSE(session().choices().filters()[1].skipScan);
  EXPECT_FALSE(session().choices().filters()[2].enabled);
  EXPECT_TRUE(session().choices().filters()[2].skipScan);
  EXPECT_TRUE(read("xcode/highlight", "on").toBool());
  EXPECT_FALSE(read("build/highlight", "on").toBool());
  click("xcode/highlight");
  click("build/skip");
  EXPECT_EQ(session().choices().filters(), BloatFilter::catalog());
}

TEST_F(Sidebar, a_symbol_has_a_tool_tip_while_the_pointer_rests_on_it) {
  show(1000);
  hover(find("addExclude"));
  auto* tip = find("addExclude")->findChild<QObject*>("toolTip");
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->property("text"), "Exclude a folder from scans");
  EXPECT_GT(tip->property("delay").toInt(), 0);
  tip->setProperty("delay", 0);
  hover(find("scanHome"));
  EXPECT_EQ(find("addExclude")->findChild<QObject*>("toolTip"), nullptr);
}

TEST_F(Sidebar, hundreds_of_rows_do_not_overlap) {
  settings_.setTexts(ScanStore::pinsKey, many("/srv/pin", 200));
  settings_.setTexts(ScanStore::recentsKey, many("/srv/recent", 200));
  remember(ScanStore::excludesKey, many("/srv/" + std::string(300, 'w') + "-", 200));
  show();
  std::vector<QQuickItem*> rows = all("pathRow");
  ASSERT_EQ(rows.size(), 13U);
  const QRectF list = rectOf(find("excludes"));
  double bottom = 0;
  for (QQuickItem* row : rows) {
    const QRectF rect = rectOf(row);
    EXPECT_GE(rect.top(), bottom);
    EXPECT_GT(rect.height(), 15);
    EXPECT_EQ(rect.left(), 12);
    EXPECT_EQ(rect.right(), 248);
    bottom = rect.bottom();
  }
  EXPECT_GE(list.top(), bottom);
  std::vector<QQuickItem*> excluded = all("excludeRow");
  ASSERT_GE(excluded.size(), 10U);
  std::ranges::sort(excluded, {}, [](QQuickItem* row) { return rectOf(row).top(); });
  bottom = list.top();
  for (QQuickItem* row : excluded) {
    const QRectF rect = rectOf(row);
    EXPECT_GE(rect.top(), bottom);
    EXPECT_GT(rect.height(), 15);
    EXPECT_EQ(rect.left(), 12);
    EXPECT_EQ(rect.right(), 238);
    bottom = rect.bottom();
  }
  EXPECT_GE(rectOf(find("devBloatSection")).top(), list.bottom());
  EXPECT_TRUE(read("scrollBar", "visible").toBool());
  EXPECT_TRUE(all("excludeName").front()->property("truncated").toBool());
  press(Qt::Key_Tab);
  press(Qt::Key_End);
  EXPECT_EQ(scrolled(), read("scrollArea", "contentHeight").toDouble() -
                            read("scrollArea", "height").toDouble());
  EXPECT_LE(rectOf(find("fileTypeLegend")).bottom(), rectOf(find("bottomScanFooter")).top());
}

TEST_F(Sidebar, long_names_are_elided_everywhere) {
  const std::string longName(200, 'w');
  settings_.setTexts(ScanStore::pinsKey, {"/srv/" + longName});
  settings_.setTexts(ScanStore::recentsKey, {"/srv/" + longName});
  remember(ScanStore::excludesKey, {"/srv/" + longName});
  df_ =
      "Filesystem 1K-blocks Used Available Use% Mounted on\n/dev/sda1 1 1 1 60% /\n"
      "/dev/sda2 1 1 1 60% /media/" +
      longName + "\n";
  scanTo(folder("/media/" + longName, 1, {file("/media/" + longName + "/f", 1)}));
  show(1000);
  click("volumeMenu");
  for (QQuickItem* item : {in(find("pinned"), "label"), in(find("recents"), "label"),
                           find("excludeName"), find("volumeName"), all("menuLabel")[1]}) {
    EXPECT_TRUE(item->property("truncated").toBool());
    EXPECT_LE(rectOf(item).right(), 260);
  }
}

TEST_F(Sidebar, the_wheel_scrolls_to_the_ends_and_no_further) {
  fill();
  show();
  EXPECT_EQ(scrolled(), 0);
  wheel(-15);
  EXPECT_EQ(scrolled(), 60);
  for (int turn = 0; turn < 60; ++turn) wheel(-15);
  EXPECT_EQ(scrolled(), read("scrollArea", "contentHeight").toDouble() -
                            read("scrollArea", "height").toDouble());
  for (int turn = 0; turn < 60; ++turn) wheel(15);
  EXPECT_EQ(scrolled(), 0);
}

}  // namespace
}  // namespace tessaly
