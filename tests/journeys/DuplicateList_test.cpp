// The list of files with the same content, in place of the map.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <set>
#include <string>
#include <vector>

#include <QAccessible>
#include <QTest>

#include "journeys/CommandKeys.h"
#include "journeys/ListJourney.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::string digest(64, 'a');
constexpr const char* films[] = {"Downloads/film.mkv", "Movies/film.mkv", "Movies/old/film.mkv"};

class DuplicateListJourney : public ListJourney<> {
 protected:
  DuplicateListJourney()
      : ListJourney("duplicateRow",
                    "Downloads/\n"
                    "  film.mkv 60M\n"
                    "Movies/\n"
                    "  film.mkv 60M\n"
                    "  old/\n"
                    "    film.mkv 60M\n"
                    "one.iso 52M\n"
                    "two.iso = one.iso\n",
                    [this](Application::Services& services) {
                      services.analysis = PostScanAnalysis::Engines{
                          .duplicates =
                              [this](const PostScanAnalysis::FinishedScan& scan, const auto&) {
                                compare(scan);
                                return groups();
                              },
                          .cloneGroups = [this](const auto&, const auto&) { return shared(); }};
                    }) {
    for (const char* below : films) machine_.trash.put(tree_.at(below), below);
    for (const char* below : {"one.iso", "two.iso"}) machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
    click("duplicatesMode");
  }

  // The files that are still there, in two groups.
  std::vector<DuplicateGroup> groups() const {
    std::vector<DuplicateGroup> groups = {{.digest = digest, .bytes = 60LL << 20U},
                                          {.digest = "0123456789abc", .bytes = 52LL << 20U}};
    const auto add = [this](DuplicateGroup& group, const std::string& below) {
      if (std::filesystem::exists(tree_.at(below)))
        group.files.push_back({.name = below.substr(below.rfind('/') + 1),
                               .path = tree_.at(below),
                               .size = group.bytes});
    };
    for (const char* below : films) add(groups[0], below);
    for (const char* below : {"one.iso", "two.iso"}) add(groups[1], below);
    std::erase_if(groups, [](const DuplicateGroup& group) { return group.files.size() < 2; });
    return groups;
  }
  // Reports how far it is, and shows that.
  void compare(const PostScanAnalysis::FinishedScan& scan) {
    scan.duplicates.progress(
        {.files = 2, .fileCount = 5, .bytes = 90LL << 20U, .byteCount = 284LL << 20U});
    comeHome();
    if (during_) during_();
  }
  std::vector<ShareGroup> shared() const {
    return {{.id = "inode-7",
             .kind = "hardlink",
             .files = {{.path = tree_.at("one.iso")}, {.path = tree_.at("two.iso")}}}};
  }
  std::function<void()> during_;  // called while the files are compared
  std::string focused() {
    return session().selection().focused() ? session().selection().focused()->path()
                                           : std::string();
  }
  // Moves real files like the fake Trash has moved its items.
  void followTrash() {
    for (const char* below : films) {
      if (!machine_.trash.has(tree_.at(below))) std::filesystem::remove(tree_.at(below));
    }
  }
};

TEST_F(DuplicateListJourney, the_list_says_so_until_an_analysis_has_found_copies) {
  EXPECT_FALSE(shows("canvas"));
  expectLook(
      item("duplicateList"),
      {{"listTitle", "text", "Duplicate files ≥ 50 MB"},
       {"listTitle", "font.pixelSize", 16},
       {"listTitle", "font.weight", 600},
       {"listCaption", "text", "Same size and SHA-256. Keep one copy; queue or trash the rest."},
       {"listCaption", "font.pixelSize", 12},
       {"listCaption", "color", "#e5e7eb at 1.00"},
       {"emptyMessage", "text", "No large duplicates in this scan."}});
  finishAnalysis();
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_THAT(places(), ElementsAre(tree_.at(films[0]), tree_.at(films[1]), tree_.at(films[2]),
                                    tree_.at("one.iso"), tree_.at("two.iso")));
}

TEST_F(DuplicateListJourney, the_list_shows_how_far_a_comparison_is) {
  const QString progress = QStringLiteral("Comparing 2 of 5 files · 90 of 284 MB");
  during_ = [&] {
    EXPECT_EQ(text("emptyMessage"), progress);
    EXPECT_FALSE(shows("comparing"));
  };
  finishAnalysis();
  EXPECT_THAT(places(), SizeIs(5));
  // The rows of the scan before stay in sight.
  during_ = [&] {
    EXPECT_EQ(text("comparing"), progress);
    EXPECT_THAT(places(), SizeIs(5));
  };
  session().rescan();
  finishScan();
  finishAnalysis();
  EXPECT_FALSE(shows("comparing"));
}

TEST_F(DuplicateListJourney, the_first_row_of_a_group_has_its_heading) {
  finishAnalysis();
  expectLook(listRows()[0], {{"group", "text", "3× 60.0 MB"},
                             {"group", "font.pixelSize", 13},
                             {"group", "font.weight", 600},
                             {"digest", "text", "aaaaaaaaaa"},
                             {"digest", "font.pixelSize", 10},
                             {"place", "text", QString::fromStdString(tree_.at(films[0]))},
                             {"place", "font.pixelSize", 12},
                             {"mapRow", "text", "Map"},
                             {"revealRow", "text", "Reveal"},
                             {"queueRow", "text", "Queue"}});
  expectLook(listRows()[3], {{"group", "text", "2× 52.0 MB"}, {"digest", "text", "0123456789"}});
  for (const std::size_t row : {1U, 2U, 4U})
    EXPECT_EQ(itemNamed(listRows()[row], "group"), nullptr);
  QAccessibleInterface* const heading =
      QAccessible::queryAccessibleInterface(itemNamed(listRows()[0], "group"));
  EXPECT_EQ(heading->role(), QAccessible::Heading);
  EXPECT_EQ(heading->text(QAccessible::Name), "3× 60.0 MB");
}

TEST_F(DuplicateListJourney, copies_that_share_their_blocks_are_marked) {
  finishAnalysis();
  EXPECT_EQ(itemNamed(listRows()[0], "sameBlocks"), nullptr);
  for (const std::size_t row : {3U, 4U})
    EXPECT_EQ(itemNamed(listRows()[row], "sameBlocks")->property("text"), "same blocks");
  const auto told = [this](std::size_t row) {
    return QAccessible::queryAccessibleInterface(itemNamed(listRows()[row], "rowFace"))
        ->text(QAccessible::Name)
        .toStdString();
  };
  EXPECT_EQ(told(0), tree_.at(films[0]) + ", 60.0 MB");
  EXPECT_EQ(told(4), tree_.at("two.iso") + ", 52.0 MB, same blocks");
}

TEST_F(DuplicateListJourney, two_of_three_copies_move_to_the_trash_and_back) {
  finishAnalysis();
  clickAt(middleOf(itemNamed(listRows()[0], "queueRow")));
  clickAt(middleOf(itemNamed(listRows()[2], "queueRow")));
  EXPECT_THAT(queued(), ElementsAre(tree_.at(films[0]), tree_.at(films[2])));
  EXPECT_FALSE(shows("noneKept"));
  EXPECT_EQ(text("moveToTrash"), QStringLiteral("Move 2 to Trash · 120.0 MB"));
  click("moveToTrash");
  followTrash();
  finishAnalysis();
  EXPECT_TRUE(machine_.trash.has(tree_.at(films[1])));
  EXPECT_FALSE(machine_.trash.has(tree_.at(films[0])));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(2));
  EXPECT_THAT(places(), ElementsAre(tree_.at("one.iso"), tree_.at("two.iso")));
  EXPECT_TRUE(shows("duplicateList"));

  click("putBack");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 2 items"));
  for (const char* below : {films[0], films[2]}) {
    EXPECT_TRUE(machine_.trash.has(tree_.at(below)));
    tree_.plant(std::string(below).substr(0, std::string(below).rfind('/')), "film.mkv 60M\n");
  }
  finishAnalysis();
  EXPECT_THAT(places(), SizeIs(5));
  EXPECT_EQ(keyboardRow(), "");
}

TEST_F(DuplicateListJourney, a_group_without_a_copy_to_keep_warns_and_still_moves) {
  finishAnalysis();
  for (const std::size_t row : {0U, 1U, 2U}) {
    EXPECT_FALSE(shows("noneKept"));
    clickAt(middleOf(itemNamed(listRows()[row], "queueRow")));
    session().cleanupQueue().setQueueMinimized(true);
    settle(window());
  }
  expectLook(listRows()[0], {{"noneKept", "text", "No copy is kept"}});
  QAccessibleInterface* const heading =
      QAccessible::queryAccessibleInterface(itemNamed(listRows()[0], "group"));
  EXPECT_EQ(heading->text(QAccessible::Name), "3× 60.0 MB, No copy is kept");
  session().cleanupQueue().removeFromQueue(tree_.at(films[1]));
  settle(window());
  EXPECT_FALSE(shows("noneKept"));
  clickAt(middleOf(itemNamed(listRows()[1], "queueRow")));
  EXPECT_TRUE(shows("noneKept"));
  click("moveToTrash");
  for (const char* below : films) EXPECT_FALSE(machine_.trash.has(tree_.at(below)));
}

TEST_F(DuplicateListJourney, a_click_return_and_a_button_show_a_copy_on_the_map) {
  finishAnalysis();
  clickAt(middleOf(itemNamed(listRows()[2], "mapRow")));
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(focused(), tree_.at(films[2]));
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("Movies/old"));

  click("duplicatesMode");
  clickAt(middleOf(itemNamed(listRows()[0], "place")));
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(focused(), tree_.at(films[0]));

  click("duplicatesMode");
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(focused(), tree_.at(films[1]));
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
}

TEST_F(DuplicateListJourney, arrows_visit_the_files_alone_and_tab_the_buttons_of_a_file) {
  enter();
  for (const char* below : {films[1], films[2], "one.iso", "two.iso"}) {
    press(Qt::Key_Down);
    EXPECT_EQ(keyboardRow(), tree_.at(below));
    EXPECT_EQ(window().activeFocusItem()->objectName(), "rowFace");
  }
  press(Qt::Key_Home);
  std::vector<std::string> stops;
  for (int stop = 0; stop < 3; ++stop) {
    press(Qt::Key_Tab);
    stops.push_back(QAccessible::queryAccessibleInterface(window().activeFocusItem())
                        ->text(QAccessible::Name)
                        .toStdString());
  }
  const std::string place = tree_.at(films[0]);
  EXPECT_THAT(stops,
              ElementsAre("Show " + place + " on the map", "Reveal " + place, "Queue " + place));
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  press(Qt::Key_Return);
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(place)));
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre(place));
}

TEST_F(DuplicateListJourney, the_menu_of_a_row_offers_what_the_other_lists_do) {
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Menu);
  EXPECT_THAT(menuTexts(), ElementsAre("Show on map", "Show in File Manager", "Quick Look",
                                       "Add to Cleanup Queue"));
  press(Qt::Key_End);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre(tree_.at(films[1])));
  QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier,
                    middleOf(itemNamed(listRows()[3], "place")));
  click("duplicateReveal");
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(tree_.at("one.iso"))));
  QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier,
                    middleOf(itemNamed(listRows()[0], "place")));
  click("duplicateShowOnMap");
  EXPECT_EQ(focused(), tree_.at(films[0]));
}

TEST_F(DuplicateListJourney, the_windows_shortcuts_act_on_the_copy_of_the_focused_row) {
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  EXPECT_THAT(machine_.previewPanel.shown,
              ElementsAre("file://" + tree_.at(films[1]), "file://" + tree_.at(films[1])));
  press(Qt::Key_L, command);
  EXPECT_THAT(queued(), ElementsAre(tree_.at(films[1])));
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(tree_.at(films[1])));
  EXPECT_TRUE(machine_.trash.has(tree_.at(films[0])));
  followTrash();
  finishAnalysis();
  // The next copy has the keyboard.
  EXPECT_EQ(keyboardRow(), tree_.at(films[2]));
}

TEST_F(DuplicateListJourney, the_heading_stays_when_the_first_copy_is_gone) {
  enter();
  std::filesystem::remove(tree_.at(films[0]));
  session().rescan();
  finishScan();
  finishAnalysis();
  expectLook(listRows()[0], {{"group", "text", "2× 60.0 MB"},
                             {"place", "text", QString::fromStdString(tree_.at(films[1]))}});
  EXPECT_EQ(keyboardRow(), tree_.at(films[1]));
}

}  // namespace
}  // namespace tessaly
