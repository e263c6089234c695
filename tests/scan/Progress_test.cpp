#include <algorithm>
#include <thread>

#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

using testing::Each;
using testing::ElementsAre;

class Progress : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(Progress);

using Form = ScanRecord::Event::Form;

ScanRecord::Event line(const std::string& text) {
  return {Form::line, text, 0};
}
ScanRecord::Event fraction(double value) {
  return {Form::fraction, "", value};
}
ScanRecord::Event poll() {
  return {Form::poll, "", 0};
}

TEST_P(Progress, one_folder_reports_everything_in_this_order) {
  const TempTree tree(R"(
    only/
      film 1M
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.events(),
              ElementsAre(fraction(0), poll(), fraction(0), line("0%  only"), poll(), fraction(1),
                          poll(), fraction(1), line("Building map…")));
}

TEST_P(Progress, two_folders_are_reported_in_the_order_of_the_disk) {
  const TempTree tree(R"(
    a/
    b/
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  const auto lines = record.lines();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_TRUE(lines[0] == "0%  a" || lines[0] == "0%  b");
  EXPECT_EQ(lines[1], lines[0] == "0%  a" ? "50%  b" : "50%  a");
  EXPECT_THAT(record.fractions(), ElementsAre(0, 0, 0.5, 0.5, 1, 1));
}

TEST_P(Progress, a_link_at_the_top_keeps_the_fraction_below_one_until_the_end) {
  const TempTree tree(R"(
    folder/
    link -> folder
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.fractions(), ElementsAre(0, 0, 0.5, 1));
  EXPECT_EQ(record.polls(), 3U);
}

TEST_P(Progress, a_skipped_name_at_the_top_is_finished_without_a_line) {
  const TempTree tree(R"(
    .Trash/
      film 1M
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.fractions(), ElementsAre(0, 1, 1));
  EXPECT_THAT(record.lines(), ElementsAre("Building map…"));
}

TEST_P(Progress, a_skipped_name_below_the_top_reports_nothing) {
  const TempTree tree(R"(
    a/
      .Trash/
        film 1M
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.fractions(), ElementsAre(0, 0, 1, 1));
  EXPECT_EQ(record.polls(), 3U);
}

TEST_P(Progress, every_1500th_item_reports_the_present_path) {
  const TempTree tree(R"(
    only/
      #### x3998
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.lines(),
              ElementsAre("0%  only", "0%  Mapping only", "0%  Mapping only", "Building map…"));
  EXPECT_EQ(record.polls(), 4000U);
  // Preceded by two fractions, the first line and 1500 polls.
  EXPECT_EQ(record.events()[1502], poll());
  EXPECT_EQ(record.events()[1503], line("0%  Mapping only"));
}

TEST_P(Progress, the_1500th_item_reports_its_top_level_entry_first) {
  TempTree tree("few/\n  #### x1498");
  tree.plant("last/");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  const auto lines = record.lines();
  // Whichever folder comes first on the disk, the 1500th item belongs to the other one or to "few".
  if (lines[0] == "0%  few") {
    EXPECT_THAT(lines, ElementsAre("0%  few", "50%  last", "50%  Mapping last", "Building map…"));
  } else {
    EXPECT_THAT(lines, ElementsAre("0%  last", "50%  few", "50%  Mapping few", "Building map…"));
  }
}

TEST_P(Progress, links_count_as_items_but_report_nothing) {
  const TempTree tree(R"(
    only/
      #### -> nowhere x1600
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.lines(), ElementsAre("0%  only", "Building map…"));
  EXPECT_EQ(record.polls(), 1602U);
}

TEST_P(Progress, contents_of_opaque_packages_are_not_items) {
  const TempTree tree(R"(
    only/
      Tool.app/
        #### x1600
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.lines(), ElementsAre("0%  only", "Building map…"));
  EXPECT_EQ(record.polls(), 3U);
}

TEST_P(Progress, the_whole_percent_is_the_fraction_times_100_rounded_down) {
  // 29 hundredths times 100 is slightly below 29 in 64-bit floats.
  const TempTree tree("##/ x100");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  const auto lines = record.lines();
  ASSERT_EQ(lines.size(), 101U);
  for (int finished = 0; finished < 100; ++finished) {
    const int percent = static_cast<int>(finished / 100.0 * 100);
    EXPECT_THAT(lines[static_cast<std::size_t>(finished)],
                testing::StartsWith(std::to_string(percent) + "%  "));
  }
  EXPECT_THAT(lines[29], testing::StartsWith("28%  "));
}

TEST_P(Progress, fractions_never_decrease_and_go_from_zero_to_one) {
  const TempTree tree(R"(
    folder-#/ x5
      inner-#/ x3
        file-## 4K x20
    .Trash/
    link -> nowhere
    file-# 4K x7
    Tool.app/
      film 1M
  )");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  const auto fractions = record.fractions();
  EXPECT_EQ(fractions.front(), 0);
  EXPECT_EQ(fractions.back(), 1);
  EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
  EXPECT_THAT(fractions, Each(testing::AllOf(testing::Ge(0), testing::Le(1))));
  EXPECT_EQ(record.events().back(), line("Building map…"));
  EXPECT_EQ(record.events()[record.events().size() - 2], fraction(1));
}

TEST_P(Progress, names_are_reported_unchanged) {
  const TempTree tree("\\xff\\n%d\\s/");
  ScanRecord record;
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_EQ(record.lines().front(), "0%  \xff\n%d ");
}

TEST_P(Progress, callbacks_run_on_the_calling_thread) {
  const TempTree tree(R"(
    folder-##/ x40
      inner-##/ x10
        file-# 4K x4
  )");
  bool elsewhere = true;
  std::size_t polls = 0;
  std::thread worker([&] {
    ScanRecord record;
    GetParam().scan(tree.path(), record.callbacks());
    elsewhere = record.wasCalledElsewhere();
    polls = record.polls();
  });
  worker.join();
  EXPECT_FALSE(elsewhere);
  EXPECT_EQ(polls, 40U + 400U + 1600U + 1U);
}

TEST_P(Progress, each_callback_may_be_missing) {
  const TempTree tree(R"(
    only/
      film 1M
  )");
  const DiskNode expected = scan(tree.path());
  ScanRecord record;
  const DiskScanner::Callbacks all = record.callbacks();
  EXPECT_EQ(GetParam().scan(tree.path(), {all.progress, {}, {}}), expected);
  EXPECT_EQ(GetParam().scan(tree.path(), {{}, all.percent, {}}), expected);
  EXPECT_EQ(GetParam().scan(tree.path(), {{}, {}, all.isCancelled}), expected);
}

}  // namespace
}  // namespace tessaly
