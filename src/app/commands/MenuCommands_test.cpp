#include "app/commands/MenuCommands.h"

#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MenuCommandsTest : public SessionFixture {
 protected:
  MenuCommandsTest()
      : actions_({.workspace = machine_.workspace,
                  .pasteboard = machine_.pasteboard,
                  .quickLook = [this](const std::string& path) { looked_.push_back(path); },
                  .openTerminal = [](const std::string& /*path*/) {},
                  .openInEditor = [](const std::string& /*path*/) {}}),
        commands_({.session = session(), .target = target_, .actions = actions_, .quit = [this] {
                     ++quits_;
                   }}) {}

  Command& command(const QString& title) {
    for (Command* each : commands_.all())
      if (each->title() == title) return *each;
    ADD_FAILURE() << "there is no " << title.toStdString();
    return *commands_.all().front();
  }
  bool isEnabled(const char* title) { return command(QString::fromUtf8(title)).isEnabled(); }
  void trigger(const char* title) { command(QString::fromUtf8(title)).trigger(); }

  void scan() {
    scanTo(folder("/data", 5,
                  {folder("/data/in", 3, {file("/data/in/a", 3)}), file("/data/caf\xE9", 2)}));
  }
  DiskNode child(std::size_t index) { return session().navigation().current()->children()[index]; }
  void open() { session().open(child(0)); }
  void select() { session().selection().selectNodes({child(0), child(1)}, false); }
  void trashOne() {
    machine_.trash.put("/data/caf\xE9", "beans");
    session().selection().setFocused(child(1));
    session().trashFocused();
    dispatch().drainAll();
  }

  std::vector<std::string> looked_;
  int quits_ = 0;
  CommandTarget target_{session()};
  NodeActions actions_;
  MenuCommands commands_;
};

struct Row {
  const char* title;
  const char* shortcut;
};

constexpr Row rows[] = {{"Search Files…", "Ctrl+F"},
                        {"Quick Search", "Ctrl+Shift+Space"},
                        {"Queue Selection", "Ctrl+Shift+L"},
                        {"Compare Folder…", "Ctrl+K"},
                        {"Watch Folder", "Ctrl+Alt+W"},
                        {"Zip Then Trash Selection", "Ctrl+Shift+E"},
                        {"Go Back", "Ctrl+["},
                        {"Rescan", "Ctrl+R"},
                        {"Queue Focused Item", "Ctrl+L"},
                        {"Quick Look", "Ctrl+Y"},
                        {"Select All Visible", "Ctrl+A"},
                        {"Copy Path", "Ctrl+Shift+C"},
                        {"Put Back Last Trash", "Ctrl+Alt+Z"},
                        {"Export JSON…", ""},
                        {"Move Focused to Trash", "Ctrl+Backspace"}};

TEST_F(MenuCommandsTest, commands_have_their_order_and_keys) {
  ASSERT_THAT(commands_.all(), SizeIs(std::size(rows)));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(commands_.all()[i]->title().toStdString(), rows[i].title);
    EXPECT_EQ(commands_.all()[i]->shortcut().toStdString(), rows[i].shortcut) << rows[i].title;
  }
}

TEST_F(MenuCommandsTest, no_two_commands_share_keys) {
  for (const Row& one : rows) {
    for (const Row& other : rows) {
      if (&one == &other || *one.shortcut == 0) continue;
      EXPECT_STRNE(one.shortcut, other.shortcut);
    }
  }
}

TEST_F(MenuCommandsTest, editsText_marks_the_commands_whose_keys_edit_text) {
  EXPECT_TRUE(command(QStringLiteral("Select All Visible")).editsText());
  EXPECT_TRUE(command(QStringLiteral("Move Focused to Trash")).editsText());
  EXPECT_FALSE(command(QStringLiteral("Search Files…")).editsText());
  EXPECT_FALSE(command(QStringLiteral("Copy Path")).editsText());
  EXPECT_FALSE(command(QStringLiteral("Export JSON…")).editsText());
}

TEST_F(MenuCommandsTest, commands_that_need_nothing_are_enabled_at_the_start) {
  std::vector<std::string> enabled;
  for (const Command* each : commands_.all())
    if (each->isEnabled()) enabled.push_back(each->title().toStdString());
  EXPECT_THAT(enabled, ElementsAre("Search Files…", "Quick Search", "Queue Focused Item",
                                   "Quick Look", "Copy Path", "Move Focused to Trash"));
}

TEST_F(MenuCommandsTest, commands_on_the_tree_need_a_tree) {
  for (const char* title :
       {"Compare Folder…", "Watch Folder", "Select All Visible", "Export JSON…"}) {
    EXPECT_FALSE(isEnabled(title)) << title;
  }
  scan();
  for (const char* title :
       {"Compare Folder…", "Watch Folder", "Select All Visible", "Export JSON…"}) {
    EXPECT_TRUE(isEnabled(title)) << title;
  }
}

TEST_F(MenuCommandsTest, commands_on_the_selection_need_a_selection) {
  scan();
  const QSignalSpy unmoved(&command(QStringLiteral("Rescan")), &Command::enabledChanged);
  for (const char* title : {"Queue Selection", "Zip Then Trash Selection"}) {
    EXPECT_FALSE(isEnabled(title)) << title;
    select();
    EXPECT_TRUE(isEnabled(title)) << title;
    session().selection().clearSelection();
    EXPECT_FALSE(isEnabled(title)) << title;
  }
  EXPECT_EQ(unmoved.count(), 0);
}

TEST_F(MenuCommandsTest, go_back_is_disabled_on_the_root) {
  scan();
  EXPECT_FALSE(isEnabled("Go Back"));
  open();
  EXPECT_TRUE(isEnabled("Go Back"));
  trigger("Go Back");
  EXPECT_THAT(stackPaths(), ElementsAre("/data"));
  EXPECT_FALSE(isEnabled("Go Back"));
}

TEST_F(MenuCommandsTest, rescan_is_disabled_while_a_scan_runs_and_enabled_afterwards) {
  EXPECT_FALSE(isEnabled("Rescan"));
  scan();
  EXPECT_TRUE(isEnabled("Rescan"));
  const QSignalSpy changes(&command("Rescan"), &Command::enabledChanged);
  trigger("Rescan");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_FALSE(isEnabled("Rescan"));
  dispatch().drainAll();
  EXPECT_TRUE(isEnabled("Rescan"));
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(MenuCommandsTest, rescan_is_enabled_after_a_cancelled_scan) {
  scan();
  trigger("Rescan");
  session().run().cancel();
  EXPECT_TRUE(isEnabled("Rescan"));
}

TEST_F(MenuCommandsTest, put_back_is_enabled_while_there_is_something_to_put_back) {
  scan();
  EXPECT_FALSE(isEnabled("Put Back Last Trash"));
  trashOne();
  ASSERT_FALSE(machine_.trash.has("/data/caf\xE9"));
  EXPECT_TRUE(isEnabled("Put Back Last Trash"));
  trigger("Put Back Last Trash");
  EXPECT_TRUE(machine_.trash.has("/data/caf\xE9"));
  EXPECT_FALSE(isEnabled("Put Back Last Trash"));
}

TEST_F(MenuCommandsTest, no_command_moves_anything_while_a_batch_moves_to_the_trash) {
  scan();
  trashOne();
  machine_.trash.put("/data/in");
  select();
  session().moveBatch({{.location = {.original = "/data/in", .place = "/data/in"}}}, {});
  for (const char* title :
       {"Zip Then Trash Selection", "Put Back Last Trash", "Move Focused to Trash"}) {
    EXPECT_FALSE(isEnabled(title)) << title;
    trigger(title);
  }
  EXPECT_TRUE(isEnabled("Queue Selection"));
  dispatch().drainAll();
  EXPECT_FALSE(machine_.trash.has("/data/in"));
  EXPECT_FALSE(machine_.trash.has("/data/caf\xE9"));
  for (const char* title :
       {"Zip Then Trash Selection", "Put Back Last Trash", "Move Focused to Trash"}) {
    EXPECT_TRUE(isEnabled(title)) << title;
  }
}

TEST_F(MenuCommandsTest, both_searches_open_the_search) {
  for (const char* title : {"Search Files…", "Quick Search"}) {
    trigger(title);
    EXPECT_TRUE(session().shown().searchOpen()) << title;
    session().shown().setSearchOpen(false);
  }
}

TEST_F(MenuCommandsTest, commands_on_the_focus_do_nothing_without_one_and_stay_enabled) {
  scan();
  for (const char* title : {"Queue Focused Item", "Quick Look", "Copy Path"}) {
    EXPECT_TRUE(isEnabled(title)) << title;
    trigger(title);
    EXPECT_TRUE(isEnabled(title)) << title;
  }
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_THAT(looked_, IsEmpty());
  EXPECT_FALSE(machine_.pasteboard.text.has_value());
}

TEST_F(MenuCommandsTest, commands_act_on_the_bytes_of_the_focused_path) {
  scan();
  session().selection().setFocused(child(1));
  trigger("Queue Focused Item");
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue()[0].path(), "/data/caf\xE9");
  trigger("Quick Look");
  EXPECT_THAT(looked_, ElementsAre("/data/caf\xE9"));
  trigger("Copy Path");
  EXPECT_EQ(machine_.pasteboard.text, "/data/caf\xE9");
}

TEST_F(MenuCommandsTest, move_to_trash_moves_the_focused_item) {
  scan();
  machine_.trash.put("/data/caf\xE9", "beans");
  session().selection().setFocused(child(1));
  trigger("Move Focused to Trash");
  EXPECT_FALSE(machine_.trash.has("/data/caf\xE9"));
}

TEST_F(MenuCommandsTest, commands_select_and_queue_the_items_on_screen) {
  scan();
  trigger("Select All Visible");
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
  trigger("Queue Selection");
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(2));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
}

TEST_F(MenuCommandsTest, disabled_commands_do_nothing) {
  trigger("Compare Folder…");
  trigger("Export JSON…");
  trigger("Rescan");
  EXPECT_THAT(folderPanel_.requests, IsEmpty());
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
}

TEST_F(MenuCommandsTest, compare_and_export_ask_for_a_folder_and_a_file) {
  scan();
  trigger("Compare Folder…");
  EXPECT_THAT(folderPanel_.requests, SizeIs(1));
  trigger("Export JSON…");
  EXPECT_THAT(machine_.savePanel.requests, SizeIs(1));
}

TEST_F(MenuCommandsTest, only_quit_ends_the_program) {
  EXPECT_EQ(quits_, 0);
  commands_.quit();
  EXPECT_EQ(quits_, 1);
}

}  // namespace
}  // namespace tessaly
