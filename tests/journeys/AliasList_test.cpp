// The list of links whose targets do not exist, in place of the map. No control leads to it.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>

#include "journeys/CommandKeys.h"
#include "journeys/ListJourney.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class AliasListJourney : public ListJourney<> {
 protected:
  AliasListJourney()
      : ListJourney("aliasRow",
                    "Desktop/\n"
                    "  Backup.desktop 4K\n"
                    "bin/\n"
                    "  atlas -> ../gone/atlas\n"
                    "notes.txt 20M\n",
                    [this](Application::Services& services) {
                      services.analysis = PostScanAnalysis::Engines{
                          .deadLinks = [this](const auto&, const auto&) { return links(); }};
                    }) {
    machine_.trash.put(link(), "link");
    session().scanHome();
    finishScan();
    session().shown().setVizMode(VizMode::aliases);
  }

  std::string link() const { return tree_.at("bin/atlas"); }
  std::string alias() const { return tree_.at("Desktop/Backup.desktop"); }
  std::vector<DeadLink> links() const {
    std::vector<DeadLink> links;
    if (std::filesystem::is_symlink(link()))
      links.push_back(
          {.name = "atlas", .path = link(), .destination = "../gone/atlas", .kind = "symlink"});
    links.push_back({.name = "Backup.desktop", .path = alias(), .kind = "alias"});
    return links;
  }
};

TEST_F(AliasListJourney, the_list_says_so_until_an_analysis_has_found_links) {
  EXPECT_FALSE(shows("canvas"));
  expectLook(item("aliasList"),
             {{"listTitle", "text", "Broken aliases & symlinks"},
              {"listCaption", "text",
               "Pointers whose target is missing. Safe to trash if you no longer need the "
               "shortcut."},
              {"listCaption", "color", "#e5e7eb at 1.00"},
              {"emptyMessage", "text", "None in this scan."}});
  finishAnalysis();
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_THAT(places(), ElementsAre(link(), alias()));
}

TEST_F(AliasListJourney, each_row_shows_the_link_and_where_it_points_to) {
  finishAnalysis();
  expectLook(listRows()[0], {{"name", "text", "atlas"},
                             {"name", "font.pixelSize", 13},
                             {"name", "font.weight", 600},
                             {"place", "text", QString::fromStdString(link())},
                             {"place", "font.pixelSize", 11},
                             {"place", "color", "#9ca3af at 1.00"},
                             {"target", "text", "→ ../gone/atlas"},
                             {"target", "font.pixelSize", 11},
                             {"target", "color", "#ff9500 at 1.00"},
                             {"kind", "text", "symlink"},
                             {"queueRow", "text", "Queue"}});
  expectLook(listRows()[1], {{"name", "text", "Backup.desktop"}, {"kind", "text", "alias"}});
  EXPECT_EQ(itemNamed(listRows()[1], "target"), nullptr);
  EXPECT_LT(listRows()[1]->height(), listRows()[0]->height());
  const auto told = [this](std::size_t row) {
    return QAccessible::queryAccessibleInterface(itemNamed(listRows()[row], "rowFace"))
        ->text(QAccessible::Name)
        .toStdString();
  };
  EXPECT_EQ(told(0), "atlas, symlink, " + link() + ", → ../gone/atlas");
  EXPECT_EQ(told(1), "Backup.desktop, alias, " + alias());
}

TEST_F(AliasListJourney, a_link_goes_to_the_queue_to_the_trash_and_back) {
  enter();
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  ASSERT_THAT(queued(), ElementsAre(link()));
  const DiskNode& node = session().cleanupQueue().queue().front();
  EXPECT_EQ(node.name(), "atlas");
  EXPECT_EQ(node.size(), 0);
  EXPECT_EQ(node.kind(), FileKind::other);
  EXPECT_EQ(text("moveToTrash"), QStringLiteral("Move 1 to Trash · 0 B"));
  click("moveToTrash");
  EXPECT_FALSE(machine_.trash.has(link()));
  std::filesystem::remove(link());
  finishAnalysis();
  EXPECT_THAT(places(), ElementsAre(alias()));
  EXPECT_EQ(session().shown().vizMode(), VizMode::aliases);
  click("putBack");
  EXPECT_TRUE(machine_.trash.has(link()));
  std::filesystem::create_symlink("../gone/atlas", link());
  finishAnalysis();
  EXPECT_THAT(places(), ElementsAre(link(), alias()));
}

TEST_F(AliasListJourney, a_link_without_a_tile_is_shown_in_the_file_manager) {
  enter();
  press(Qt::Key_Return);
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(link())));
  EXPECT_TRUE(shows("aliasList"));
  press(Qt::Key_Menu);
  EXPECT_THAT(menuTexts(), ElementsAre("Show on map", "Show in File Manager", "Quick Look",
                                       "Add to Cleanup Queue"));
  press(Qt::Key_End);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre(link()));
}

TEST_F(AliasListJourney, the_windows_shortcuts_act_on_the_link_of_the_focused_row) {
  enter();
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  EXPECT_THAT(machine_.previewPanel.shown, SizeIs(2));
  press(Qt::Key_L, command);
  EXPECT_THAT(queued(), ElementsAre(link()));
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(link()));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(1));
}

TEST_F(AliasListJourney, escape_and_every_mode_button_leave_the_list) {
  finishAnalysis();
  press(Qt::Key_Escape);
  EXPECT_TRUE(shows("canvas"));
  session().shown().setVizMode(VizMode::aliases);
  click("largestMode");
  EXPECT_TRUE(shows("largestList"));
  EXPECT_FALSE(shows("aliasList"));
}

// With the engine of the program, and links on the disk.
class DeadLinksOnDisk : public Journey {
 protected:
  DeadLinksOnDisk()
      : Journey(
            "bin/\n"
            "  atlas -> ../gone/atlas\n"
            "  notes -> ../notes.txt\n"
            "  .#notes -> ada@workstation.1290:1699990000\n"
            "notes.txt 20M\n") {
    machine_.trash.put(tree_.at("bin/atlas"), "link");
    session().scanHome();
    finishScan();
    session().shown().setVizMode(VizMode::aliases);
    finishAnalysis();
  }

  void finishAnalysis() {
    dispatch_.drainAll();
    settle(window());
  }
  QQuickItem* row(const char* name) {
    for (QQuickItem* const row : itemsNamed(window().contentItem(), "aliasRow")) {
      if (row->property("name") == name) return row;
    }
    return nullptr;
  }
};

TEST_F(DeadLinksOnDisk, a_dead_link_is_queued_moved_to_the_trash_and_put_back) {
  ASSERT_NE(row("atlas"), nullptr);
  EXPECT_EQ(row("notes"), nullptr);
  clickAt(middleOf(itemNamed(row("atlas"), "queueRow")));
  click("moveToTrash");
  EXPECT_FALSE(machine_.trash.has(tree_.at("bin/atlas")));
  std::filesystem::remove(tree_.at("bin/atlas"));
  finishAnalysis();
  EXPECT_EQ(row("atlas"), nullptr);
  ASSERT_NE(row(".#notes"), nullptr);
  click("putBack");
  EXPECT_TRUE(machine_.trash.has(tree_.at("bin/atlas")));
  std::filesystem::create_symlink("../gone/atlas", tree_.at("bin/atlas"));
  finishAnalysis();
  EXPECT_NE(row("atlas"), nullptr);
}

TEST_F(DeadLinksOnDisk, a_lock_has_the_word_in_its_row) {
  ASSERT_NE(row(".#notes"), nullptr);
  QQuickItem* const lock = itemNamed(row(".#notes"), "lock");
  ASSERT_NE(lock, nullptr);
  EXPECT_EQ(lock->property("text"), "lock");
  EXPECT_EQ(itemNamed(row("atlas"), "lock"), nullptr);
  const std::string told =
      QAccessible::queryAccessibleInterface(itemNamed(row(".#notes"), "rowFace"))
          ->text(QAccessible::Name)
          .toStdString();
  EXPECT_EQ(told, ".#notes, lock, symlink, " + tree_.at("bin/.#notes") +
                      ", → ada@workstation.1290:1699990000");
}

}  // namespace
}  // namespace tessaly
