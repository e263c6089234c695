// The page of what can be won back, operated by pointer and keys.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include "app/panes/ListScene_test.h"
#include "app/panes/ListWinsState.h"
#include "app/panes/WinsFixture_test.h"
#include "support/Look.h"

namespace tessaly {
namespace {

using testing::SizeIs;

class ListWinsView : public WinsFixture {
 protected:
  ListWinsView() { followTrash(); }

  void show() {
    state_ = std::make_unique<ListWinsState>(session());
    finish();
    showView();
  }
  void showBeforeItsFirstPassEnds() {
    state_ = std::make_unique<ListWinsState>(session());
    showView();
    settleAll();
  }
  void showView() {
    scene_.show(QStringLiteral("ListWinsView { objectName: 'page'; anchors.fill: parent\n"
                               "wins: scene.wins }"),
                QStringLiteral("required property ListWinsState wins"),
                {{"wins", QVariant::fromValue(state_.get())}});
  }
  std::vector<QQuickItem*> rows() { return itemsNamed(scene_.view().contentItem(), "winRow"); }
  QQuickItem* part(int row, const QString& name) {
    for (QQuickItem* const each : rows()) {
      if (each->property("index") == row) return itemNamed(each, name);
    }
    return nullptr;
  }
  // The index of the row with the keyboard focus; -1 for none.
  int keyboardRow() {
    for (QQuickItem* const row : rows()) {
      if (row->hasActiveFocus()) return row->property("index").toInt();
    }
    return -1;
  }
  double scrolled() {
    QQuickItem* const list = scene_.item("winsList");
    return list->property("contentY").toDouble() - list->property("originY").toDouble();
  }
  bool isInSight(const QString& name) {
    return ListScene::rectOf(scene_.item("winsList"))
        .contains(ListScene::rectOf(scene_.item(name)));
  }
  void settleAll() {
    finish();
    scene_.update();
  }

  std::unique_ptr<ListWinsState> state_;
  ListScene scene_;
};

TEST_F(ListWinsView, the_header_has_the_given_look) {
  addCache("pip", 3 * mega);
  show();
  expectLook(scene_.item("page"),
             {{"winsTitle", "text", "Up to ~3.0 MB reclaimable"},
              {"winsTitle", "font.pixelSize", 17},
              {"winsPromise", "text",
               "Select items and move them to Trash. Nothing is deleted automatically."},
              {"winsPromise", "font.pixelSize", 11},
              {"winsPromise", "color", "#9ca3af at 1.00"},
              {"winsBadge", "color", "#34c759 at 0.15"},
              {"winsPick", "text", "Select All"},
              {"winsRefresh", "text", "Refresh"},
              {"winsRefresh", "symbol", "arrow.clockwise"}});
  EXPECT_FALSE(scene_.shows("winsMove"));
  EXPECT_FALSE(scene_.shows("snapshotRow"));
  EXPECT_FALSE(scene_.shows("freedBanner"));
  EXPECT_FALSE(scene_.shows("errorBanner"));
}

TEST_F(ListWinsView, a_row_has_the_given_look) {
  addCache("photos", 3 * mega, true);
  addTrash(mega);
  show();
  expectLook(rows()[0], {{"sectionTitle", "text", "Caches & developer junk"},
                         {"sectionTitle", "font.pixelSize", 11},
                         {"sectionTitle", "font.weight", 600},
                         {"sectionTitle", "font.letterSpacing", 0.5},
                         {"sectionTitle", "color", "#9ca3af at 1.00"},
                         {"title", "text", "photos cache"},
                         {"title", "font.pixelSize", 13},
                         {"cautionText", "text", "CAUTION"},
                         {"cautionText", "color", "#ff9500 at 1.00"},
                         {"note", "font.pixelSize", 11},
                         {"note", "color", "#9ca3af at 1.00"},
                         {"size", "width", 84},
                         {"size", "text", "3.0 MB"}});
  EXPECT_NE(part(0, "tickRow"), nullptr);
  EXPECT_EQ(part(0, "emptyTrashRow"), nullptr);
  EXPECT_EQ(part(1, "tickRow"), nullptr);
  EXPECT_NE(part(1, "emptyTrashRow"), nullptr);
  EXPECT_EQ(part(1, "cautionBadge"), nullptr);
}

TEST_F(ListWinsView, without_caches_the_section_says_so) {
  show();
  EXPECT_EQ(scene_.item("noCaches")->property("text").toString(), "No known caches found.");
}

TEST_F(ListWinsView, the_spinner_replaces_the_list_and_the_page_is_as_before_afterwards) {
  std::string twelfth;
  for (int i = 0; i < 30; ++i) {
    const std::string path = addCache("c" + std::to_string(100 + i), mega);
    if (i == 12) twelfth = path;
  }
  show();
  scene_.focusOn("winsList");
  for (int i = 0; i < 12; ++i) scene_.press(Qt::Key_Down);
  ASSERT_EQ(keyboardRow(), 12);
  state_->toggle(PathHandle(twelfth));
  scene_.update();
  const double before = scrolled();
  ASSERT_GT(before, 0);
  state_->load();
  scene_.update();
  EXPECT_TRUE(scene_.shows("winsSpinner"));
  EXPECT_FALSE(scene_.shows("winsList"));
  scene_.press(Qt::Key_Return);
  EXPECT_TRUE(machine_.workspace.revealed.empty());
  settleAll();
  EXPECT_FALSE(scene_.shows("winsSpinner"));
  EXPECT_EQ(scrolled(), before);
  EXPECT_EQ(keyboardRow(), 12);
  EXPECT_TRUE(part(12, "tickRow")->property("on").toBool());
  scene_.press(Qt::Key_Down);
  EXPECT_EQ(keyboardRow(), 13);
}

TEST_F(ListWinsView, a_click_on_the_box_ticks_and_a_click_on_the_row_shows_it) {
  const std::string film = addFile("film", mega);
  show();
  scene_.click(part(0, "tickRow"));
  EXPECT_TRUE(state_->hasPicked());
  EXPECT_TRUE(part(0, "tick")->isVisible());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
  scene_.click(part(0, "title"));
  EXPECT_THAT(machine_.workspace.revealed, SizeIs(1));
  EXPECT_TRUE(state_->hasPicked());
}

TEST_F(ListWinsView, return_shows_the_row_and_on_the_box_ticks_it) {
  addFile("film", mega);
  show();
  scene_.focusOn("winsList");
  ASSERT_EQ(keyboardRow(), 0);
  scene_.press(Qt::Key_Return);
  EXPECT_THAT(machine_.workspace.revealed, SizeIs(1));
  scene_.press(Qt::Key_Tab);
  EXPECT_EQ(scene_.focusedName(), "Select film");
  scene_.press(Qt::Key_Return);
  EXPECT_TRUE(state_->hasPicked());
  scene_.press(Qt::Key_Return);
  EXPECT_FALSE(state_->hasPicked());
}

TEST_F(ListWinsView, the_menu_key_opens_the_menu_of_the_row) {
  const std::string film = addFile("film", mega);
  show();
  scene_.focusOn("winsList");
  scene_.press(Qt::Key_Menu);
  EXPECT_EQ(scene_.item("winReveal")->property("text").toString(), "Show in File Manager");
  EXPECT_TRUE(scene_.shows("winShowOnMap"));
  scene_.press(Qt::Key_Down);
  scene_.press(Qt::Key_Return);
  EXPECT_THAT(machine_.workspace.revealed, SizeIs(1));
}

TEST_F(ListWinsView, a_move_is_made_by_the_button_and_shows_its_banners) {
  addCache("pip", 3 * mega);
  const std::string npm = addCache("npm", mega);
  refuse(npm);
  show();
  scene_.click(scene_.item("winsPick"));
  expectLook(scene_.item("page"),
             {{"winsMove", "text", "Move 2 to Trash · 4.0 MB"}, {"winsPick", "text", "Deselect"}});
  scene_.click(scene_.item("winsMove"));
  EXPECT_FALSE(scene_.item("winsMove")->isEnabled());
  EXPECT_FALSE(part(0, "tickRow")->isEnabled());
  EXPECT_EQ(scene_.item("winsMove")->property("text").toString(), "Moving… 0 of 2");
  EXPECT_TRUE(scene_.shows("winsStop"));
  EXPECT_FALSE(scene_.shows("winsPick"));
  settleAll();
  EXPECT_EQ(itemNamed(scene_.item("freedBanner"), "bannerText")->property("text").toString(),
            "Moved 1 item(s) to Trash — freed ~4.0 MB.");
  EXPECT_EQ(itemNamed(scene_.item("errorBanner"), "bannerText")->property("text").toString(),
            "1 item(s) couldn't be moved to Trash.");
  expectLook(scene_.item("freedBanner"), {{"bannerFill", "color", "#34c759 at 0.12"},
                                          {"bannerFill", "outlineColor", "#34c759 at 0.25"}});
  expectLook(scene_.item("errorBanner"), {{"bannerFill", "color", "#ff3b30 at 0.12"},
                                          {"bannerFill", "outlineColor", "#ff3b30 at 0.25"}});
  // The banners are in sight.
  EXPECT_TRUE(isInSight("freedBanner"));
}

TEST_F(ListWinsView, banners_are_in_sight_above_a_long_list_whose_top_was_in_sight) {
  finds_.snapshots = 2;
  for (int i = 0; i < 40; ++i) addCache("c" + std::to_string(100 + i), mega);
  showBeforeItsFirstPassEnds();
  EXPECT_TRUE(isInSight("snapshotRow"));
  state_->toggleAll();
  state_->trashSelected();
  settleAll();
  EXPECT_TRUE(isInSight("freedBanner"));
}

TEST_F(ListWinsView, the_list_begins_at_its_top_when_the_first_caches_arrive) {
  for (int i = 0; i < 40; ++i) addCache("c" + std::to_string(100 + i), mega);
  showBeforeItsFirstPassEnds();
  const double top = ListScene::rectOf(scene_.item("winsList")).top();
  EXPECT_LT(ListScene::rectOf(part(0, "sectionTitle")).top() - top, 30);
}

TEST_F(ListWinsView, a_banner_does_not_move_the_rows_of_a_list_that_is_scrolled) {
  std::string last;
  for (int i = 0; i < 40; ++i) last = addCache("c" + std::to_string(100 + i), mega);
  show();
  scene_.item("winsList")->setProperty("contentY", 600);
  scene_.update();
  ASSERT_NE(part(15, "title"), nullptr);
  const double before = ListScene::rectOf(part(15, "title")).top();
  state_->toggle(PathHandle(last));
  state_->trashSelected();
  settleAll();
  EXPECT_NE(state_->freedText(), "");
  ASSERT_NE(part(15, "title"), nullptr);
  EXPECT_EQ(ListScene::rectOf(part(15, "title")).top(), before);
}

TEST_F(ListWinsView, the_button_that_moves_is_at_most_260_points_wide) {
  addCache("pip", mega);
  show();
  state_->toggleAll();
  scene_.update();
  EXPECT_LT(scene_.item("winsMove")->width(), 260);
  scene_.item("winsMove")->setProperty("text", QString(200, QLatin1Char('m')));
  scene_.update();
  EXPECT_EQ(scene_.item("winsMove")->width(), 260);
}

TEST_F(ListWinsView, a_stop_leaves_the_rest_ticked) {
  addCache("a", 4 * mega);
  const std::string b = addCache("b", 2 * mega);
  show();
  scene_.click(scene_.item("winsPick"));
  scene_.click(scene_.item("winsMove"));
  scene_.click(scene_.item("winsStop"));
  EXPECT_EQ(scene_.item("winsStop")->property("text").toString(), "Stopping…");
  settleAll();
  EXPECT_EQ(scene_.item("winsMove")->property("text").toString(), "Move 2 to Trash · 6.0 MB");
}

TEST_F(ListWinsView, snapshots_are_thinned_by_their_button) {
  finds_.snapshots = 2;
  show();
  EXPECT_EQ(scene_.item("snapshotText")->property("text").toString(), "2 local snapshots");
  answer_ = "Run: sudo thin";
  scene_.click(scene_.item("thinSnapshots"));
  EXPECT_FALSE(scene_.item("thinSnapshots")->isEnabled());
  settleAll();
  EXPECT_EQ(itemNamed(scene_.item("freedBanner"), "bannerText")->property("text").toString(),
            "Run: sudo thin");
}

TEST_F(ListWinsView, the_trash_is_emptied_by_its_button) {
  addTrash(7 * mega);
  show();
  scene_.click(part(0, "emptyTrashRow"));
  settleAll();
  EXPECT_EQ(emptyings_, 1);
}

TEST_F(ListWinsView, a_row_that_is_gone_is_dimmed_and_cannot_be_ticked) {
  vanish(addWin("node_modules", mega, "node_modules"));
  show();
  EXPECT_FALSE(part(0, "tickRow")->isEnabled());
  EXPECT_EQ(part(0, "size")->opacity(), 0.45);
  EXPECT_EQ(part(0, "title")->parentItem()->opacity(), 0.45);
}

TEST_F(ListWinsView, rows_boxes_and_headings_are_told_to_assistive_tools) {
  addWin("node_modules", mega, "node_modules");
  show();
  QAccessibleInterface* const box = QAccessible::queryAccessibleInterface(part(0, "tickRow"));
  EXPECT_EQ(box->role(), QAccessible::CheckBox);
  EXPECT_FALSE(box->state().checked);
  state_->toggleAll();
  scene_.update();
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(part(0, "tickRow"))->state().checked);
  // A click changes the box as well as the list.
  scene_.click(part(0, "tickRow"));
  scene_.click(part(0, "tickRow"));
  state_->toggleAll();
  scene_.update();
  EXPECT_FALSE(QAccessible::queryAccessibleInterface(part(0, "tickRow"))->state().checked);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(rows()[0])->role(), QAccessible::ListItem);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(part(0, "sectionTitle"))->text(QAccessible::Name),
            "In this scan");
}

}  // namespace
}  // namespace tessaly
