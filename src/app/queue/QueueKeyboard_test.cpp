// The cleanup queue's panel, operated by keyboard.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/queue/QueueScene_test.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class QueueKeyboard : public QueueScene {
 protected:
  void focusOn(const QString& name) {
    item(name)->forceActiveFocus(Qt::TabFocusReason);
    update();
  }
  void queueMany(int count) {
    std::vector<DiskNode> nodes;
    nodes.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) nodes.push_back(file("/data/f" + std::to_string(i), 1));
    session().selection().selectNodes(nodes, false);
    session().queueSelected();
    update();
  }
  // The name in the row with the keyboard focus.
  QString focusedRow() {
    QQuickItem* const row = focused() != nullptr ? focused()->parentItem() : nullptr;
    if (row == nullptr || row->objectName() != "queueRow") return {};
    const QRectF list = rectOf(item("queueList"));
    EXPECT_TRUE(list.contains(rectOf(row))) << "the row is not visible";
    return itemNamed(row, "name")->property("text").toString();
  }
};

TEST_F(QueueKeyboard, tab_visits_every_control_from_top_to_bottom_and_shift_tab_in_reverse) {
  show();
  queueThree();
  focusOn("before");
  std::vector<QQuickItem*> walk;
  for (press(Qt::Key_Tab); focused() != item("after") && walk.size() < 20; press(Qt::Key_Tab)) {
    walk.push_back(focused());
    EXPECT_THAT(itemsNamed(view().contentItem(), "focusRing"), SizeIs(1));
    QAccessibleInterface* const interface = told(focused());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Button);
    EXPECT_TRUE(interface->state().focusable);
    EXPECT_TRUE(interface->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction()));
  }
  QStringList names;
  for (QQuickItem* stop : walk) names << told(stop)->text(QAccessible::Name);
  EXPECT_EQ(names, (QStringList{"Cleanup Queue, 3 items, expanded", "Remove film.mp4 from queue",
                                QStringLiteral("Remove caf\uFFFD\uFFFD.mp3 from queue"),
                                "Remove note from queue", "Clear", "Zip then Trash",
                                QStringLiteral("Move 3 to Trash · 6.0 GB")}));
  std::vector<QQuickItem*> back;
  for (backtab(); focused() != item("before") && back.size() < 20; backtab())
    back.push_back(focused());
  std::reverse(back.begin(), back.end());
  EXPECT_EQ(back, walk);
}

TEST_F(QueueKeyboard, tab_visits_only_the_header_of_a_collapsed_panel) {
  show();
  queueThree();
  session().cleanupQueue().setQueueMinimized(true);
  update();
  focusOn("before");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), item("queueHeader"));
  EXPECT_EQ(told(focused())->text(QAccessible::Name), "Cleanup Queue, 3 items, minimised");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), item("after"));
}

TEST_F(QueueKeyboard, tab_skips_a_hidden_panel) {
  show();
  focusOn("before");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), item("after"));
}

TEST_F(QueueKeyboard, opening_the_panel_does_not_move_the_focus) {
  show();
  focusOn("before");
  queueThree();
  EXPECT_EQ(focused(), item("before"));
  session().cleanupQueue().setQueueMinimized(true);
  queue({file("/data/more", 1)});
  EXPECT_EQ(focused(), item("before"));
}

TEST_F(QueueKeyboard, return_space_and_assistive_tools_collapse_and_expand_the_panel) {
  show();
  queueThree();
  focusOn("queueHeader");
  press(Qt::Key_Return);
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  press(Qt::Key_Space);
  EXPECT_FALSE(session().cleanupQueue().queueMinimized());
  told(focused())->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_EQ(focused(), item("queueHeader"));
}

TEST_F(QueueKeyboard, the_focus_moves_to_the_next_row_when_its_row_is_removed) {
  show();
  queueThree();
  focusOn("queueHeader");
  press(Qt::Key_Tab);
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre("/data/film.mp4", "/data/note"));
  EXPECT_EQ(focusedRow(), "note");
  EXPECT_TRUE(shows("focusRing"));
  press(Qt::Key_Space);
  EXPECT_EQ(focusedRow(), "film.mp4");
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(panel()->isVisible());
}

TEST_F(QueueKeyboard, the_focus_returns_to_the_item_before_when_the_panel_is_hidden) {
  show();
  for (const char* button : {"clear", "moveToTrash", "queueHeader"}) {
    focusOn("after");
    queueThree();
    focusOn(button);
    if (QString(button) == "queueHeader") {
      session().cleanupQueue().setQueueOpen(false);
      update();
    } else {
      press(Qt::Key_Return);
    }
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_EQ(focused(), item("after")) << button;
  }
}

TEST_F(QueueKeyboard, the_focus_returns_to_the_item_before_when_the_last_row_is_removed) {
  show();
  focusOn("after");
  queue({file("/data/note", 1)});
  removeButton(0)->forceActiveFocus(Qt::TabFocusReason);
  press(Qt::Key_Return);
  EXPECT_EQ(focused(), item("after"));
  EXPECT_FALSE(panel()->isVisible());
}

TEST_F(QueueKeyboard, the_focus_goes_to_the_control_before_the_panel_if_its_old_item_is_hidden) {
  show();
  focusOn("after");
  queueThree();
  focusOn("clear");
  view().rootObject()->findChild<QQuickItem*>("after")->setVisible(false);
  press(Qt::Key_Return);
  EXPECT_EQ(focused(), item("before"));
}

TEST_F(QueueKeyboard, the_focus_goes_to_the_header_when_the_session_collapses_the_panel) {
  show();
  queueThree();
  for (QQuickItem* place : {removeButton(1), item("clear")}) {
    session().cleanupQueue().setQueueMinimized(false);
    update();
    place->forceActiveFocus(Qt::TabFocusReason);
    session().cleanupQueue().setQueueMinimized(true);
    update();
    EXPECT_EQ(focused(), item("queueHeader"));
  }
}

TEST_F(QueueKeyboard, arrows_page_keys_home_and_end_move_through_thousands_of_rows) {
  show();
  queueMany(5000);
  focusOn("queueHeader");
  press(Qt::Key_Tab);
  EXPECT_EQ(focusedRow(), "f0");
  press(Qt::Key_Up);
  EXPECT_EQ(focusedRow(), "f0");
  press(Qt::Key_Down);
  EXPECT_EQ(focusedRow(), "f1");
  press(Qt::Key_PageDown);
  EXPECT_EQ(focusedRow(), "f6");
  press(Qt::Key_PageUp);
  EXPECT_EQ(focusedRow(), "f1");
  press(Qt::Key_End);
  EXPECT_EQ(focusedRow(), "f4999");
  press(Qt::Key_Down);
  EXPECT_EQ(focusedRow(), "f4999");
  press(Qt::Key_Return);
  EXPECT_EQ(focusedRow(), "f4998");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), item("clear"));
  backtab();
  EXPECT_EQ(focusedRow(), "f4998");
  press(Qt::Key_Home);
  EXPECT_EQ(focusedRow(), "f0");
  press(Qt::Key_Return);
  EXPECT_EQ(focusedRow(), "f1");
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(4998));
}

TEST_F(QueueKeyboard, a_row_keeps_the_focus_while_the_list_is_scrolled_away_from_it) {
  show();
  queueMany(500);
  focusOn("queueHeader");
  press(Qt::Key_Tab);
  press(Qt::Key_Down);
  wheelAt({300, 250}, -15 * 100);
  press(Qt::Key_Down);
  EXPECT_EQ(focusedRow(), "f2");
}

TEST_F(QueueKeyboard, a_row_keeps_the_focus_when_another_row_is_removed) {
  show();
  queueThree();
  removeButton(2)->forceActiveFocus(Qt::TabFocusReason);
  session().cleanupQueue().removeFromQueue("/data/film.mp4");
  update();
  EXPECT_EQ(focusedRow(), "note");
  queue({file("/data/more", 1)});
  EXPECT_EQ(focusedRow(), "note");
}

}  // namespace
}  // namespace tessaly
