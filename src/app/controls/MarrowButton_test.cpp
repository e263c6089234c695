#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

// The behaviour of all buttons, whatever their style.
class MarrowButton : public testing::TestWithParam<const char*> {
 protected:
  MarrowButton() : scene_(QString::fromLatin1(GetParam())) {}
  ControlScene scene_;
};

TEST_P(MarrowButton, the_mouse_clicks_a_button) {
  scene_.activate();
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center());
  EXPECT_EQ(clicked.count(), 1);
}

TEST_P(MarrowButton, tab_reaches_a_button_and_shows_its_focus_ring) {
  scene_.activate();
  EXPECT_FALSE(scene_.find("focusRing")->isVisible());
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  EXPECT_TRUE(scene_.control()->hasActiveFocus());
  EXPECT_TRUE(scene_.find("focusRing")->isVisible());
  // The ring is outside the control, so it is visible with any colour of the control.
  EXPECT_GT(scene_.pixel(scene_.control()->width() / 2, -2).blue(), 0xC0);
}

TEST_P(MarrowButton, a_click_shows_no_focus_ring) {
  scene_.activate();
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center());
  EXPECT_FALSE(scene_.find("focusRing")->isVisible());
}

TEST_P(MarrowButton, space_and_return_press_a_button) {
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

TEST_P(MarrowButton, space_with_modifiers_is_left_to_the_commands) {
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

TEST_P(MarrowButton, a_disabled_button_does_nothing) {
  scene_.activate();
  QTest::keyClick(&scene_.view(), Qt::Key_Tab);
  const QSignalSpy clicked(scene_.control(), SIGNAL(clicked()));
  scene_.control()->setEnabled(false);
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, scene_.center());
  QTest::keyClick(&scene_.view(), Qt::Key_Space);
  QTest::keyClick(&scene_.view(), Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_P(MarrowButton, a_button_has_an_accessible_name_and_press_action) {
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

TEST_P(MarrowButton, a_button_shows_its_text_as_plain_text) {
  scene_.control()->setProperty("text", "<b>a</b> & b");
  expectProperties(scene_,
                   {{"label", "text", "<b>a</b> & b"}, {"label", "textFormat", Qt::PlainText}});
}

TEST_P(MarrowButton, a_button_without_a_symbol_has_no_space_for_it) {
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

TEST(MarrowPillForAssistiveTools, a_pill_is_accessible_as_checked_if_it_is_active) {
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
