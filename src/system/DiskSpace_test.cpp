#include "system/DiskSpace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "system/Testdata_test.h"

namespace tessaly {
namespace {

using ::testing::ElementsAre;

constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
const DiskUsage unknown;

// A tool that prints `text` and records how it was called.
class Tool {
 public:
  explicit Tool(std::string text) : text_(std::move(text)) {}

  Shell::Run run() {
    return [this](const std::string& calledPath, const std::vector<std::string>& calledArgs,
                  double calledTimeout) {
      path = calledPath;
      args = calledArgs;
      timeout = calledTimeout;
      ++calls;
      return text_;
    };
  }

  std::string path;
  std::vector<std::string> args;
  double timeout = 0;  // seconds
  int calls = 0;

 private:
  std::string text_;
};

std::string failingRun(const std::string& /*path*/, const std::vector<std::string>& /*args*/,
                       double /*timeout*/) {
  throw std::runtime_error("no such tool");
}

std::string oddlyFailingRun(const std::string& /*path*/, const std::vector<std::string>& /*args*/,
                            double /*timeout*/) {
  throw 7;  // NOLINT: what a run throws is not ours to choose
}

TEST(DiskSpaceVolumeUsage, free_space_is_the_figure_for_important_usage_if_there_is_one) {
  const std::optional<DiskUsage> usage =
      DiskSpace::volumeUsage({.total = 1000,
                              .available = 200,
                              .availableForImportantUsage = 300,
                              .availableForOpportunisticUsage = 250});
  EXPECT_EQ(
      usage,
      (DiskUsage{.total = 1000, .used = 700, .free = 300, .usedPercent = 70.0, .purgeable = 50}));
}

TEST(DiskSpaceVolumeUsage, free_space_falls_back_to_the_available_figure_without_purgeable_space) {
  EXPECT_EQ(
      DiskSpace::volumeUsage({.total = 1000,
                              .available = 200,
                              .availableForImportantUsage = {},
                              .availableForOpportunisticUsage = 150}),
      (DiskUsage{.total = 1000, .used = 800, .free = 200, .usedPercent = 80.0, .purgeable = 0}));
}

TEST(DiskSpaceVolumeUsage, a_volume_without_a_free_figure_counts_as_full) {
  EXPECT_EQ(DiskSpace::volumeUsage({.total = 8,
                                    .available = {},
                                    .availableForImportantUsage = {},
                                    .availableForOpportunisticUsage = {}}),
            (DiskUsage{.total = 8, .used = 8, .free = 0, .usedPercent = 100.0, .purgeable = 0}));
}

TEST(DiskSpaceVolumeUsage, an_absent_opportunistic_figure_is_what_is_available) {
  const auto purgeable = [](std::optional<std::int64_t> available,
                            std::optional<std::int64_t> opportunistic) {
    return DiskSpace::volumeUsage({.total = 1000,
                                   .available = available,
                                   .availableForImportantUsage = 300,
                                   .availableForOpportunisticUsage = opportunistic})
        ->purgeable;
  };
  EXPECT_EQ(purgeable(200, {}), 100);
  EXPECT_EQ(purgeable({}, {}), 300);
  EXPECT_EQ(purgeable({}, 299), 1);
}

TEST(DiskSpaceVolumeUsage, figures_are_never_below_zero) {
  EXPECT_EQ(
      DiskSpace::volumeUsage({.total = 1000,
                              .available = 500,
                              .availableForImportantUsage = 1200,
                              .availableForOpportunisticUsage = 1300}),
      (DiskUsage{.total = 1000, .used = 0, .free = 1200, .usedPercent = 0.0, .purgeable = 0}));
  EXPECT_EQ(
      DiskSpace::volumeUsage({.total = 1000,
                              .available = -10,
                              .availableForImportantUsage = {},
                              .availableForOpportunisticUsage = {}}),
      (DiskUsage{.total = 1000, .used = 1010, .free = 0, .usedPercent = 101.0, .purgeable = 0}));
}

TEST(DiskSpaceVolumeUsage, a_volume_without_a_size_has_no_usage) {
  for (const std::optional<std::int64_t> total :
       {std::optional<std::int64_t>(), std::optional<std::int64_t>(0),
        std::optional<std::int64_t>(-1)}) {
    EXPECT_EQ(DiskSpace::volumeUsage({.total = total,
                                      .available = 5,
                                      .availableForImportantUsage = 5,
                                      .availableForOpportunisticUsage = 5}),
              std::nullopt);
  }
  EXPECT_TRUE(DiskSpace::volumeUsage({.total = 1,
                                      .available = {},
                                      .availableForImportantUsage = {},
                                      .availableForOpportunisticUsage = {}}));
}

TEST(DiskSpaceVolumeUsage, a_volume_whose_figures_overflow_has_no_usage) {
  EXPECT_EQ(DiskSpace::volumeUsage({.total = 2,
                                    .available = {},
                                    .availableForImportantUsage = least,
                                    .availableForOpportunisticUsage = 0}),
            std::nullopt);
  EXPECT_EQ(DiskSpace::volumeUsage({.total = 2,
                                    .available = {},
                                    .availableForImportantUsage = greatest,
                                    .availableForOpportunisticUsage = -1}),
            std::nullopt);
}

TEST(DiskSpaceVolumeUsage, the_usage_of_this_machine_agrees_with_its_capacity) {
  const Result<VolumeCapacity> before = volumeCapacity("/");
  const std::optional<DiskUsage> usage = DiskSpace::volumeUsage();
  ASSERT_TRUE(before);
  ASSERT_TRUE(usage);
  EXPECT_EQ(usage->total, before.value().total);
  EXPECT_EQ(usage->used + usage->free, usage->total);
  EXPECT_GE(usage->usedPercent, 0.0);
  EXPECT_LE(usage->usedPercent, 100.0);
}

TEST(DiskSpaceParse, the_last_line_is_read) {
  EXPECT_EQ(
      DiskSpace::parse("Filesystem 1024-blocks Used Available Capacity Mounted on\n"
                       "/dev/disk1 1 2 3 4% /old\n"
                       "/dev/disk3s1 100 60 40 60% /\n"),
      (DiskUsage{
          .total = 102400, .used = 61440, .free = 40960, .usedPercent = 60.0, .purgeable = 0}));
}

TEST(DiskSpaceParse, a_row_needs_five_words) {
  EXPECT_EQ(DiskSpace::parse("d 100 60 40 60%").total, 102400);
  EXPECT_EQ(DiskSpace::parse("d 100 60 40"), unknown);
}

TEST(DiskSpaceParse, an_empty_text_has_an_unknown_usage) {
  EXPECT_EQ(DiskSpace::parse(""), unknown);
  EXPECT_EQ(DiskSpace::parse("\n\r\n"), unknown);
}

TEST(DiskSpaceParse, a_header_alone_has_an_unknown_usage) {
  EXPECT_EQ(DiskSpace::parse("Filesystem 1024-blocks Used Available Capacity Mounted on\n"),
            unknown);
  EXPECT_EQ(DiskSpace::parse("FILESYSTEM 100 60 40 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("Dateisystem 1K-Blöcke Benutzt Verfügbar Verw% Eingehängt auf\n"),
            unknown);
}

TEST(DiskSpaceParse, headers_at_the_end_are_passed_over) {
  EXPECT_EQ(DiskSpace::parse("d 100 60 40 60% /\nFilesystem 1 2 3 4% /\nfilesystem").total, 102400);
}

TEST(DiskSpaceParse, a_blank_last_line_counts_as_the_last_line) {
  EXPECT_EQ(DiskSpace::parse("d 100 60 40 60% /\n \n"), unknown);
}

TEST(DiskSpaceParse, one_unreadable_size_makes_all_values_unknown) {
  EXPECT_EQ(DiskSpace::parse("d x 60 40 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("d 100 x 40 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("d 100 60 x 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("d - - - - /"), unknown);
}

TEST(DiskSpaceParse, overflowing_sizes_make_all_values_unknown) {
  EXPECT_EQ(DiskSpace::parse("d 9007199254740992 60 40 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("d 100 9007199254740992 40 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("d 100 60 9223372036854775808 60% /"), unknown);
  EXPECT_EQ(DiskSpace::parse("d 9007199254740991 60 40 60% /").total, 9223372036854774784);
}

TEST(DiskSpaceParse, a_percentage_that_cannot_be_read_is_zero) {
  for (const char* text : {"-", "%", "full", "nan%", "inf"}) {
    const DiskUsage usage = DiskSpace::parse("d 100 60 40 " + std::string(text) + " /");
    EXPECT_EQ(usage.usedPercent, 0.0) << text;
    EXPECT_EQ(usage.total, 102400) << text;
  }
}

TEST(DiskSpaceParse, the_output_of_df_on_both_systems_is_read) {
  EXPECT_EQ(DiskSpace::parse(testdata("df/macos-root.txt")), (DiskUsage{.total = 482797652LL * 1024,
                                                                        .used = 10221464LL * 1024,
                                                                        .free = 187044336LL * 1024,
                                                                        .usedPercent = 6.0,
                                                                        .purgeable = 0}));
  const DiskUsage onLinux = DiskSpace::parse(testdata("df/linux-root.txt"));
  EXPECT_EQ(onLinux.total, 264212084LL * 1024);
  EXPECT_GT(onLinux.used, 35000000LL * 1024);
  EXPECT_GT(onLinux.free, 65000000LL * 1024);
  EXPECT_EQ(onLinux.usedPercent, 36.0);
}

TEST(DiskSpaceParse, a_row_below_a_header_in_another_language_is_read) {
  EXPECT_EQ(DiskSpace::parse(testdata("df/linux-german-root.txt")).total, 264212084LL * 1024);
}

TEST(DiskSpaceParse, a_row_broken_after_its_device_is_not_read) {
  EXPECT_EQ(DiskSpace::parse(testdata("df/wrapped-root.txt")), unknown);
}

TEST(DiskSpaceParse, a_text_cut_at_any_byte_has_an_unknown_usage_or_that_of_its_row) {
  const std::string text = testdata("df/linux-root.txt");
  const std::size_t complete = text.find('%', text.find("/dev/"));
  ASSERT_NE(complete, std::string::npos);
  const DiskUsage whole = DiskSpace::parse(text);
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const DiskUsage cut = DiskSpace::parse(std::string_view(text).substr(0, length));
    if (cut == unknown) {
      EXPECT_LT(length, complete) << length;
    } else if (length >= complete) {
      EXPECT_EQ(cut, whole) << length;
    } else {
      // Cut inside the percentage.
      EXPECT_EQ(cut.free, whole.free) << length;
      EXPECT_LT(cut.usedPercent, whole.usedPercent) << length;
    }
  }
}

TEST(DiskSpaceParse, garbage_has_an_unknown_usage) {
  const std::string garbage = testdata("df/garbage.bin");
  ASSERT_FALSE(garbage.empty());
  EXPECT_EQ(DiskSpace::parse(garbage), unknown);
}

TEST(DiskSpaceUsage, the_file_system_is_asked_before_any_text_is_read) {
  const DiskUsage told = {.total = 5, .used = 3, .free = 2, .usedPercent = 60, .purgeable = 0};
  Tool df("d 100 60 40 60% /");
  EXPECT_EQ(DiskSpace::usage(told, "d 7 7 7 7% /", df.run()), told);
  EXPECT_EQ(DiskSpace::usage(told, std::nullopt, df.run()), told);
  EXPECT_EQ(df.calls, 0);
}

TEST(DiskSpaceUsage, a_given_text_replaces_the_output_of_df) {
  Tool df("d 100 60 40 60% /");
  EXPECT_EQ(DiskSpace::usage(std::nullopt, "d 7 7 7 7% /", df.run()).total, 7168);
  EXPECT_EQ(DiskSpace::usage(std::nullopt, "", df.run()), unknown);
  EXPECT_EQ(df.calls, 0);
}

TEST(DiskSpaceUsage, df_is_started_if_there_is_no_other_source) {
  Tool df("d 100 60 40 60% /");
  EXPECT_EQ(DiskSpace::usage(std::nullopt, std::nullopt, df.run()).total, 102400);
  EXPECT_EQ(df.path, "/bin/df");
  EXPECT_THAT(df.args, ElementsAre("-k", "/"));
  EXPECT_EQ(df.timeout, 5);
  EXPECT_EQ(df.calls, 1);
}

TEST(DiskSpaceUsage, the_usage_is_unknown_if_df_fails) {
  EXPECT_EQ(DiskSpace::usage(std::nullopt, std::nullopt, failingRun), unknown);
  EXPECT_EQ(DiskSpace::usage(std::nullopt, std::nullopt, oddlyFailingRun), unknown);
}

TEST(DiskSpaceUsage, the_usage_of_this_machine_needs_no_tool) {
  EXPECT_GT(DiskSpace::usage("", failingRun).total, 0);
}

TEST(DiskSpaceUsage, df_and_the_file_system_agree_on_the_size_of_this_machine) {
  const std::optional<DiskUsage> told = DiskSpace::volumeUsage();
  const DiskUsage printed = DiskSpace::usage(std::nullopt, std::nullopt, {});
  ASSERT_TRUE(told);
  // df rounds up to whole kibibytes.
  EXPECT_EQ(printed.total, (told->total + 1023) / 1024 * 1024);
  EXPECT_GT(printed.used, 0);
  EXPECT_LE(printed.used + printed.free, printed.total);
  EXPECT_GT(printed.usedPercent, 0.0);
  EXPECT_LE(printed.usedPercent, 100.0);
}

TEST(DiskSpaceUsage, df_and_the_file_system_agree_on_a_volume_without_writes) {
  // /dev is a volume of its own, in which no file grows.
  const Result<VolumeCapacity> capacity = volumeCapacity("/dev");
  ASSERT_TRUE(capacity);
  const std::optional<DiskUsage> told = DiskSpace::volumeUsage(capacity.value());
  ASSERT_TRUE(told);
  const DiskUsage printed = DiskSpace::parse(Shell::run("/bin/df", {"-k", "/dev"}, 5));
  EXPECT_EQ(printed.total, told->total);
  EXPECT_EQ(printed.free, told->free);
  EXPECT_EQ(printed.used, told->used);
}

TEST(DiskSpaceTrash, the_trash_is_counted_by_osascript) {
  Tool osascript(testdata("osascript/count.txt"));
  EXPECT_EQ(DiskSpace::trashCount(osascript.run()), 17);
  EXPECT_EQ(osascript.path, "/usr/bin/osascript");
  EXPECT_THAT(osascript.args,
              ElementsAre("-e", "tell application \"Finder\" to count items of trash"));
  EXPECT_EQ(osascript.timeout, 6);
}

TEST(DiskSpaceTrash, only_a_number_between_white_space_is_read_as_a_count) {
  const auto count = [](const std::string& text) {
    return DiskSpace::trashCount(Tool(text).run());
  };
  EXPECT_EQ(count(" \r\n 3\u2028\t"), 3);
  EXPECT_EQ(count("+3"), 3);
  EXPECT_EQ(count("-3"), -3);
  EXPECT_EQ(count(""), 0);
  EXPECT_EQ(count("3 items"), 0);
  EXPECT_EQ(count("3.0"), 0);
  EXPECT_EQ(count("\"3\""), 0);
  EXPECT_EQ(count("missing value\n"), 0);
  EXPECT_EQ(count("9223372036854775808"), 0);
}

TEST(DiskSpaceTrash, a_tool_that_fails_counts_0_and_does_not_throw) {
  EXPECT_EQ(DiskSpace::trashCount(failingRun), 0);
  EXPECT_NO_THROW(DiskSpace::emptyTrash(failingRun));
  EXPECT_NO_THROW(DiskSpace::emptyTrash(oddlyFailingRun));
}

TEST(DiskSpaceTrash, emptying_continues_if_the_tool_still_runs_after_the_wait) {
  using DiskSpace::TrashEmptying;
  const auto emptying = [](const Shell::Run& run) { return DiskSpace::emptyTrash(run); };
  EXPECT_EQ(emptying([](const auto& path, const auto&, double) -> std::string {
              return Shell::run("/bin/sleep", {"1000"}, 0, std::nullopt) + path;
            }),
            TrashEmptying::goesOn);
  EXPECT_EQ(emptying([](const auto&, const auto&, double) -> std::string {
              return Shell::run("/nowhere/osascript", {}, 30);
            }),
            TrashEmptying::ended);
  EXPECT_EQ(emptying(failingRun), TrashEmptying::ended);
  EXPECT_EQ(emptying(oddlyFailingRun), TrashEmptying::ended);
  EXPECT_EQ(emptying(Tool("").run()), TrashEmptying::ended);
}

TEST(DiskSpaceTrash, the_trash_is_emptied_by_osascript) {
  Tool osascript("");
  DiskSpace::emptyTrash(osascript.run());
  EXPECT_EQ(osascript.path, "/usr/bin/osascript");
  EXPECT_THAT(osascript.args, ElementsAre("-e", "tell application \"Finder\" to empty trash"));
  EXPECT_EQ(osascript.timeout, 30);
  EXPECT_EQ(osascript.calls, 1);
}

}  // namespace
}  // namespace tessaly
