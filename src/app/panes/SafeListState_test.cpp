#include "app/panes/SafeListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "app/panes/FoundListFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

SafeItem scored(const std::string& path, int score, bool caution) {
  return {.name = path.substr(path.rfind('/') + 1),
          .path = path,
          .bytes = 3LL << 30U,
          .score = score,
          .label = caution ? "Keep / caution" : "Safe to remove",
          .caution = caution,
          .reason = "idle 6+ months"};
}

class SafeList : public FoundListFixture<SafeListState, SafeItem> {
 protected:
  SafeList() : FoundListFixture(&PostScanAnalysis::Engines::safeItems) {}
};

TEST_F(SafeList, each_item_has_one_row_in_the_order_of_the_session) {
  EXPECT_EQ(state_->rows()->rowCount(), 0);
  find({scored("/r/in/caf\xe9", 100, false), scored("/home/user/a\nb", 53, true)});
  EXPECT_THAT(column(SafeListModel::NameRole), ElementsAre("caf\uFFFD", "a\uFFFDb"));
  EXPECT_THAT(column(SafeListModel::PlaceRole),
              ElementsAre("/r/in/caf\uFFFD", "/home/user/a\uFFFDb"));
  EXPECT_THAT(column(SafeListModel::ScoreRole), ElementsAre("100", "53"));
  EXPECT_THAT(column(SafeListModel::CautionRole), ElementsAre("false", "true"));
  EXPECT_THAT(column(SafeListModel::VerdictRole),
              ElementsAre("Safe to remove · idle 6+ months", "Keep / caution · idle 6+ months"));
  EXPECT_THAT(column(SafeListModel::SizeRole), ElementsAre("3.0 GB", "3.0 GB"));
}

TEST_F(SafeList, a_list_that_is_opened_after_the_analysis_has_its_rows) {
  find({scored("/r/a", 100, false), scored("/r/b", 90, false)});
  SafeListState opened(session());
  EXPECT_EQ(opened.rows()->rowCount(), 2);
}

TEST_F(SafeList, items_of_the_next_analysis_keep_their_rows) {
  find({scored("/r/a", 100, false), scored("/r/b", 90, false)});
  const QPersistentModelIndex b = state_->rows()->index(1);
  const QSignalSpy resets(state_->rows(), &SafeListModel::modelReset);
  find({scored("/r/b", 70, true), scored("/r/c", 50, true)});
  EXPECT_EQ(b.row(), 0);
  EXPECT_THAT(column(SafeListModel::ScoreRole), ElementsAre("70", "50"));
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(SafeList, an_item_is_queued_as_a_file_with_its_name_path_and_size_alone) {
  find({scored("/r/in/caf\xe9", 11, true)});
  state_->addToQueue(node(0));
  state_->addToQueue(node(0));
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  const DiskNode& queued = session().cleanupQueue().queue().front();
  EXPECT_EQ(queued.name(), "caf\xe9");
  EXPECT_EQ(queued.path(), "/r/in/caf\xe9");
  EXPECT_EQ(queued.size(), 3LL << 30U);
  EXPECT_FALSE(queued.isDir());
  EXPECT_EQ(queued.kind(), FileKind::other);
  EXPECT_EQ(queued.children().size(), 0U);
  EXPECT_FALSE(queued.mtime());
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
}

TEST_F(SafeList, an_item_of_the_tree_is_shown_on_the_map) {
  find({scored("/r/in/caf\xe9", 100, false)});
  session().shown().setVizMode(VizMode::safe);
  state_->showOnMap(node(0));
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().selection().focused()->path(), "/r/in/caf\xe9");
}

TEST_F(SafeList, an_item_that_the_tree_lacks_is_shown_in_the_file_manager) {
  find({scored("/home/user/old.iso", 78, false)});
  session().shown().setVizMode(VizMode::safe);
  state_->showOnMap(node(0));
  EXPECT_EQ(session().shown().vizMode(), VizMode::safe);
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre("/home/user/old.iso")));
}

TEST_F(SafeList, actions_do_nothing_for_a_handle_without_a_file) {
  find({scored("/r/a", 100, false)});
  session().shown().setVizMode(VizMode::safe);
  state_->showOnMap(NodeHandle());
  state_->addToQueue(NodeHandle());
  EXPECT_EQ(session().shown().vizMode(), VizMode::safe);
  EXPECT_TRUE(session().cleanupQueue().queue().empty());
}

}  // namespace
}  // namespace tessaly
