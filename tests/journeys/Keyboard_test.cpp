// The whole window operated by the keyboard alone, and as assistive tools see it.
#include <gtest/gtest.h>
#include <set>

#include <QAccessible>
#include <QTest>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class Keyboard : public Journey {
 protected:
  Keyboard()
      : Journey(
            "Movies/\n"
            "  2023/\n"
            "    beach.mp4 6M\n"
            "notes.txt 2M\n") {
    session().scanHome();
    finishScan();
    session().open(session().navigation().current()->children()[0]);
    session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
    settle(window());
  }

  // The items that Tab reaches, until it returns to the first one.
  std::vector<QQuickItem*> stops() {
    std::vector<QQuickItem*> all;
    std::set<QQuickItem*> seen;
    for (int i = 0; i < 300; ++i) {
      press(Qt::Key_Tab);
      QQuickItem* const stop = window().activeFocusItem();
      if (stop == nullptr || !seen.insert(stop).second) break;
      all.push_back(stop);
    }
    return all;
  }

  static std::string nameOf(QQuickItem* stop) {
    return stop->objectName().toStdString() + " of " + stop->metaObject()->className();
  }
};

TEST_F(Keyboard, tab_reaches_every_control_of_the_window) {
  QStringList names;
  for (const QQuickItem* stop : stops()) names << stop->objectName();
  for (const char* name :
       {"closeWindow", "minimiseWindow", "zoomWindow",   "back",           "searchField",
        "showMap",     "showApps",       "showPulse",    "openAssistant",  "openInbox",
        "openMenu",    "chip",           "scanFullMac",  "scanHome",       "chooseFolder",
        "diskTreemap", "systemPulse",    "appLeftovers", "emptyTrash",     "pathLabel",
        "star",        "addExclude",     "highlight",    "skip",           "rescanVolume",
        "treemapMode", "listMode",       "grewMode",     "duplicatesMode", "compareMode",
        "largestMode", "clonesMode",     "historyMode",  "safeMode",       "heatmap",
        "watch",       "queueSelection", "zipSelection", "clearSelection", "canvas"}) {
    EXPECT_TRUE(names.contains(QLatin1String(name))) << name << " is not reached";
  }
}

TEST_F(Keyboard, each_stop_of_tab_has_an_accessible_name_and_action) {
  for (QQuickItem* stop : stops()) {
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(stop);
    ASSERT_NE(told, nullptr) << nameOf(stop);
    EXPECT_NE(told->text(QAccessible::Name), QString()) << nameOf(stop);
    EXPECT_TRUE(told->state().focusable) << nameOf(stop);
    EXPECT_FALSE(told->state().invisible) << nameOf(stop);
    EXPECT_NE(told->role(), QAccessible::NoRole) << nameOf(stop);
  }
}

TEST_F(Keyboard, each_stop_of_tab_shows_a_focus_ring) {
  for (QQuickItem* stop : stops()) {
    settle(window());
    stop->forceActiveFocus(Qt::TabFocusReason);
    settle(window());
    // The map highlights its focused tile instead.
    bool hasRing = stop->objectName() == QLatin1String("canvas") && shows("mapTooltip");
    for (QQuickItem* ring : itemsNamed(stop, QStringLiteral("focusRing"))) {
      hasRing = hasRing || ring->isVisible();
    }
    EXPECT_TRUE(hasRing) << nameOf(stop);
  }
}

TEST_F(Keyboard, the_window_can_be_operated_by_keys) {
  tabTo("showApps");
  press(Qt::Key_Return);
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
  press(Qt::Key_Escape);
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  tabTo("heatmap");
  press(Qt::Key_Return);
  EXPECT_TRUE(session().shown().heatmap());
  tabTo("queueSelection");
  press(Qt::Key_Return);
  EXPECT_EQ(session().cleanupQueue().queue().size(), 1U);
  press(Qt::Key_Escape);
  tabTo("openAssistant");
  press(Qt::Key_Return);
  EXPECT_TRUE(session().shown().aiOpen());
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().aiOpen());
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("openAssistant"));
  tabTo("back");
  press(Qt::Key_Return);
  EXPECT_EQ(session().navigation().stack().size(), 1U);
  tabTo("rescanVolume");
  press(Qt::Key_Return);
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Keyboard, the_focus_moves_on_when_its_item_disappears) {
  tabTo("back");
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("back"));
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("searchField"));
  session().open(session().navigation().current()->children()[0]);
  tabTo("chip");
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("chip"));
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("scanFullMac"));
  tabTo("scanHome");
  press(Qt::Key_Return);
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("cancelScan"));
  finishScan();
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("diskTreemap"));
  tabTo("rescanVolume");
  press(Qt::Key_Return);
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("treemapMode"));
}

}  // namespace
}  // namespace tessaly
