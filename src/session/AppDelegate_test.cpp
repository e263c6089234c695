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

TEST_F(AppDelegateTest, begins_with_the_window_and_hides_it_where_the_user_wants_that) {
  delegateFor(full(10)).applicationDidFinishLaunching();
  prefs_.setStartHidden(true);
  delegateFor(full(10)).applicationDidFinishLaunching();
  EXPECT_EQ(begun_, (std::vector{false, true}));
  EXPECT_EQ(wanted_, 0);
}

TEST_F(AppDelegateTest, tells_of_a_disk_that_is_nearly_full_at_the_start) {
  delegateFor(full(89.9)).applicationDidFinishLaunching();
  EXPECT_TRUE(notifications_.posted.empty());
  delegateFor(full(90)).applicationDidFinishLaunching();
  ASSERT_EQ(notifications_.posted.size(), 1u);
  EXPECT_EQ(notifications_.posted[0].body,
            "This computer is 90% full. Open Tessaly to reclaim space.");
  delegateFor(full(95)).applicationDidFinishLaunching();
  EXPECT_EQ(notifications_.posted.size(), 1u);
}

TEST_F(AppDelegateTest, asks_a_tool_where_the_file_system_says_nothing) {
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

TEST_F(AppDelegateTest, tells_of_a_full_disk_when_that_is_known_and_waits_for_nothing) {
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

TEST_F(AppDelegateTest, tells_nothing_of_a_disk_that_nobody_knows) {
  delegateFor(std::nullopt).applicationDidFinishLaunching();
  EXPECT_TRUE(notifications_.posted.empty());
}

TEST_F(AppDelegateTest, brings_the_windows_forward_when_it_is_opened_again) {
  AppDelegate delegate = delegateFor(full(10));
  EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
  EXPECT_EQ(wanted_, 1);
  EXPECT_TRUE(delegate.applicationShouldHandleReopen(true));
  EXPECT_EQ(wanted_, 2);
}

}  // namespace
}  // namespace tessaly
