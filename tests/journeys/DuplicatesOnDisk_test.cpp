// Copies and hard links on the disk, found by the engines of the program.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class OnDisk : public Journey {
 protected:
  explicit OnDisk(std::string_view tree) : Journey(tree) {}

  void scanAndAnalyse() {
    session().scanHome();
    finishScan();
    finishAnalysis();
  }
  void finishAnalysis() {
    dispatch_.drainAll();
    settle(window());
  }
  // From the first to the last.
  std::vector<QQuickItem*> rows(const char* name) {
    std::vector<QQuickItem*> rows = itemsNamed(window().contentItem(), name);
    std::ranges::sort(rows, {}, [](QQuickItem* row) { return row->y(); });
    return rows;
  }
  std::vector<std::string> places(const char* name) {
    std::vector<std::string> places;
    for (QQuickItem* const row : rows(name))
      places.push_back(row->property("place").toString().toStdString());
    return places;
  }
  // Queues the copy `below` the home by its button.
  void queue(const std::string& below) {
    for (QQuickItem* const row : rows("duplicateRow")) {
      if (row->property("place").toString().toStdString() != tree_.at(below)) continue;
      clickAt(middleOf(itemNamed(row, "queueRow")));
      return;
    }
    ADD_FAILURE() << "no row for " << below;
  }
};

constexpr const char* films[] = {"Downloads/film.mkv", "Movies/film.mkv", "Movies/old/film.mkv"};

class DuplicatesOnDisk : public OnDisk {
 protected:
  DuplicatesOnDisk()
      : OnDisk(
            "Downloads/\n"
            "  film.mkv 51M\n"
            "Movies/\n"
            "  film.mkv 51M\n"
            "  other.mkv 51M\n"
            "  old/\n"
            "    film.mkv 51M\n"
            "    small.mkv 49M\n"
            "    twin.mkv 49M\n") {
    change("Movies/other.mkv");
    for (const char* below : films) machine_.trash.put(tree_.at(below), below);
    scanAndAnalyse();
    click("duplicatesMode");
  }

  // Other content of the same length.
  void change(const std::string& below) {
    std::fstream(tree_.at(below), std::ios::in | std::ios::out) << "changed";
  }
  // Removes the real files that the fake Trash has taken.
  void followTrash() {
    for (const char* below : films) {
      if (!machine_.trash.has(tree_.at(below))) std::filesystem::remove(tree_.at(below));
    }
  }
};

TEST_F(DuplicatesOnDisk, three_copies_are_found_and_two_move_to_the_trash_and_back) {
  ASSERT_THAT(places("duplicateRow"),
              UnorderedElementsAre(tree_.at(films[0]), tree_.at(films[1]), tree_.at(films[2])));
  expectLook(rows("duplicateRow")[0], {{"group", "text", "3× 51.0 MB"}});
  EXPECT_FALSE(shows("sameBlocks"));
  queue(films[0]);
  queue(films[2]);
  click("moveToTrash");
  EXPECT_FALSE(machine_.trash.has(tree_.at(films[0])));
  EXPECT_TRUE(machine_.trash.has(tree_.at(films[1])));
  EXPECT_FALSE(shows("failureLine"));
  followTrash();
  finishAnalysis();
  EXPECT_EQ(text("emptyMessage"), "No large duplicates in this scan.");
  click("putBack");
  EXPECT_TRUE(machine_.trash.has(tree_.at(films[0])));
  tree_.plant("Downloads", "film.mkv 51M\n");
  tree_.plant("Movies/old", "film.mkv 51M\n");
  finishAnalysis();
  EXPECT_THAT(places("duplicateRow"), SizeIs(3));
}

TEST_F(DuplicatesOnDisk, a_copy_that_has_changed_since_the_scan_is_not_moved) {
  queue(films[0]);
  queue(films[2]);
  change(films[2]);
  click("moveToTrash");
  EXPECT_FALSE(machine_.trash.has(tree_.at(films[0])));
  EXPECT_TRUE(machine_.trash.has(tree_.at(films[2])));
  EXPECT_THAT(text("failure").toStdString(), HasSubstr("changed since it was listed"));
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  followTrash();
  finishAnalysis();
  // It has the content of another file now.
  EXPECT_THAT(places("duplicateRow"),
              UnorderedElementsAre(tree_.at(films[2]), tree_.at("Movies/other.mkv")));
}

class HardLinksOnDisk : public OnDisk {
 protected:
  HardLinksOnDisk()
      : OnDisk(
            "one.iso 51M\n"
            "two.iso = one.iso\n"
            "copy.iso 51M\n") {
    scanAndAnalyse();
  }
};

TEST_F(HardLinksOnDisk, hard_links_are_marked_beside_a_real_copy_and_explained_in_their_own_list) {
  click("duplicatesMode");
  std::vector<std::string> marked;
  for (QQuickItem* const row : rows("duplicateRow")) {
    if (itemNamed(row, "sameBlocks") != nullptr)
      marked.push_back(row->property("place").toString().toStdString());
  }
  EXPECT_THAT(places("duplicateRow"), SizeIs(3));
  EXPECT_THAT(marked, UnorderedElementsAre(tree_.at("one.iso"), tree_.at("two.iso")));

  click("clonesMode");
  EXPECT_THAT(places("cloneRow"), UnorderedElementsAre(tree_.at("one.iso"), tree_.at("two.iso")));
  expectLook(
      rows("cloneRow")[0],
      {{"kind", "text", "Hard link"}, {"count", "text", "2×"}, {"saves", "text", "saves 51.0 MB"}});
}

}  // namespace
}  // namespace tessaly
