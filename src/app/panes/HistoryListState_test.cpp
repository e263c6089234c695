#include "app/panes/HistoryListState.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "app/panes/HistoryTexts.h"
#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

class HistoryList : public SessionFixture {
 protected:
  template <class Value>
  std::vector<Value> column(int role) {
    std::vector<Value> values;
    for (int row = 0; row < state_.rows()->rowCount(); ++row)
      values.push_back(
          state_.rows()->data(state_.rows()->index(row), role).template value<Value>());
    return values;
  }
  // Finishes a scan of a folder of this size at this time.
  void scanAt(std::int64_t seconds, std::int64_t size) {
    date_ = std::chrono::system_clock::from_time_t(seconds);
    scanTo(folder("/r", size, {file("/r/f", size)}));
  }

  HistoryListState state_{session()};
  QAbstractItemModelTester tester_{state_.rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(HistoryList, each_scan_has_one_row_oldest_first) {
  QSignalSpy changes(&state_, &HistoryListState::pointsChanged);
  EXPECT_EQ(state_.rows()->rowCount(), 0);
  scanAt(1700000000, 1024);
  scanAt(1700086400, 4096);
  scanAt(1700172800, 2048);
  EXPECT_THAT(column<QString>(HistoryListModel::TimeRole),
              ElementsAre(HistoryTexts::time(1700000000), HistoryTexts::time(1700086400),
                          HistoryTexts::time(1700172800)));
  EXPECT_THAT(column<QString>(HistoryListModel::SizeRole),
              ElementsAre("1.0 KB", "4.0 KB", "2.0 KB"));
  EXPECT_EQ(changes.count(), 3);
  EXPECT_EQ(state_.summary(), HistoryTexts::summary(session().result().history()));
}

TEST_F(HistoryList, each_size_is_a_share_of_the_largest_one) {
  scanAt(1700000000, 1024);
  EXPECT_THAT(column<double>(HistoryListModel::ShareRole), ElementsAre(1.0));
  const QPersistentModelIndex first = state_.rows()->index(0);
  scanAt(1700086400, 4096);
  EXPECT_THAT(column<double>(HistoryListModel::ShareRole), ElementsAre(0.25, 1.0));
  EXPECT_EQ(first.row(), 0);
}

TEST_F(HistoryList, sizes_of_zero_have_a_share_of_zero) {
  scanAt(1700000000, 1);
  std::filesystem::remove(support_.at("history_r.json"));
  ScanStore::appendHistory({1700000060, 0, 0}, "/r", support_.path());
  ScanStore::appendHistory({1700000120, 0, 0}, "/r", support_.path());
  restart();
  HistoryListState restored(session());
  ASSERT_EQ(restored.rows()->rowCount(), 2);
  EXPECT_EQ(restored.rows()->data(restored.rows()->index(1), HistoryListModel::ShareRole), 0.0);
}

}  // namespace
}  // namespace tessaly
