#include "scan/ScanProgress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScanProgressTest : public ::testing::Test {
 protected:
  // The progress of a folder with this many entries.
  ScanProgress progressOf(std::size_t entries) { return ScanProgress(callbacks_, entries); }

  std::vector<std::string> lines_;
  std::vector<double> fractions_;
  DiskScanner::Callbacks callbacks_{
      .progress = [this](const std::string& line) { lines_.push_back(line); },
      .percent = [this](double fraction) { fractions_.push_back(fraction); },
      .isCancelled = {}};
};

TEST_F(ScanProgressTest, progress_is_the_finished_share_of_the_initial_entries) {
  ScanProgress progress = progressOf(3);
  for (const char* name : {"a", "b", "c"}) progress.reachTop(name);
  progress.finishLastTop();
  EXPECT_THAT(lines_, ElementsAre("0%  a", "33%  b", "66%  c"));
  EXPECT_THAT(fractions_, ElementsAre(0, 1 / 3.0, 1 / 3.0, 2 / 3.0, 2 / 3.0, 1));
}

TEST_F(ScanProgressTest, progress_stays_at_most_1_when_entries_are_added_meanwhile) {
  ScanProgress progress = progressOf(2);
  for (const char* name : {"a", "b", "c", "d"}) progress.reachTop(name);
  progress.finishTop("e");
  progress.countItem(1500);
  progress.finishLastTop();
  EXPECT_THAT(lines_, ElementsAre("0%  a", "50%  b", "100%  c", "100%  d", "100%  Mapping d"));
  EXPECT_THAT(fractions_, ElementsAre(0, 0.5, 0.5, 1, 1, 1, 1, 1, 1));
}

TEST_F(ScanProgressTest, a_folder_without_initial_entries_counts_as_one_entry) {
  ScanProgress progress = progressOf(0);
  progress.reachTop("a");
  progress.finishLastTop();
  EXPECT_THAT(lines_, ElementsAre("0%  a"));
  EXPECT_THAT(fractions_, ElementsAre(0, 1));
}

TEST_F(ScanProgressTest, progress_stays_at_0_before_the_first_entry) {
  ScanProgress progress = progressOf(2);
  progress.finishLastTop();
  progress.countItem(1499);
  EXPECT_THAT(lines_, IsEmpty());
  EXPECT_THAT(fractions_, IsEmpty());
}

TEST_F(ScanProgressTest, an_entry_is_reported_once_whatever_its_number_of_items) {
  ScanProgress progress = progressOf(2);
  for (int i = 0; i < 3; ++i) progress.reachTop("a");
  EXPECT_THAT(lines_, ElementsAre("0%  a"));
  EXPECT_THAT(fractions_, ElementsAre(0));
}

TEST_F(ScanProgressTest, an_entry_is_finished_once) {
  ScanProgress progress = progressOf(4);
  progress.reachTop("a");
  progress.finishTop("a");
  progress.finishTop("a");
  progress.finishLastTop();
  EXPECT_THAT(fractions_, ElementsAre(0, 0.25));
  progress.reachTop("b");
  EXPECT_THAT(fractions_, ElementsAre(0, 0.25, 0.25));
  EXPECT_EQ(lines_.back(), "25%  b");
}

TEST_F(ScanProgressTest, a_skipped_entry_does_not_finish_the_current_one) {
  ScanProgress progress = progressOf(4);
  progress.reachTop("a");
  progress.finishTop("skipped");
  EXPECT_THAT(fractions_, ElementsAre(0, 0.25));
  progress.reachTop("a");
  EXPECT_THAT(fractions_, ElementsAre(0, 0.25));
  progress.finishLastTop();
  EXPECT_THAT(fractions_, ElementsAre(0, 0.25, 0.5));
}

TEST_F(ScanProgressTest, the_current_entry_is_reported_at_every_1500th_item) {
  ScanProgress progress = progressOf(1);
  progress.reachTop("a");
  lines_.clear();
  for (std::uint64_t item = 1; item <= 4499; ++item) {
    progress.countItem(item);
    ASSERT_EQ(lines_.size(), item / 1500) << item;
  }
  EXPECT_THAT(lines_, ElementsAre("0%  Mapping a", "0%  Mapping a"));
  EXPECT_THAT(fractions_, ElementsAre(0));
}

TEST_F(ScanProgressTest, callbacks_may_be_absent) {
  callbacks_ = {};
  ScanProgress progress = progressOf(1);
  progress.reachTop("a");
  progress.finishTop("b");
  progress.countItem(1500);
  progress.finishLastTop();
  EXPECT_THAT(lines_, IsEmpty());
}

}  // namespace
}  // namespace tessaly
