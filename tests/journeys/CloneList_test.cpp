// The list of files that share blocks of the disk, in place of the map. It removes nothing.
#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>

#include "journeys/CommandJourney.h"
#include "journeys/ListJourney.h"
#include "support/Look.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t mega = 1LL << 20U;

class CloneListJourney : public ListJourney<CommandJourney> {
 protected:
  CloneListJourney()
      : ListJourney("cloneRow",
                    "Movies/\n"
                    "  beach.mp4 60M\n"
                    "  clone.mp4 60M\n"
                    "notes.txt 20M\n"
                    "more.txt = notes.txt\n",
                    [this](Application::Services& services) {
                      services.analysis = PostScanAnalysis::Engines{
                          .cloneGroups = [this](const auto&, const auto&) { return groups(); }};
                    }) {
    scan();
    click("clonesMode");
  }

  ShareRecord record(const std::string& below, std::int64_t bytes) const {
    return {.name = below.substr(below.rfind('/') + 1),
            .path = tree_.at(below),
            .logical = bytes,
            .allocated = bytes};
  }
  std::vector<ShareGroup> groups() const {
    return {
        {.id = "clone-5",
         .kind = "clone",
         .files = {record("Movies/beach.mp4", 60 * mega), record("Movies/clone.mp4", 60 * mega)},
         .logical = 120 * mega,
         .unique = 60 * mega},
        {.id = "inode-7",
         .kind = "hardlink",
         .files = {record("notes.txt", 20 * mega), record("more.txt", 20 * mega)},
         .logical = 40 * mega,
         .unique = 20 * mega}};
  }
  void expectNothingRemoved() {
    EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
    EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
    EXPECT_FALSE(session().removal().criticalWarning());
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
  }
};

TEST_F(CloneListJourney, the_list_says_so_until_an_analysis_has_found_groups) {
  EXPECT_FALSE(shows("canvas"));
  expectLook(item("cloneList"),
             {{"listTitle", "text", "Shared blocks"},
              {"listCaption", "text",
               "Clones and hard links look like extra copies but share disk. Unique is what "
               "all of them take, until the last one is gone."},
              {"listCaption", "color", "#e5e7eb at 1.00"},
              {"emptyMessage", "text", "No large shared groups in this scan."}});
  finishAnalysis();
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_THAT(places(), ElementsAre(tree_.at("Movies/beach.mp4"), tree_.at("Movies/clone.mp4"),
                                    tree_.at("notes.txt"), tree_.at("more.txt")));
}

TEST_F(CloneListJourney, a_clone_group_and_hard_links_have_headings_of_two_lines) {
  finishAnalysis();
  expectLook(listRows()[0],
             {{"kind", "text", "Clone"},
              {"kind", "font.pixelSize", 13},
              {"kind", "font.weight", 600},
              {"count", "text", "2×"},
              {"count", "color", "#9ca3af at 1.00"},
              {"saves", "text", "saves 60.0 MB"},
              {"saves", "color", "#34c759 at 1.00"},
              {"sizes", "text", "Logical 120.0 MB · unique 60.0 MB"},
              {"place", "text", QString::fromStdString(tree_.at("Movies/beach.mp4"))},
              {"place", "font.pixelSize", 11},
              {"place", "font.family", "JetBrains Mono"}});
  expectLook(listRows()[2], {{"kind", "text", "Hard link"},
                             {"saves", "text", "saves 20.0 MB"},
                             {"sizes", "text", "Logical 40.0 MB · unique 20.0 MB"}});
  EXPECT_EQ(itemNamed(listRows()[1], "kind"), nullptr);
  EXPECT_FALSE(shows("queueRow"));
  QAccessibleInterface* const told =
      QAccessible::queryAccessibleInterface(itemNamed(listRows()[1], "rowFace"));
  EXPECT_EQ(told->text(QAccessible::Name).toStdString(), tree_.at("Movies/clone.mp4"));
}

TEST_F(CloneListJourney, a_click_and_return_show_a_file_on_the_map) {
  finishAnalysis();
  clickAt(middleOf(itemNamed(listRows()[1], "place")));
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("Movies/clone.mp4"));

  click("clonesMode");
  enter();
  press(Qt::Key_End);
  EXPECT_EQ(keyboardRow(), tree_.at("more.txt"));
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("more.txt"));
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
}

TEST_F(CloneListJourney, neither_keys_nor_commands_remove_a_file) {
  enter();
  press(Qt::Key_L, command);
  press(Qt::Key_Backspace, command);
  for (const char* title : {"Queue Focused Item", "Move Focused to Trash"}) choose(title);
  expectNothingRemoved();
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies/beach.mp4")));
  EXPECT_EQ(keyboardRow(), tree_.at("Movies/beach.mp4"));
}

TEST_F(CloneListJourney, a_file_is_previewed_and_its_path_copied) {
  enter();
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  const std::string preview = "file://" + tree_.at("Movies/beach.mp4");
  EXPECT_THAT(machine_.previewPanel.shown, ElementsAre(preview, preview));
  press(Qt::Key_C, commandShift);
  EXPECT_EQ(machine_.pasteboard.text, tree_.at("Movies/beach.mp4"));
}

TEST_F(CloneListJourney, the_menu_offers_nothing_that_removes_a_file) {
  enter();
  press(Qt::Key_Menu);
  EXPECT_THAT(menuTexts(), ElementsAre("Show on map", "Show in File Manager", "Quick Look"));
  press(Qt::Key_Return);
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("Movies/beach.mp4"));
  expectNothingRemoved();
}

}  // namespace
}  // namespace tessaly
