#include "session/MarrowPrefs.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/MemorySettings.h"

namespace tessaly {
namespace {

TEST(MarrowPrefs, show_the_window_and_alert_at_first) {
  MemorySettings settings;
  const MarrowPrefs prefs(settings);
  EXPECT_FALSE(prefs.startHidden());
  EXPECT_TRUE(prefs.diskAlerts());
}

TEST(MarrowPrefs, take_their_defaults_where_something_else_than_a_boolean_is_stored) {
  MemorySettings settings;
  settings.setText("marrow.startHidden", "true");
  settings.setText("marrow.diskAlerts", "false");
  const MarrowPrefs prefs(settings);
  EXPECT_FALSE(prefs.startHidden());
  EXPECT_TRUE(prefs.diskAlerts());
}

TEST(MarrowPrefs, are_there_again_at_the_next_start) {
  MemorySettings settings;
  {
    MarrowPrefs prefs(settings);
    prefs.setStartHidden(true);
    prefs.setDiskAlerts(false);
  }
  EXPECT_EQ(settings.boolean("marrow.startHidden"), true);
  EXPECT_EQ(settings.boolean("marrow.diskAlerts"), false);
  const MarrowPrefs again(settings);
  EXPECT_TRUE(again.startHidden());
  EXPECT_FALSE(again.diskAlerts());
}

TEST(MarrowPrefs, are_read_once) {
  MemorySettings settings;
  const MarrowPrefs prefs(settings);
  settings.setBoolean("marrow.diskAlerts", false);
  EXPECT_TRUE(prefs.diskAlerts());
}

TEST(MarrowPrefs, tell_of_a_change_and_of_nothing_else) {
  MemorySettings settings;
  MarrowPrefs prefs(settings);
  const QSignalSpy hidden(&prefs, &MarrowPrefs::startHiddenChanged);
  const QSignalSpy alerts(&prefs, &MarrowPrefs::diskAlertsChanged);
  prefs.setStartHidden(false);
  prefs.setDiskAlerts(true);
  EXPECT_EQ(hidden.count(), 0);
  EXPECT_EQ(alerts.count(), 0);
  EXPECT_EQ(settings.boolean("marrow.startHidden"), std::nullopt);
  prefs.setStartHidden(true);
  prefs.setDiskAlerts(false);
  EXPECT_EQ(hidden.count(), 1);
  EXPECT_EQ(alerts.count(), 1);
}

}  // namespace
}  // namespace tessaly
