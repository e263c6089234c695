#include "session/DiskAlert.h"

#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "support/FakeNotificationCenter.h"
#include "support/MemorySettings.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;

class DiskAlertTest : public testing::Test {
 protected:
  void check(double percent, std::chrono::hours later = 0h) {
    DiskAlert::check(percent, prefs_, settings_, notifications_, noon_ + later);
  }

  MemorySettings settings_;
  MarrowPrefs prefs_{settings_};
  FakeNotificationCenter notifications_;
  // 2026-03-01, 12:00 in the local time zone.
  std::chrono::system_clock::time_point noon_ = [] {
    std::tm parts{};
    parts.tm_year = 126;
    parts.tm_mon = 2;
    parts.tm_mday = 1;
    parts.tm_hour = 12;
    parts.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&parts));
  }();
};

TEST_F(DiskAlertTest, no_warning_is_posted_below_90_percent) {
  check(89.9);
  check(0);
  check(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(notifications_.posted.empty());
  EXPECT_EQ(notifications_.authorizationRequests, 0);
  EXPECT_EQ(settings_.text("marrow.diskAlert.lastDay"), std::nullopt);
}

TEST_F(DiskAlertTest, a_warning_is_posted_at_90_percent) {
  check(90.0);
  ASSERT_EQ(notifications_.posted.size(), 1U);
  EXPECT_EQ(notifications_.authorizationRequests, 1);
  EXPECT_EQ(notifications_.posted.front(),
            (NotificationCenter::Notification{
                .identifier = "marrow.disk.pressure",
                .title = "Disk almost full",
                .body = "This computer is 90% full. Open Tessaly to reclaim space.",
                .hasSound = true}));
  EXPECT_EQ(settings_.text("marrow.diskAlert.lastDay"), "2026-03-01");
}

TEST_F(DiskAlertTest, the_percentage_rounds_half_to_even) {
  check(92.5);
  check(93.5, 24h);
  ASSERT_EQ(notifications_.posted.size(), 2U);
  EXPECT_EQ(notifications_.posted[0].body,
            "This computer is 92% full. Open Tessaly to reclaim space.");
  EXPECT_EQ(notifications_.posted[1].body,
            "This computer is 94% full. Open Tessaly to reclaim space.");
}

TEST_F(DiskAlertTest, at_most_one_warning_is_posted_per_day) {
  check(95);
  check(99);
  check(95, 11h);
  EXPECT_EQ(notifications_.posted.size(), 1U);
  check(95, 24h);
  EXPECT_EQ(notifications_.posted.size(), 2U);
  EXPECT_EQ(settings_.text("marrow.diskAlert.lastDay"), "2026-03-02");
}

TEST_F(DiskAlertTest, a_day_begins_at_local_midnight) {
  check(95, 11h);
  check(95, 13h);
  EXPECT_EQ(notifications_.posted.size(), 2U);
}

TEST_F(DiskAlertTest, alerts_switched_off_leave_the_stored_day_unchanged) {
  prefs_.setDiskAlerts(false);
  check(99);
  EXPECT_TRUE(notifications_.posted.empty());
  EXPECT_EQ(settings_.text("marrow.diskAlert.lastDay"), std::nullopt);
}

TEST_F(DiskAlertTest, a_stored_day_in_another_format_does_not_suppress_the_warning) {
  settings_.setBoolean("marrow.diskAlert.lastDay", true);
  check(95);
  EXPECT_EQ(notifications_.posted.size(), 1U);
}

// Checks whether the day is stored when the notification is posted.
TEST_F(DiskAlertTest, the_day_is_stored_before_the_notification_is_posted) {
  struct Watching final : NotificationCenter {
    explicit Watching(SettingsStore& store) : settings(store) {}
    void requestAuthorization() override { atRequest = settings.text("marrow.diskAlert.lastDay"); }
    void post(const Notification&) override {}
    SettingsStore& settings;
    std::optional<std::string> atRequest;
  } watching(settings_);
  DiskAlert::check(95, prefs_, settings_, watching, noon_);
  EXPECT_EQ(watching.atRequest, "2026-03-01");
}

}  // namespace
}  // namespace tessaly
