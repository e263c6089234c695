// The page of what can be won back: from the analysis to the Trash and back.
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "journeys/Journey.h"
#include "support/PlainFiles.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t mega = 1048576;

class WinsJourney : public Journey {
 protected:
  WinsJourney()
      : Journey(
            "caches/\n"
            "  pip/\n"
            "    wheel 3M\n"
            "  photos/\n"
            "    a.jpg 5M\n"
            "Code/\n"
            "  node_modules/\n"
            "    left-pad.js 2M\n"
            "film.mp4 8M\n",
            [this](Application::Services& services) {
              services.wins = {
                  .analyse = [this](const std::string&, const std::optional<DiskNode>& tree,
                                    const auto&) { return find(tree); },
                  .thin = [this](const auto&) { return answer_; },
                  .isTrashAction = [](std::string_view id) { return id == "trash"; }};
              services.run = [this](const std::string& path, const std::vector<std::string>& args,
                                    double) -> std::string {
                if (path != "/usr/bin/osascript" || args.empty()) return noTools(path, args);
                if (args.back().find("empty") != std::string::npos) ++emptyings_;
                return "3\n";
              };
            }) {
    for (const char* below : items) machine_.trash.put(tree_.at(below), below);
    // What moves to the fake Trash leaves the disk.
    machine_.trash.beforeMoves([this](const std::string& path) {
      if (duringMove_) duringMove_(path);
      if (!refused_.contains(path)) std::filesystem::rename(path, path + " (moved)");
    });
    session().scanHome();
    finishScan();
  }

  static constexpr const char* items[] = {"caches/pip", "caches/photos", "Code/node_modules",
                                          "film.mp4"};

  ReclaimAnalysis::Finds find(const std::optional<DiskNode>& tree) {
    ReclaimAnalysis::Finds finds;
    const auto isThere = [this](const char* below) {
      return std::filesystem::exists(tree_.at(below));
    };
    if (isThere("caches/photos"))
      finds.probes.push_back({.id = "photos",
                              .label = "Photos library",
                              .note = "Your photo library",
                              .caution = true,
                              .path = tree_.at("caches/photos"),
                              .bytes = 5 * mega});
    if (isThere("caches/pip"))
      finds.probes.push_back({.id = "pip",
                              .label = "pip cache",
                              .note = "Wheels re-download as needed",
                              .path = tree_.at("caches/pip"),
                              .bytes = 3 * mega});
    if (hasTrash_)
      finds.probes.push_back({.id = "trash",
                              .label = "Trash",
                              .note = "Empty the Trash to reclaim this space",
                              .path = tree_.at("Trash"),
                              .bytes = 7 * mega});
    // In the tree until the next scan, like everything in a tree.
    if (tree)
      finds.treeWins.push_back({.path = tree_.at("Code/node_modules"),
                                .name = "node_modules",
                                .bytes = 2 * mega,
                                .category = "node_modules",
                                .note = "Restored by npm/yarn/pnpm install"});
    if (isThere("film.mp4"))
      finds.largeOld.push_back(
          {.name = "film.mp4", .path = tree_.at("film.mp4"), .bytes = 8 * mega});
    finds.snapshots = snapshots_;
    return hasAny_ ? finds : ReclaimAnalysis::Finds();
  }

  void finish() {
    dispatch_.drainAll();
    settle(window());
  }
  void open() {
    click("listMode");
    finish();
  }
  QQuickItem* row(const QString& title) {
    for (QQuickItem* const each : itemsNamed(window().contentItem(), "winRow")) {
      if (each->property("title").toString() == title) return each;
    }
    return nullptr;
  }
  void clickIn(const QString& title, const QString& part) {
    QQuickItem* const found = row(title);
    ASSERT_NE(found, nullptr) << title.toStdString();
    clickAt(middleOf(itemNamed(found, part)));
    settle(window());
  }
  bool isTicked(const QString& title) {
    return row(title) != nullptr && row(title)->property("picked").toBool();
  }
  bool isOnDisk(const char* below) const { return machine_.trash.has(tree_.at(below)); }
  QString banner(const QString& name) {
    return shows(name) ? itemNamed(item(name), "bannerText")->property("text").toString()
                       : QString();
  }
  // The files come back with what the fake Trash puts back.
  void comeBack() {
    for (const char* below : items) {
      if (isOnDisk(below) && !std::filesystem::exists(tree_.at(below)))
        std::filesystem::rename(tree_.at(below) + " (moved)", tree_.at(below));
    }
  }

  bool hasAny_ = true;
  bool hasTrash_ = false;
  int snapshots_ = 0;
  int emptyings_ = 0;
  std::string answer_;
  std::set<std::string> refused_;
  std::function<void(const std::string& path)> duringMove_;
};

TEST_F(WinsJourney, two_rows_are_analysed_ticked_moved_and_put_back) {
  click("listMode");
  EXPECT_TRUE(shows("winsSpinner"));
  finish();
  EXPECT_EQ(text("winsTitle"), "Up to ~18.0 MB reclaimable");
  clickIn("pip cache", "tickRow");
  clickIn("node_modules", "tickRow");
  EXPECT_EQ(text("winsMove"), "Move 2 to Trash · 5.0 MB");
  click("winsMove");
  finish();
  EXPECT_FALSE(isOnDisk("caches/pip"));
  EXPECT_FALSE(isOnDisk("Code/node_modules"));
  EXPECT_EQ(banner("freedBanner"), "Moved 2 item(s) to Trash — freed ~5.0 MB.");
  EXPECT_EQ(banner("errorBanner"), "");
  EXPECT_EQ(row("pip cache"), nullptr);
  ASSERT_NE(row("node_modules"), nullptr);
  EXPECT_FALSE(row("node_modules")->property("tickable").toBool());
  EXPECT_EQ(text("winsTitle"), "Up to ~13.0 MB reclaimable");
  click("putBack");
  comeBack();
  finish();
  EXPECT_TRUE(isOnDisk("caches/pip"));
  EXPECT_NE(row("pip cache"), nullptr);
  EXPECT_TRUE(row("node_modules")->property("tickable").toBool());
  EXPECT_FALSE(shows("putBack"));
}

TEST_F(WinsJourney, select_all_moves_rows_of_caution_and_not_the_trash) {
  hasTrash_ = true;
  open();
  click("winsPick");
  EXPECT_EQ(text("winsMove"), "Move 4 to Trash · 18.0 MB");
  EXPECT_TRUE(isTicked("Photos library"));
  EXPECT_FALSE(isTicked("Trash"));
  click("winsMove");
  finish();
  for (const char* below : items) EXPECT_FALSE(isOnDisk(below)) << below;
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(4));
}

TEST_F(WinsJourney, the_trash_is_emptied_from_its_row) {
  hasTrash_ = true;
  open();
  clickIn("Trash", "emptyTrashRow");
  hasTrash_ = false;
  finish();
  EXPECT_EQ(emptyings_, 1);
  EXPECT_EQ(banner("freedBanner"), "Emptied Trash — freed ~7.0 MB.");
  EXPECT_EQ(row("Trash"), nullptr);
}

TEST_F(WinsJourney, a_move_is_stopped_in_the_middle) {
  open();
  click("winsPick");
  // The deepest items move first, and those of one depth in the order of their paths.
  duringMove_ = [this](const std::string& path) {
    if (path == tree_.at("caches/photos")) click("winsStop");
  };
  click("winsMove");
  finish();
  EXPECT_FALSE(isOnDisk("caches/photos"));
  EXPECT_TRUE(isOnDisk("caches/pip"));
  EXPECT_TRUE(isOnDisk("film.mp4"));
  EXPECT_TRUE(isTicked("pip cache"));
  EXPECT_TRUE(isTicked("film.mp4"));
  EXPECT_EQ(banner("freedBanner"), "Moved 2 item(s) to Trash — freed ~7.0 MB.");
  EXPECT_EQ(text("winsMove"), "Move 2 to Trash · 11.0 MB");
  EXPECT_TRUE(shows("putBack"));
}

TEST_F(WinsJourney, other_ways_to_the_trash_are_closed_while_the_page_moves_and_open_afterwards) {
  hasTrash_ = true;
  open();
  clickIn("film.mp4", "tickRow");
  click("winsMove");
  for (const char* name : {"emptyTrash", "emptyTrashRow", "winsMove"})
    EXPECT_FALSE(item(name)->isEnabled()) << name;
  finish();
  for (const char* name : {"emptyTrash", "emptyTrashRow", "putBack"})
    EXPECT_TRUE(item(name)->isEnabled()) << name;
}

TEST_F(WinsJourney, a_move_goes_on_while_the_page_is_closed) {
  open();
  click("winsPick");
  click("winsMove");
  click("treemapMode");
  finish();
  for (const char* below : items) EXPECT_FALSE(isOnDisk(below)) << below;
  EXPECT_TRUE(shows("putBack"));
}

TEST_F(WinsJourney, a_cache_that_grows_between_the_analysis_and_the_move_moves) {
  open();
  clickIn("pip cache", "tickRow");
  putFile(tree_.at("caches/pip/another"), "wheel");
  click("winsMove");
  finish();
  EXPECT_FALSE(isOnDisk("caches/pip"));
  EXPECT_EQ(banner("freedBanner"), "Moved 1 item(s) to Trash — freed ~3.0 MB.");
}

TEST_F(WinsJourney, an_item_that_another_program_has_replaced_stays_and_counts_as_failed) {
  open();
  clickIn("film.mp4", "tickRow");
  std::filesystem::rename(tree_.at("film.mp4"), tree_.at("old"));
  putFile(tree_.at("film.mp4"), "another film");
  click("winsMove");
  finish();
  EXPECT_EQ(contentOf(tree_.at("film.mp4")), "another film");
  EXPECT_EQ(banner("errorBanner"), "1 item(s) couldn't be moved to Trash.");
  EXPECT_TRUE(shows("failureLine"));
}

TEST_F(WinsJourney, an_item_that_has_vanished_counts_as_failed_and_the_others_move) {
  open();
  clickIn("film.mp4", "tickRow");
  clickIn("pip cache", "tickRow");
  std::filesystem::remove(tree_.at("film.mp4"));
  click("winsMove");
  finish();
  EXPECT_FALSE(isOnDisk("caches/pip"));
  EXPECT_EQ(banner("freedBanner"), "Moved 1 item(s) to Trash — freed ~11.0 MB.");
  EXPECT_EQ(banner("errorBanner"), "1 item(s) couldn't be moved to Trash.");
}

TEST_F(WinsJourney, a_folder_that_may_not_be_moved_stays) {
  refused_.insert(tree_.at("caches/pip"));
  machine_.trash.refuse(tree_.at("caches/pip"));
  open();
  clickIn("pip cache", "tickRow");
  click("winsMove");
  finish();
  EXPECT_TRUE(isOnDisk("caches/pip"));
  EXPECT_EQ(banner("errorBanner"), "1 item(s) couldn't be moved to Trash.");
  EXPECT_NE(row("pip cache"), nullptr);
  EXPECT_FALSE(isTicked("pip cache"));
}

TEST_F(WinsJourney, a_tool_that_does_not_answer_leaves_the_page_usable) {
  snapshots_ = 2;
  open();
  EXPECT_EQ(text("snapshotText"), "2 local snapshots");
  click("thinSnapshots");
  const Dispatch::Work hung = dispatch_.take(Dispatch::Queue::userInitiated);
  EXPECT_FALSE(item("thinSnapshots")->isEnabled());
  clickIn("pip cache", "tickRow");
  click("winsMove");
  finish();
  EXPECT_FALSE(isOnDisk("caches/pip"));
  hung();
  finish();
  EXPECT_EQ(banner("freedBanner"), "Asked the system to thin local snapshots (up to 20 GB).");
  EXPECT_TRUE(item("thinSnapshots")->isEnabled());
}

TEST_F(WinsJourney, a_home_with_nothing_to_win_back_says_so) {
  hasAny_ = false;
  open();
  EXPECT_EQ(text("winsTitle"), "Up to ~0 B reclaimable");
  EXPECT_EQ(text("noCaches"), "No known caches found.");
  EXPECT_THAT(itemsNamed(window().contentItem(), "winRow"), IsEmpty());
  click("winsPick");
  EXPECT_FALSE(shows("winsMove"));
}

TEST_F(WinsJourney, a_row_is_shown_on_the_map_by_a_click) {
  open();
  clickIn("film.mp4", "title");
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("film.mp4"));
}

TEST_F(WinsJourney, commands_act_on_the_row_with_the_keyboard) {
  open();
  tabTo("rowFace");
  press(Qt::Key_L, Qt::ControlModifier);
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), tree_.at("caches/photos"));
}

}  // namespace
}  // namespace tessaly
