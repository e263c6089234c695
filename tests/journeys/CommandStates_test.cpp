// Which commands are available in each state of the program.
#include <algorithm>
#include <cstddef>
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "journeys/CommandJourney.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> always = {"Search Files…", "Quick Search", "Queue Focused Item",
                                         "Quick Look",    "Copy Path",    "Move Focused to Trash"};

class CommandStates : public CommandJourney {
 protected:
  // Everything that a command could change.
  struct State {
    ScanStatus status;
    std::size_t depth;
    std::size_t queued;
    std::size_t selected;
    bool isWatching;
    bool searches;
    std::size_t putBack;
    std::size_t foldersAsked;
    std::size_t placesAsked;
    std::size_t previews;
    std::optional<std::string> copied;
    bool hasFilm;

    bool operator==(const State&) const = default;
  };

  State state() {
    return {.status = session().run().status(),
            .depth = session().navigation().stack().size(),
            .queued = session().cleanupQueue().queue().size(),
            .selected = session().selection().selected().size(),
            .isWatching = session().watch().watching(),
            .searches = session().shown().searchOpen(),
            .putBack = session().removal().lastTrashed().size(),
            .foldersAsked = folderPanel_.requests.size(),
            .placesAsked = machine_.savePanel.requests.size(),
            .previews = machine_.previewPanel.shown.size(),
            .copied = machine_.pasteboard.text,
            .hasFilm = machine_.trash.has(tree_.at("Movies/beach.mp4"))};
  }

  // Presses the keys of all commands except those in `except`, and expects no change.
  void expectSilence(const std::vector<Qt::Key>& except = {}) {
    const State before = state();
    for (const Keys& keys : keysOfCommands) {
      if (std::find(except.begin(), except.end(), keys.key) != except.end()) continue;
      press(keys.key, keys.modifiers);
      EXPECT_TRUE(state() == before) << "key " << keys.key;
    }
  }

  // A state in which each of the fifteen commands can act.
  void preparesAll() {
    scan();
    session().selection().setFocused(child(1));
    session().trashFocused();
    finishScan();
    session().open(child(0));
    session().selection().selectNodes({child(0)}, false);
    session().selection().setFocused(child(0));
    settle(window());
  }

  std::vector<std::string> offeredByTheMenu() {
    press(Qt::Key_F10);
    EXPECT_TRUE(isMenuOpen());
    std::vector<std::string> titles = offered();
    press(Qt::Key_Escape);
    EXPECT_FALSE(isMenuOpen());
    return titles;
  }
};

TEST_F(CommandStates, only_commands_without_a_tree_are_available_before_a_scan) {
  EXPECT_THAT(offeredByTheMenu(), ElementsAreArray(always));
  expectSilence({Qt::Key_F, Qt::Key_Space});
  EXPECT_TRUE(shows("idleScreen"));
  press(Qt::Key_F, command);
  EXPECT_TRUE(shows("search"));
}

TEST_F(CommandStates, only_commands_without_a_tree_are_available_during_the_first_scan) {
  session().scanHome();
  EXPECT_TRUE(shows("scanningScreen"));
  EXPECT_THAT(offeredByTheMenu(), ElementsAreArray(always));
  expectSilence({Qt::Key_F, Qt::Key_Space});
  finishScan();
  EXPECT_TRUE(shows("canvas"));
}

TEST_F(CommandStates, commands_that_need_only_a_tree_are_available_after_a_scan) {
  scan();
  EXPECT_THAT(offeredByTheMenu(),
              ElementsAre("Search Files…", "Quick Search", "Compare Folder…", "Watch Folder",
                          "Rescan", "Queue Focused Item", "Quick Look", "Select All Visible",
                          "Copy Path", "Export JSON…", "Move Focused to Trash"));
}

TEST_F(CommandStates, all_commands_are_available_if_each_can_act) {
  preparesAll();
  EXPECT_THAT(offeredByTheMenu(), SizeIs(15));
}

TEST_F(CommandStates, all_commands_but_rescan_stay_available_during_a_later_scan) {
  preparesAll();
  press(Qt::Key_R, command);
  ASSERT_TRUE(shows("banner"));
  EXPECT_THAT(offeredByTheMenu(), SizeIs(14));
  press(Qt::Key_F10);
  EXPECT_FALSE(rowOf("Rescan")->isEnabled());
  press(Qt::Key_Escape);
  // Would replace the running scan, whose result would be lost.
  press(Qt::Key_R, command);
  finishScan();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_THAT(offeredByTheMenu(), testing::Contains("Rescan"));
}

TEST_F(CommandStates, rescan_is_available_after_a_failed_scan) {
  session().scan(tree_.at("gone"));
  finishScan();
  ASSERT_TRUE(shows("failedScreen"));
  EXPECT_THAT(offeredByTheMenu(), testing::Contains("Rescan"));
  tree_.plant("gone/\n  film 1M\n");
  press(Qt::Key_R, command);
  finishScan();
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("gone"));
}

TEST_F(CommandStates, commands_act_beside_the_open_queue) {
  preparesAll();
  session().cleanupQueue().addToQueue(child(0));
  ASSERT_TRUE(shows("cleanupQueue"));
  EXPECT_THAT(offeredByTheMenu(), SizeIs(15));
  press(Qt::Key_BracketLeft, command);
  EXPECT_THAT(session().navigation().stack(), SizeIs(1));
}

TEST_F(CommandStates, commands_act_in_another_pane_as_on_the_map) {
  preparesAll();
  session().shown().setPane(MainPane::apps);
  EXPECT_THAT(offeredByTheMenu(), SizeIs(15));
  press(Qt::Key_L, command);
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(1));
}

// An overlay in front of the window, with its object name.
struct Layer {
  const char* name;
  std::function<void(Application&)> open;
};

class CommandsUnder : public CommandStates, public testing::WithParamInterface<Layer> {
 protected:
  CommandsUnder() {
    preparesAll();
    GetParam().open(application());
    EXPECT_TRUE(shows(GetParam().name));
  }
};

TEST_P(CommandsUnder, keys_of_commands_do_nothing_under_an_overlay) {
  expectSilence();
  EXPECT_TRUE(shows(GetParam().name));
}

TEST_P(CommandsUnder, keys_do_not_open_menu_or_settings_under_an_overlay) {
  press(Qt::Key_F10);
  EXPECT_FALSE(isMenuOpen());
  const bool areSettingsOpen = shows("settings");
  press(Qt::Key_Comma, command);
  EXPECT_EQ(shows("settings"), areSettingsOpen);
  EXPECT_TRUE(shows(GetParam().name));
}

TEST_P(CommandsUnder, the_menu_does_not_open_under_an_overlay) {
  // The search does not cover the button, so there the menu opens.
  clickAt(middleOf(item("openMenu")));
  EXPECT_EQ(isMenuOpen(), std::string(GetParam().name) == "search");
  EXPECT_THAT(offered(), IsEmpty());
}

TEST_P(CommandsUnder, the_overlay_can_be_closed) {
  press(Qt::Key_Q, command);
  EXPECT_EQ(machine_.timesQuit, 1);
  press(Qt::Key_W, command);
  EXPECT_FALSE(window().isVisible());
}

INSTANTIATE_TEST_SUITE_P(
    Layers, CommandsUnder,
    testing::Values(
        Layer{"gate", [](Application& program) { program.access().setShowGate(true); }},
        Layer{"protectedLocation",
              [](Application& program) {
                program.session().removal().setCriticalWarning(
                    program.session().navigation().current());
              }},
        Layer{"nodeMenu",
              [](Application& program) {
                program.session().shown().setMenuNode(program.session().navigation().current());
              }},
        Layer{"search",
              [](Application& program) { program.session().shown().setSearchOpen(true); }},
        Layer{"assistant", [](Application& program) { program.session().shown().setAiOpen(true); }},
        Layer{"inbox", [](Application& program) { program.session().shown().setOcrOpen(true); }}),
    [](const auto& layer) { return std::string(layer.param.name); });

class CommandsUnderSettings : public CommandStates {};

TEST_F(CommandsUnderSettings, keys_of_commands_do_nothing_until_the_settings_are_closed) {
  preparesAll();
  press(Qt::Key_Comma, command);
  ASSERT_TRUE(shows("settings"));
  expectSilence();
  press(Qt::Key_F10);
  EXPECT_FALSE(isMenuOpen());
  EXPECT_TRUE(shows("settings"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("settings"));
  press(Qt::Key_BracketLeft, command);
  EXPECT_THAT(session().navigation().stack(), SizeIs(1));
}

}  // namespace
}  // namespace tessaly
