#include "session/AppDelegate.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "session/DiskAlert.h"
#include "support/FakeNotificationCenter.h"
#include "support/HeldFigures.h"
#include "support/MemorySettings.h"
#include "support/NoTools.h"

namespace tessaly {
namespace {

class AppDelegateTest : public testing::Test {
 protected:
  AppDelegateTest() {
    QObject::connect(&prefs_, &MarrowPrefs::mainWindowWanted, [this] { ++wanted_; });
  }

  AppDelegate delegateFor(const std::optional<DiskUsage>& disk) {
    return AppDelegate({.prefs = prefs_,
                        .notifications = notifications_,
                        .beginWindow = [this](bool hidden) { begun_.push_back(hidden); },
                        .volumeUsage = [disk] { return disk; },
                        .run = noTools});
  }

  MemorySettings settings_;
  MarrowPrefs prefs_{settings_};
  FakeNotificationCenter notifications_;
  std::vector<bool> begun_;
  int wanted_ = 0;
};

DiskUsage full(double percent) {
  return {.total = 1000, .used = 900, .free = 100, .usedPercent = percent, .purgeable = 0};
}

TEST_F(AppDelegateTest, launching_shows_the_window_unless_it_starts_hidden) {
  delegateFor(full(10)).applicationDidFinishLaunching();
  prefs_.setStartHidden(true);
  delegateFor(full(10)).applicationDidFinishLaunching();
  EXPECT_EQ(begun_, (std::vector{false, true}));
  EXPECT_EQ(wanted_, 0);
}

TEST_F(AppDelegateTest, launching_warns_of_a_nearly_full_disk) {
  delegateFor(full(89.9)).applicationDidFinishLaunching();
  EXPECT_TRUE(notifications_.posted.empty());
  delegateFor(full(90)).applicationDidFinishLaunching();
  ASSERT_EQ(notifications_.posted.size(), 1u);
  EXPECT_EQ(notifications_.posted[0].body,
            "This computer is 90% full. Open Tessaly to reclaim space.");
  delegateFor(full(95)).applicationDidFinishLaunching();
  EXPECT_EQ(notifications_.posted.size(), 1u);
}

TEST_F(AppDelegateTest, a_tool_is_asked_if_the_file_system_reports_no_usage) {
  std::vector<std::string> asked;
  AppDelegate delegate({.prefs = prefs_,
                        .notifications = notifications_,
                        .beginWindow = [](bool) {},
                        .volumeUsage = [] { return std::optional<DiskUsage>(); },
                        .run =
                            [&](const std::string& path, const std::vector<std::string>&, double) {
                              asked.push_back(path);
                              return "Filesystem 1024-blocks Used Available Capacity Mounted\n"
                                     "/dev/a 1000 950 50 95% /\n";
                            }});
  delegate.applicationDidFinishLaunching();
  EXPECT_EQ(asked, std::vector<std::string>{"/bin/df"});
  ASSERT_EQ(notifications_.posted.size(), 1u);
}

TEST_F(AppDelegateTest, launching_does_not_wait_for_the_usage_it_warns_of) {
  HeldFigures figures;
  AppDelegate delegate({.prefs = prefs_,
                        .notifications = notifications_,
                        .beginWindow = [this](bool hidden) { begun_.push_back(hidden); },
                        .figures = &figures});
  delegate.applicationDidFinishLaunching();
  EXPECT_EQ(begun_.size(), 1u);
  EXPECT_TRUE(notifications_.posted.empty());
  HeldFigures::answer(figures.disk, full(95));
  EXPECT_EQ(notifications_.posted.size(), 1u);
}

TEST_F(AppDelegateTest, launching_does_not_warn_if_the_usage_is_unknown) {
  delegateFor(std::nullopt).applicationDidFinishLaunching();
  EXPECT_TRUE(notifications_.posted.empty());
}

TEST_F(AppDelegateTest, opening_the_program_again_brings_its_windows_to_the_front) {
  AppDelegate delegate = delegateFor(full(10));
  EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
  EXPECT_EQ(wanted_, 1);
  EXPECT_TRUE(delegate.applicationShouldHandleReopen(true));
  EXPECT_EQ(wanted_, 2);
}

}  // namespace
}  // namespace tessaly
