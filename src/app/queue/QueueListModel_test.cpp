#include "app/queue/QueueListModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

class QueueListModelTest : public SessionFixture {
 protected:
  void queue(const Texts& paths) {
    for (const std::string& path : paths) session().cleanupQueue().addToQueue(file(path, 1536));
  }
  QVariant at(int row, int role) { return model_.data(model_.index(row), role); }
  Texts column(int role) {
    Texts texts;
    for (int row = 0; row < model_.rowCount(); ++row)
      texts.push_back(at(row, role).toString().toStdString());
    return texts;
  }
  Texts handed() {
    Texts paths;
    for (int row = 0; row < model_.rowCount(); ++row)
      paths.push_back(at(row, QueueListModel::NodeRole).value<NodeHandle>().node()->path());
    return paths;
  }

  QueueListModel model_{session().cleanupQueue()};
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(QueueListModelTest, the_model_of_an_empty_queue_is_empty) {
  EXPECT_EQ(model_.rowCount(), 0);
}

TEST_F(QueueListModelTest, each_node_has_one_row_in_the_order_of_adding) {
  session().cleanupQueue().addToQueue(file("/b/second", 1536));
  session().cleanupQueue().addToQueue(folder("/a/first", 1LL << 30U));
  EXPECT_THAT(column(QueueListModel::NameRole), ElementsAre("second", "first"));
  EXPECT_THAT(column(QueueListModel::SizeRole), ElementsAre("1.5 KB", "1.0 GB"));
  EXPECT_THAT(handed(), ElementsAre("/b/second", "/a/first"));
}

TEST_F(QueueListModelTest, a_path_that_is_added_twice_has_one_row) {
  queue({"/a", "/b", "/a"});
  EXPECT_THAT(handed(), ElementsAre("/a", "/b"));
}

TEST_F(QueueListModelTest, rows_keep_the_bytes_of_names_that_are_not_utf8) {
  queue({"/a/caf\xe9", "/a/caf\xe8", "/a/two\nlines"});
  EXPECT_THAT(column(QueueListModel::NameRole),
              ElementsAre("caf\uFFFD", "caf\uFFFD", "two\uFFFDlines"));
  EXPECT_THAT(handed(), ElementsAre("/a/caf\xe9", "/a/caf\xe8", "/a/two\nlines"));
}

TEST_F(QueueListModelTest, adding_and_removing_an_item_leaves_the_other_rows) {
  queue({"/a", "/b", "/c"});
  const QSignalSpy resets(&model_, &QueueListModel::modelReset);
  QSignalSpy removals(&model_, &QueueListModel::rowsRemoved);
  QSignalSpy insertions(&model_, &QueueListModel::rowsInserted);
  session().cleanupQueue().removeFromQueue("/b");
  session().cleanupQueue().addToQueue(file("/d", 1));
  EXPECT_THAT(handed(), ElementsAre("/a", "/c", "/d"));
  EXPECT_EQ(resets.count(), 0);
  ASSERT_EQ(removals.count(), 1);
  EXPECT_EQ(removals.at(0).at(1).toInt(), 1);
  ASSERT_EQ(insertions.count(), 1);
  EXPECT_EQ(insertions.at(0).at(1).toInt(), 2);
}

TEST_F(QueueListModelTest, adding_a_selection_and_clearing_are_one_change_each) {
  std::vector<DiskNode> nodes;
  for (int i = 0; i < 100; ++i) nodes.push_back(file("/data/" + std::to_string(i), 1));
  session().selection().selectNodes(nodes, false);
  const QSignalSpy insertions(&model_, &QueueListModel::rowsInserted);
  const QSignalSpy removals(&model_, &QueueListModel::rowsRemoved);
  session().queueSelected();
  EXPECT_EQ(model_.rowCount(), 100);
  EXPECT_EQ(insertions.count(), 1);
  session().cleanupQueue().clearQueue();
  EXPECT_THAT(handed(), IsEmpty());
  EXPECT_EQ(removals.count(), 1);
}

TEST_F(QueueListModelTest, a_new_model_has_the_rows_of_the_current_queue) {
  queue({"/a", "/b"});
  const QueueListModel other(session().cleanupQueue());
  EXPECT_EQ(other.rowCount(), 2);
}

}  // namespace
}  // namespace tessaly
