// The list of large unused files with their scores, in place of the map.
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>

#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "reclaim/SafeScore.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double now = 1700000000;
constexpr double day = 86400;

class SafeListJourney : public Journey {
 protected:
  SafeListJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 80M\n"
            "code/\n"
            "  dump.sql 70M\n"
            ".cache/\n"
            "  blob 60M\n",
            [this](Application::Services& services) {
              services.analysis = PostScanAnalysis::Engines{
                  .safeItems = [this](const auto&, const auto&) { return scored(); }};
            }) {
    for (const char* below : {"Movies/beach.mp4", "code/dump.sql", ".cache/blob"})
      machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
  }

  // The files that have not been used for 200 days.
  std::vector<SafeItem> scored() const {
    std::vector<LargeOldFile> files;
    for (const auto& [below, kind] : {std::pair("Movies/beach.mp4", "video"),
                                      {"code/dump.sql", "code"},
                                      {".cache/blob", "other"}}) {
      if (!std::filesystem::exists(tree_.at(below))) continue;
      files.push_back({.path = tree_.at(below),
                       .bytes = tree_.allocated(below),
                       .kind = kind,
                       .mtimeMs = static_cast<std::int64_t>((now - 200 * day) * 1000)});
    }
    return SafeScore::rank(files,
                           {.places = Places::forLinux(), .personalFolders = {}, .now = now});
  }
  void finishAnalysis() {
    dispatch_.drainAll();
    settle(window());
  }
  std::vector<QQuickItem*> rows() { return itemsNamed(window().contentItem(), "safeRow"); }
  std::vector<std::string> names() {
    std::vector<std::string> names;
    for (QQuickItem* const row : rows())
      names.push_back(row->property("name").toString().toStdString());
    return names;
  }
  std::string keyboardRow() {
    for (QQuickItem* const row : rows()) {
      if (row->hasActiveFocus()) return row->property("name").toString().toStdString();
    }
    return {};
  }
  void enter() {
    tabTo("rowFace");
    ASSERT_EQ(keyboardRow(), "blob");
  }
  std::vector<std::string> queued() {
    std::vector<std::string> paths;
    for (const DiskNode& node : session().cleanupQueue().queue()) paths.push_back(node.path());
    return paths;
  }
};

TEST_F(SafeListJourney, the_list_says_so_until_an_analysis_has_ended) {
  click("safeMode");
  expectLook(item("safeList"),
             {{"listTitle", "text", "Safe to remove"},
              {"listCaption", "text",
               "Score from last used, file kind, and whether the path is a cache vs a personal "
               "folder."},
              {"listCaption", "font.pixelSize", 12},
              {"listCaption", "color", "#e5e7eb at 1.00"},
              {"emptyMessage", "text", "No large idle files scored yet. Scan Home first."}});
  finishAnalysis();
  EXPECT_THAT(names(), ElementsAre("blob", "dump.sql", "beach.mp4"));
  EXPECT_FALSE(shows("emptyMessage"));
}

TEST_F(SafeListJourney, each_row_shows_the_score_of_its_file_and_the_reasons) {
  click("safeMode");
  finishAnalysis();
  expectLook(rows()[0],
             {{"score", "text", "100"},
              {"score", "font.pixelSize", 15},
              {"score", "font.weight", 700},
              {"score", "color", "#34c759 at 1.00"},
              {"name", "text", "blob"},
              {"name", "font.pixelSize", 13},
              {"detail", "text", "Safe to remove · developer or cache path · idle 6+ months"},
              {"detail", "font.pixelSize", 11},
              {"detail", "color", "#9ca3af at 1.00"},
              {"place", "text", QString::fromStdString(tree_.at(".cache/blob"))},
              {"place", "font.pixelSize", 11},
              {"place", "color", "#9ca3af at 1.00"},
              {"size", "text", "60.0 MB"},
              {"queueRow", "text", "Queue"}});
  expectLook(rows()[2],
             {{"score", "text", "23"},
              {"score", "color", "#ff9500 at 1.00"},
              {"detail", "text", "Keep / caution · personal folder · video · idle 6+ months"}});
  QAccessibleInterface* const told =
      QAccessible::queryAccessibleInterface(itemNamed(rows()[1], "rowFace"));
  EXPECT_EQ(told->text(QAccessible::Name),
            QString::fromStdString("dump.sql, score 70, Review · idle 6+ months, 70.0 MB, " +
                                   tree_.at("code/dump.sql")));
}

TEST_F(SafeListJourney, a_click_and_return_show_a_file_on_the_map) {
  click("safeMode");
  finishAnalysis();
  clickAt(middleOf(itemNamed(rows()[0], "score")));
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at(".cache/blob"));
  EXPECT_EQ(session().navigation().current()->path(), tree_.at(".cache"));

  click("safeMode");
  enter();
  press(Qt::Key_Down);
  EXPECT_EQ(keyboardRow(), "dump.sql");
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("code/dump.sql"));
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
}

TEST_F(SafeListJourney, files_go_from_the_list_to_the_queue_and_to_the_trash) {
  click("safeMode");
  finishAnalysis();
  enter();
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre(tree_.at(".cache/blob")));
  EXPECT_TRUE(shows("safeList"));
  // A warning does not forbid it.
  clickAt(middleOf(itemNamed(rows()[2], "queueRow")));
  EXPECT_THAT(queued(), ElementsAre(tree_.at(".cache/blob"), tree_.at("Movies/beach.mp4")));

  std::filesystem::remove(tree_.at(".cache/blob"));
  std::filesystem::remove(tree_.at("Movies/beach.mp4"));
  session().emptyQueue();
  finishAnalysis();
  EXPECT_FALSE(machine_.trash.has(tree_.at(".cache/blob")));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(2));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(names(), ElementsAre("dump.sql"));
}

TEST_F(SafeListJourney, the_windows_shortcuts_act_on_the_file_of_the_focused_row) {
  click("safeMode");
  finishAnalysis();
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  EXPECT_THAT(machine_.previewPanel.shown, SizeIs(2));
  press(Qt::Key_L, command);
  EXPECT_THAT(queued(), ElementsAre(tree_.at("code/dump.sql")));
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(tree_.at("code/dump.sql")));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_TRUE(shows("putBack"));
}

}  // namespace
}  // namespace tessaly
