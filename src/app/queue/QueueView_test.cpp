// The cleanup queue's panel, operated by pointer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>

#include "app/queue/QueueScene_test.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using QueueView = QueueScene;

TEST_F(QueueView, the_panel_is_hidden_while_the_queue_is_empty_or_closed) {
  show();
  EXPECT_FALSE(panel()->isVisible());
  queueThree();
  EXPECT_TRUE(panel()->isVisible());
  session().cleanupQueue().setQueueOpen(false);
  EXPECT_FALSE(panel()->isVisible());
}

TEST_F(QueueView, a_click_anywhere_on_the_header_collapses_or_expands_the_panel) {
  show();
  queueThree();
  bool isMinimized = false;
  for (const double x : {203.0, 225.0, 300.0, 480.0, 600.0, 617.0}) {
    for (const double y : {102.0, 122.0, 141.0}) {
      clickAt({x, y});
      isMinimized = !isMinimized;
      EXPECT_EQ(session().cleanupQueue().queueMinimized(), isMinimized) << x << ", " << y;
    }
  }
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(3));
}

TEST_F(QueueView, a_new_path_expands_the_panel_and_a_queued_one_does_not) {
  show();
  queueThree();
  click(item("queueHeader"));
  queue({file("/data/note", 512)});
  EXPECT_EQ(panel()->height(), 44);
  queue({file("/data/other", 512)});
  EXPECT_EQ(panel()->height(), 360);
  EXPECT_THAT(rows(), SizeIs(4));
}

TEST_F(QueueView, the_button_of_a_row_removes_that_row) {
  show();
  queueThree();
  click(removeButton(1));
  EXPECT_THAT(queued(), ElementsAre("/data/film.mp4", "/data/note"));
  EXPECT_EQ(names(), (QStringList{"film.mp4", "note"}));
  EXPECT_EQ(itemNamed(panel(), "count")->property("text").toString(), "2");
  click(removeButton(0));
  click(removeButton(0));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(panel()->isVisible());
  queue({file("/data/again", 1)});
  EXPECT_TRUE(panel()->isVisible());
  EXPECT_EQ(names(), QStringList{"again"});
}

TEST_F(QueueView, clear_empties_the_queue_and_moves_nothing) {
  show();
  machine_.trash.put("/data/note");
  queueThree();
  click(item("clear"));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(panel()->isVisible());
  EXPECT_TRUE(machine_.trash.has("/data/note"));
}

TEST_F(QueueView, the_move_button_moves_all_queued_items_to_the_trash) {
  show();
  for (const char* path : {"/data/film.mp4", "/data/caf\xE9\n.mp3", "/data/note", "/data/other"})
    machine_.trash.put(path);
  queueThree();
  click(item("moveToTrash"));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(panel()->isVisible());
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(3));
  EXPECT_FALSE(machine_.trash.has("/data/caf\xE9\n.mp3"));
  EXPECT_TRUE(machine_.trash.has("/data/other"));
}

TEST_F(QueueView, clicks_and_wheel_do_not_pass_through_the_panel) {
  show();
  queueThree();
  for (const QPointF point : {QPointF(300, 120), QPointF(300, 300), QPointF(205, 455),
                              QPointF(400, 380), QPointF(615, 455)}) {
    QTest::mouseMove(&view(), point.toPoint());
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
      if (button != Qt::LeftButton || point.y() > 144)
        QTest::mouseClick(&view(), button, {}, point.toPoint());
    wheelAt(point, -15);
  }
  EXPECT_EQ(clicksBelow(), 0);
  clickAt({100, 300});
  EXPECT_EQ(clicksBelow() % 100, 1);
}

TEST_F(QueueView, the_wheel_scrolls_the_list_and_only_rows_near_the_visible_part_are_built) {
  show();
  std::vector<DiskNode> nodes;
  for (int i = 0; i < 5000; ++i) nodes.push_back(file("/data/f" + std::to_string(i), 1));
  session().selection().selectNodes(nodes, false);
  session().queueSelected();
  update();
  EXPECT_LT(rows().size(), 40U);
  QQuickItem* const list = item("queueList");
  EXPECT_TRUE(itemNamed(panel(), "scrollBar") != nullptr);
  wheelAt({300, 250}, -15);
  EXPECT_EQ(list->property("contentY").toDouble(), 60);
  wheelAt({300, 250}, -15 * 10000);
  EXPECT_EQ(list->property("contentY").toDouble(), 5000 * 40 - list->height());
  EXPECT_EQ(names().last(), "f4999");
  EXPECT_LT(rows().size(), 40U);
  click(removeButton(static_cast<int>(rows().size()) - 1));
  EXPECT_THAT(queued(), SizeIs(4999));
  EXPECT_EQ(names().last(), "f4998");
  wheelAt({300, 250}, 15 * 20000);
  EXPECT_EQ(names().first(), "f0");
}

TEST_F(QueueView, adding_and_removing_a_row_keeps_the_scroll_position) {
  show();
  std::vector<DiskNode> nodes;
  for (int i = 0; i < 100; ++i) nodes.push_back(file("/data/f" + std::to_string(i), 1));
  session().selection().selectNodes(nodes, false);
  session().queueSelected();
  update();
  wheelAt({300, 250}, -15 * 20);
  QQuickItem* const list = item("queueList");
  const double place = list->property("contentY").toDouble();
  ASSERT_GT(place, 0);
  click(removeButton(static_cast<int>(rows().size()) / 2));
  EXPECT_EQ(list->property("contentY").toDouble(), place);
  queue({file("/data/late", 1)});
  EXPECT_EQ(list->property("contentY").toDouble(), place);
}

}  // namespace
}  // namespace tessaly
