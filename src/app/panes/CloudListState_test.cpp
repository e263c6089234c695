#include "app/panes/CloudListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "app/model/NodeHandle.h"
#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

CloudItem item(const std::string& path, std::int64_t size) {
  return {.name = path.substr(path.rfind('/') + 1), .path = path, .size = size};
}

class CloudList : public SessionFixture {
 protected:
  CloudList() {
    analysis_.cloudItems = [this](const auto&, const auto&) { return found_; };
    restart();
    state_ = std::make_unique<CloudListState>(session());
    tester_ = std::make_unique<QAbstractItemModelTester>(
        state_->rows(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  }

  void find(std::vector<CloudItem> items) {
    found_ = std::move(items);
    scanTo(folder("/r", 60));
  }
  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < state_->rows()->rowCount(); ++row)
      texts.push_back(
          state_->rows()->data(state_->rows()->index(row), role).toString().toStdString());
    return texts;
  }

  std::vector<CloudItem> found_;
  std::unique_ptr<CloudListState> state_;
  std::unique_ptr<QAbstractItemModelTester> tester_;
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
