#include "app/panes/CloudListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "app/model/NodeHandle.h"
#include "app/panes/FoundListFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

CloudItem item(const std::string& path, std::int64_t size) {
  return {.name = path.substr(path.rfind('/') + 1), .path = path, .size = size};
}

class CloudList : public FoundListFixture<CloudListState, CloudItem> {
 protected:
  CloudList() : FoundListFixture(&PostScanAnalysis::Engines::cloudItems) {}
};

TEST_F(CloudList, each_item_has_one_row_in_the_order_of_the_session) {
  EXPECT_EQ(state_->rows()->rowCount(), 0);
  find({item("/r/in/caf\xe9", 3LL << 30U), item("/r/b\n", 0)});
  EXPECT_THAT(column(CloudListModel::NameRole), ElementsAre("caf\uFFFD", "b\uFFFD"));
  EXPECT_THAT(column(CloudListModel::PlaceRole), ElementsAre("/r/in/caf\uFFFD", "/r/b\uFFFD"));
  EXPECT_THAT(column(CloudListModel::SizeRole), ElementsAre("3.0 GB", "0 B"));
  const auto handle =
      state_->rows()->data(state_->rows()->index(0), CloudListModel::NodeRole).value<NodeHandle>();
  EXPECT_EQ(handle.node()->path(), "/r/in/caf\xe9");
}

TEST_F(CloudList, items_of_the_next_analysis_keep_their_rows) {
  find({item("/r/a", 9), item("/r/b", 8)});
  const QPersistentModelIndex b = state_->rows()->index(1);
  const QSignalSpy resets(state_->rows(), &CloudListModel::modelReset);
  find({item("/r/b", 7), item("/r/c", 6)});
  EXPECT_EQ(b.row(), 0);
  EXPECT_THAT(column(CloudListModel::SizeRole), ElementsAre("7 B", "6 B"));
  EXPECT_EQ(resets.count(), 0);
}

}  // namespace
}  // namespace tessaly
