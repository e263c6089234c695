#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

// What all buttons of the program share, whatever their style.
class MarrowButton : public testing::TestWithParam<const char*> {
 protected:
  MarrowButton() : scene_(QString::fromLatin1(GetParam())) {}
  ControlScene scene_;
};

TEST_P(MarrowButton, is_clicked_by_the_mouse) {
  scene_.activate();
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center());
  EXPECT_EQ(clicked.count(), 1);
}

TEST_P(MarrowButton, is_reached_by_tab_and_shows_it) {
  scene_.activate();
  EXPECT_FALSE(scene_.find("focusRing")->isVisible());
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  EXPECT_TRUE(scene_.control()->hasActiveFocus());
  EXPECT_TRUE(scene_.find("focusRing")->isVisible());
  // The ring lies outside the control, so it is seen on a control of any colour.
  EXPECT_GT(scene_.pixel(scene_.control()->width() / 2, -2).blue(), 0xC0);
}

TEST_P(MarrowButton, does_not_show_the_ring_for_a_click) {
  scene_.activate();
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center());
  EXPECT_FALSE(scene_.find("focusRing")->isVisible());
}

TEST_P(MarrowButton, is_pressed_by_space_and_by_return) {
  scene_.activate();
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  QTest::keyClick(&scene_.view(), Qt::Key_Space);
  EXPECT_EQ(clicked.count(), 1);
  QTest::keyClick(&scene_.view(), Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 2);
  QTest::keyClick(&scene_.view(), Qt::Key_Enter);
  EXPECT_EQ(clicked.count(), 3);
}

TEST_P(MarrowButton, leaves_space_with_other_keys_to_the_commands) {
  scene_.activate();
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  for (const auto modifiers :
       {Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier),
        Qt::KeyboardModifiers(Qt::ControlModifier), Qt::KeyboardModifiers(Qt::AltModifier),
        Qt::KeyboardModifiers(Qt::MetaModifier)})
    QTest::keyClick(&scene_.view(), Qt::Key_Space, modifiers);
  EXPECT_EQ(clicked.count(), 0);
  EXPECT_FALSE(scene_.control()->property("pressed").toBool());
}

TEST_P(MarrowButton, does_nothing_while_disabled) {
  scene_.activate();
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  scene_.control()->setEnabled(false);
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center());
  QTest::keyClick(&scene_.view(), Qt::Key_Space);
  QTest::keyClick(&scene_.view(), Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_P(MarrowButton, tells_assistive_tools_its_name_and_can_be_pressed_by_them) {
  QAccessible::setActive(true);
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(scene_.control());
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->text(QAccessible::Name), "Do it");
  EXPECT_TRUE(interface->role() == QAccessible::Button ||
              interface->role() == QAccessible::CheckBox);
  QAccessibleActionInterface* actions = interface->actionInterface();
  ASSERT_NE(actions, nullptr);
  EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicked.count(), 1);
}

TEST_P(MarrowButton, shows_text_as_it_stands) {
  scene_.control()->setProperty("text", "<b>a</b> & b");
  expectProperties(scene_,
                   {{"label", "text", "<b>a</b> & b"}, {"label", "textFormat", Qt::PlainText}});
}

TEST_P(MarrowButton, takes_no_room_for_a_symbol_it_has_not) {
  const double without = scene_.control()->implicitWidth();
  EXPECT_EQ(scene_.find("symbol")->width(), 0);
  scene_.control()->setProperty("symbol", "plus");
  scene_.picture();  // rows are laid out when a frame is drawn
  EXPECT_EQ(scene_.control()->implicitWidth(), without + scene_.find("symbol")->width() + 6);
}

INSTANTIATE_TEST_SUITE_P(Styles, MarrowButton,
                         testing::Values("MarrowPill { text: \"Do it\"; active: false }",
                                         "MarrowPrimaryButton { text: \"Do it\" }",
                                         "MarrowSecondaryButton { text: \"Do it\" }"));

TEST(MarrowPillForAssistiveTools, says_whether_it_is_the_chosen_one) {
  QAccessible::setActive(true);
  const ControlScene scene("MarrowPill { text: \"Age\"; active: true }");
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(scene.control());
  ASSERT_NE(interface, nullptr);
  EXPECT_TRUE(interface->state().checkable);
  EXPECT_TRUE(interface->state().checked);
  scene.control()->setProperty("active", false);
  EXPECT_FALSE(interface->state().checked);
}

}  // namespace
}  // namespace tessaly
