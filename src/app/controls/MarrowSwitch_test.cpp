#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

class MarrowSwitch : public testing::Test {
 protected:
  void click() { QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center()); }
  double knob() const { return scene_.read("knob", "x").toDouble(); }

  ControlScene scene_{
      "MarrowSwitch { width: 200; on: false; text: \"Videos\"; symbol: \"video\"; symbolSize: 11\n"
      "symbolWidth: 14 }"};
};

TEST_F(MarrowSwitch, a_switch_shows_whether_it_is_on) {
  expectProperties(scene_, {{"track", "color", "#ffffff at 0.14"},
                            {"symbol", "width", 14},
                            {"label", "text", "Videos"},
                            {"label", "x", 22}});
  const double off = knob();
  scene_.control()->setProperty("on", true);
  expectProperties(scene_, {{"track", "color", "#007aff at 1.00"}});
  EXPECT_GT(knob(), off);
}

TEST_F(MarrowSwitch, a_switch_requests_a_change_and_does_not_change_by_itself) {
  scene_.activate();
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  const double off = knob();
  click();
  EXPECT_FALSE(scene_.read("", "checked").toBool());
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  QTest::keyClick(&scene_.view(), Qt::Key_Space);
  QTest::keyClick(&scene_.view(), Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 3);
  EXPECT_EQ(knob(), off);
  EXPECT_FALSE(scene_.read("", "checked").toBool());
}

TEST_F(MarrowSwitch, a_switch_is_an_accessible_check_box) {
  QAccessible::setActive(true);
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(scene_.control());
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->role(), QAccessible::CheckBox);
  EXPECT_EQ(interface->text(QAccessible::Name), "Videos");
  EXPECT_FALSE(interface->state().checked);
  scene_.control()->setProperty("on", true);
  EXPECT_TRUE(interface->state().checked);
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  interface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(clicked.count(), 1);
  EXPECT_TRUE(interface->state().checked);
}

TEST_F(MarrowSwitch, a_label_of_a_switch_that_is_too_long_is_elided) {
  scene_.control()->setProperty("text", QString(80, 'w'));
  scene_.picture();
  EXPECT_TRUE(scene_.read("label", "truncated").toBool());
  EXPECT_LE(scene_.find("label")->x() + scene_.find("label")->width(), scene_.find("track")->x());
}

}  // namespace
}  // namespace tessaly
