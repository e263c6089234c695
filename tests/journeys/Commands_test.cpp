// The window's commands, by their keys and from the menu.
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>

#include "journeys/CommandJourney.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Each command with keys, by the keys and from the menu.
class Commands : public CommandJourney, public testing::WithParamInterface<bool> {
 protected:
  Commands() { scan(); }

  void give(const char* title, Keys keys) {
    if (GetParam()) {
      press(keys.key, keys.modifiers);
    } else {
      choose(title);
    }
  }
};

TEST_P(Commands, search_opens_the_search) {
  give("Search Files…", {Qt::Key_F, command});
  EXPECT_TRUE(shows("search"));
}

TEST_P(Commands, quick_search_opens_the_search) {
  give("Quick Search", {Qt::Key_Space, commandShift});
  EXPECT_TRUE(shows("search"));
}

TEST_P(Commands, queue_selection_queues_the_selection) {
  session().selection().selectNodes({child(0), child(1)}, false);
  give("Queue Selection", {Qt::Key_L, commandShift});
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(2));
  EXPECT_TRUE(shows("cleanupQueue"));
  EXPECT_EQ(text("toast"), QStringLiteral("Queued 2 items"));
}

TEST_P(Commands, compare_folder_asks_for_a_folder) {
  give("Compare Folder…", {Qt::Key_K, command});
  EXPECT_THAT(folderPanel_.requests, SizeIs(1));
}

TEST_P(Commands, watch_folder_starts_and_stops_the_watch) {
  give("Watch Folder", {Qt::Key_W, commandOption});
  EXPECT_TRUE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), tree_.path());
  give("Watch Folder", {Qt::Key_W, commandOption});
  EXPECT_FALSE(session().watch().watching());
}

TEST_P(Commands, zip_then_trash_asks_where_to_save_the_archive) {
  session().selection().selectNodes({child(1)}, false);
  give("Zip Then Trash Selection", {Qt::Key_E, commandShift});
  EXPECT_THAT(machine_.savePanel.requests, SizeIs(1));
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
}

TEST_P(Commands, go_back_leaves_the_folder) {
  session().open(child(0));
  ASSERT_TRUE(shows("crumbs"));
  give("Go Back", {Qt::Key_BracketLeft, command});
  EXPECT_THAT(session().navigation().stack(), SizeIs(1));
  EXPECT_FALSE(shows("crumbs"));
}

TEST_P(Commands, rescan_scans_again) {
  give("Rescan", {Qt::Key_R, command});
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_TRUE(shows("banner"));
  press(Qt::Key_F10);
  EXPECT_FALSE(rowOf("Rescan")->isEnabled());
  finishScan();
  EXPECT_TRUE(rowOf("Rescan")->isEnabled());
}

TEST_P(Commands, queue_focused_item_queues_the_focused_item) {
  session().selection().setFocused(child(1));
  give("Queue Focused Item", {Qt::Key_L, command});
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), tree_.at("notes.txt"));
  EXPECT_TRUE(shows("cleanupQueue"));
}

TEST_P(Commands, queue_focused_item_does_nothing_without_a_focus) {
  session().selection().setFocused(std::nullopt);
  give("Queue Focused Item", {Qt::Key_L, command});
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_FALSE(shows("cleanupQueue"));
}

TEST_P(Commands, quick_look_previews_the_focused_item) {
  session().selection().setFocused(child(1));
  give("Quick Look", {Qt::Key_Y, command});
  EXPECT_THAT(machine_.previewPanel.shown, ElementsAre("file://" + tree_.at("notes.txt")));
}

TEST_P(Commands, select_all_visible_selects_all_tiles) {
  give("Select All Visible", {Qt::Key_A, command});
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
  EXPECT_EQ(text("queueSelection"), QStringLiteral("Queue (2)"));
}

TEST_P(Commands, copy_path_copies_the_selected_paths) {
  session().selection().selectNodes({child(0), child(1)}, false);
  give("Copy Path", {Qt::Key_C, commandShift});
  EXPECT_EQ(machine_.pasteboard.text, tree_.at("Movies") + "\n" + tree_.at("notes.txt"));
  EXPECT_EQ(text("toast"), QStringLiteral("Copied 2 paths"));
}

TEST_P(Commands, put_back_last_trash_puts_back_the_last_move) {
  session().selection().setFocused(child(1));
  session().trashFocused();
  finishScan();
  ASSERT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  give("Put Back Last Trash", {Qt::Key_Z, commandOption});
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 1 item"));
}

TEST_P(Commands, move_focused_to_trash_moves_the_focused_item) {
  session().selection().setFocused(child(1));
  give("Move Focused to Trash", {Qt::Key_Backspace, command});
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_EQ(text("toast"), QStringLiteral("Moved notes.txt to Trash"));
}

INSTANTIATE_TEST_SUITE_P(Both, Commands, testing::Bool(), [](const auto& way) {
  return std::string(way.param ? "by_keys" : "from_the_menu");
});

class Menu : public CommandJourney {
 protected:
  Menu() { scan(); }

  QQuickItem* highlighted() {
    QQuickItem* const now = window().activeFocusItem();
    return now != nullptr && now->property("highlighted").toBool() ? now : nullptr;
  }
  std::string highlightedText() {
    return highlighted() != nullptr ? highlighted()->property("text").toString().toStdString() : "";
  }
  // Uses the arrow keys, from any position in the menu.
  void goTo(const std::string& title) {
    for (int row = 0; row < 30 && highlightedText() != title; ++row) press(Qt::Key_Down);
    EXPECT_EQ(highlightedText(), title);
  }
  // A text field with the keyboard focus.
  std::unique_ptr<QQuickItem> field() {
    QQmlComponent component(qmlEngine(window().contentItem()->childItems().first()));
    component.setData("import QtQuick\nTextInput { text: 'one two'; z: 1 }", QUrl());
    std::unique_ptr<QQuickItem> made(qobject_cast<QQuickItem*>(component.create()));
    made->setParentItem(window().contentItem());
    made->forceActiveFocus();
    return made;
  }
};

TEST_F(Menu, the_menu_lists_the_commands_between_the_groups_edit_and_program) {
  press(Qt::Key_F10);
  std::vector<std::string> titles;
  for (QQuickItem* row : item("menuColumn")->childItems()) {
    const QString title = row->property("text").toString();
    const bool isLine = !itemsNamed(row, QStringLiteral("menuRule")).empty();
    if (isLine || !title.isEmpty()) titles.push_back(isLine ? "-" : title.toStdString());
  }
  EXPECT_THAT(titles, ElementsAre("Cut", "Copy", "Paste", "Select All", "-", "Search Files…",
                                  "Quick Search", "Queue Selection", "Compare Folder…",
                                  "Watch Folder", "Zip Then Trash Selection", "Go Back", "Rescan",
                                  "Queue Focused Item", "Quick Look", "Select All Visible",
                                  "Copy Path", "Put Back Last Trash", "Export JSON…",
                                  "Move Focused to Trash", "-", "Settings…", "Close", "Quit"));
}

TEST_F(Menu, the_menu_fits_into_the_smallest_window) {
  window().resize(1100, 680);
  press(Qt::Key_F10);
  QQuickItem* const place = item("menuPlace");
  EXPECT_EQ(place->property("contentHeight").toDouble(), place->height());
  EXPECT_TRUE(QRectF(0, 0, 1100, 680)
                  .contains(place->mapRectToScene(QRectF(0, 0, place->width(), place->height()))));
}

TEST_F(Menu, arrow_keys_move_in_the_menu_and_return_triggers) {
  press(Qt::Key_F10);
  EXPECT_EQ(highlightedText(), "Search Files…");
  goTo("Select All Visible");
  press(Qt::Key_Return);
  EXPECT_FALSE(isMenuOpen());
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
}

TEST_F(Menu, the_menu_exports_json_which_has_no_keys) {
  choose("Export JSON…");
  EXPECT_THAT(machine_.savePanel.requests, SizeIs(1));
}

TEST_F(Menu, the_menu_opens_by_its_button_and_returns_the_keyboard_focus) {
  click("openMenu");
  EXPECT_TRUE(isMenuOpen());
  EXPECT_EQ(highlighted(), nullptr);
  press(Qt::Key_Escape);
  EXPECT_FALSE(isMenuOpen());
  tabTo("openMenu");
  press(Qt::Key_Return);
  EXPECT_TRUE(isMenuOpen());
  EXPECT_EQ(highlightedText(), "Search Files…");
  press(Qt::Key_Escape);
  EXPECT_EQ(window().activeFocusItem(), item("openMenu"));
}

TEST_F(Menu, f10_opens_and_closes_the_menu) {
  tabTo("watch");
  press(Qt::Key_F10);
  EXPECT_TRUE(isMenuOpen());
  press(Qt::Key_F10);
  EXPECT_FALSE(isMenuOpen());
  EXPECT_EQ(window().activeFocusItem(), item("watch"));
}

TEST_F(Menu, the_menu_passes_the_keyboard_focus_to_the_question_it_raises) {
  machine_.trash.put(tree_.path());
  session().selection().setFocused(session().navigation().current());
  tabTo("watch");
  press(Qt::Key_F10);
  goTo("Move Focused to Trash");
  press(Qt::Key_Return);
  EXPECT_FALSE(isMenuOpen());
  ASSERT_TRUE(shows("protectedLocation"));
  EXPECT_TRUE(item("dismiss")->hasActiveFocus());
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("protectedLocation"));
  EXPECT_EQ(window().activeFocusItem(), item("watch"));
  EXPECT_TRUE(machine_.trash.has(tree_.path()));
}

TEST_F(Menu, the_menu_passes_the_keyboard_focus_to_the_card_it_opens) {
  tabTo("watch");
  press(Qt::Key_F10);
  goTo("Search Files…");
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("search"));
  EXPECT_TRUE(item("close")->hasActiveFocus());
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("search"));
  EXPECT_EQ(window().activeFocusItem(), item("watch"));
}

TEST_F(Menu, keys_of_commands_do_nothing_while_the_menu_is_open) {
  session().selection().setFocused(child(1));
  press(Qt::Key_F10);
  press(Qt::Key_Backspace, command);
  press(Qt::Key_A, command);
  press(Qt::Key_Q, command);
  press(Qt::Key_Comma, command);
  EXPECT_TRUE(isMenuOpen());
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(machine_.timesQuit, 0);
}

TEST_F(Menu, the_menu_edits_the_text_field_that_had_the_focus) {
  const auto text = field();
  press(Qt::Key_F10);
  EXPECT_FALSE(item("menuCut")->isEnabled());
  click("menuSelectAll");
  EXPECT_EQ(text->property("selectedText"), "one two");
  EXPECT_TRUE(text->hasActiveFocus());
  click("openMenu");
  click("menuCut");
  EXPECT_EQ(text->property("text"), "");
  click("openMenu");
  click("menuPaste");
  EXPECT_EQ(text->property("text"), "one two");
  EXPECT_THAT(session().selection().selected(), IsEmpty());
}

TEST_F(Menu, a_text_field_keeps_its_own_keys) {
  const auto text = field();
  press(Qt::Key_A, command);
  EXPECT_EQ(text->property("selectedText"), "one two");
  session().selection().setFocused(child(1));
  press(Qt::Key_Backspace, command);
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
}

TEST_F(Menu, the_menu_has_no_edit_group_without_a_text_field) {
  press(Qt::Key_F10);
  for (const char* row : {"menuCut", "menuCopy", "menuPaste", "menuSelectAll"})
    EXPECT_FALSE(item(row)->isEnabled()) << row;
}

TEST_F(Menu, the_menu_opens_the_settings_which_escape_and_the_button_close) {
  press(Qt::Key_F10);
  click("menuSettings");
  EXPECT_TRUE(shows("settings"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("settings"));
  press(Qt::Key_Comma, command);
  EXPECT_TRUE(shows("settings"));
  click("close");
  EXPECT_FALSE(shows("settings"));
}

TEST_F(Menu, the_menu_closes_the_window) {
  press(Qt::Key_W, command);
  EXPECT_FALSE(window().isVisible());
  window().show();
  window().requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  press(Qt::Key_F10);
  click("menuClose");
  EXPECT_FALSE(window().isVisible());
  EXPECT_EQ(machine_.timesQuit, 0);
}

TEST_F(Menu, any_window_can_end_the_program) {
  qmlEngine(&window())->quit();
  EXPECT_EQ(machine_.timesQuit, 1);
}

TEST_F(Menu, the_menu_ends_the_program) {
  press(Qt::Key_Q, command);
  EXPECT_EQ(machine_.timesQuit, 1);
  press(Qt::Key_F10);
  click("menuQuit");
  EXPECT_EQ(machine_.timesQuit, 2);
}

}  // namespace
}  // namespace tessaly
