#include "app/panes/LargestListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

class LargestList : public SessionFixture {
 protected:
  LargestList() : state_(session()), tester_(state_.rows(), Mode::Fatal) {}

  using Mode = QAbstractItemModelTester::FailureReportingMode;

  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < state_.rows()->rowCount(); ++row)
      texts.push_back(
          state_.rows()->data(state_.rows()->index(row), role).toString().toStdString());
    return texts;
  }
  NodeHandle node(int row) {
    return state_.rows()->data(state_.rows()->index(row), NodeRows::NodeRole).value<NodeHandle>();
  }

  LargestListState state_;
  QAbstractItemModelTester tester_;
};

TEST_F(LargestList, the_list_is_empty_before_a_scan) {
  EXPECT_EQ(state_.rows()->rowCount(), 0);
}

TEST_F(LargestList, each_file_has_one_row_with_name_path_kind_and_size_largest_first) {
  scanTo(folder("/r", 4000,
                {file("/r/small", 512), file("/r/caf\xe9", 3LL << 30U),
                 folder("/r/in", 2048, {file("/r/in/two\nlines", 2048)})}));
  EXPECT_THAT(column(NodeRows::NameRole), ElementsAre("caf\uFFFD", "two\uFFFDlines", "small"));
  EXPECT_THAT(column(NodeRows::PlaceRole),
              ElementsAre("/r/caf\uFFFD", "/r/in/two\uFFFDlines", "/r/small"));
  EXPECT_THAT(column(NodeRows::SizeRole), ElementsAre("3.0 GB", "2.0 KB", "512 B"));
  EXPECT_EQ(node(0).node()->path(), "/r/caf\xe9");
}

TEST_F(LargestList, files_that_are_still_among_the_largest_keep_their_rows) {
  scanTo(folder("/r", 60, {file("/r/a", 30), file("/r/b", 20), file("/r/c", 10)}));
  const QPersistentModelIndex c = state_.rows()->index(2);
  const QSignalSpy resets(state_.rows(), &NodeRows::modelReset);
  scanTo(folder("/r", 95, {file("/r/c", 40), file("/r/a", 30), file("/r/new", 25)}));
  EXPECT_THAT(column(NodeRows::NameRole), ElementsAre("c", "a", "new"));
  EXPECT_EQ(column(NodeRows::SizeRole)[0], "40 B");
  EXPECT_EQ(c.row(), 0);
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(LargestList, a_file_is_shown_on_the_map) {
  scanTo(folder("/r", 60, {folder("/r/in", 30, {file("/r/in/f", 30)}), file("/r/g", 30)}));
  session().shown().setVizMode(VizMode::largest);
  state_.showOnMap(node(0));
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().selection().focused()->path(), node(0).node()->path());
}

TEST_F(LargestList, a_file_is_added_to_the_queue_only_once) {
  scanTo(folder("/r", 30, {file("/r/caf\xe9", 30)}));
  state_.addToQueue(node(0));
  state_.addToQueue(node(0));
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), "/r/caf\xe9");
}

TEST_F(LargestList, actions_do_nothing_for_a_handle_without_a_file) {
  scanTo(folder("/r", 30, {file("/r/a", 30)}));
  session().shown().setVizMode(VizMode::largest);
  state_.showOnMap(NodeHandle());
  state_.addToQueue(NodeHandle());
  EXPECT_EQ(session().shown().vizMode(), VizMode::largest);
  EXPECT_TRUE(session().cleanupQueue().queue().empty());
}

}  // namespace
}  // namespace tessaly
