#include "session/MarrowPrefs.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/MemorySettings.h"

namespace tessaly {
namespace {

TEST(MarrowPrefs, window_and_alerts_are_on_by_default) {
  MemorySettings settings;
  const MarrowPrefs prefs(settings);
  EXPECT_FALSE(prefs.startHidden());
  EXPECT_TRUE(prefs.diskAlerts());
}

TEST(MarrowPrefs, stored_values_that_are_not_boolean_count_as_the_default) {
  MemorySettings settings;
  settings.setText("marrow.startHidden", "true");
  settings.setText("marrow.diskAlerts", "false");
  const MarrowPrefs prefs(settings);
  EXPECT_FALSE(prefs.startHidden());
  EXPECT_TRUE(prefs.diskAlerts());
}

TEST(MarrowPrefs, preferences_survive_a_restart) {
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

TEST(MarrowPrefs, preferences_are_read_once) {
  MemorySettings settings;
  const MarrowPrefs prefs(settings);
  settings.setBoolean("marrow.diskAlerts", false);
  EXPECT_TRUE(prefs.diskAlerts());
}

TEST(MarrowPrefs, only_changes_are_announced) {
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
