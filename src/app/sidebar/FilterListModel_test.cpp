#include "app/sidebar/FilterListModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class FilterListModelTest : public SessionFixture {
 protected:
  QVariant at(int row, int role) { return model_.data(model_.index(row), role); }

  FilterListModel model_{session().choices()};
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(FilterListModelTest, the_rows_are_the_catalogue_in_its_order) {
  const auto& catalog = BloatFilter::catalog();
  ASSERT_EQ(model_.rowCount(), static_cast<int>(catalog.size()));
  for (int row = 0; row < model_.rowCount(); ++row) {
    const BloatFilter& filter = catalog[static_cast<std::size_t>(row)];
    EXPECT_EQ(at(row, FilterListModel::FilterIdRole).toString().toStdString(), filter.id);
    EXPECT_EQ(at(row, FilterListModel::NameRole).toString().toStdString(), filter.name);
    EXPECT_EQ(at(row, FilterListModel::SymbolNameRole).toString().toStdString(), filter.symbol);
    EXPECT_FALSE(at(row, FilterListModel::HighlightedRole).toBool());
    EXPECT_FALSE(at(row, FilterListModel::SkippedRole).toBool());
  }
}

TEST_F(FilterListModelTest, switching_a_filter_changes_only_its_row) {
  const QSignalSpy resets(&model_, &FilterListModel::modelReset);
  QSignalSpy changes(&model_, &FilterListModel::dataChanged);
  session().choices().toggleFilter("xcode");
  session().choices().toggleSkip("build");
  EXPECT_EQ(resets.count(), 0);
  ASSERT_EQ(changes.count(), 2);
  EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 1);
  EXPECT_EQ(changes.at(1).at(0).toModelIndex().row(), 2);
  EXPECT_TRUE(at(1, FilterListModel::HighlightedRole).toBool());
  EXPECT_FALSE(at(1, FilterListModel::SkippedRole).toBool());
  EXPECT_FALSE(at(2, FilterListModel::HighlightedRole).toBool());
  EXPECT_TRUE(at(2, FilterListModel::SkippedRole).toBool());
}

TEST_F(FilterListModelTest, a_filter_that_remains_keeps_its_row_when_others_are_removed) {
  const QSignalSpy resets(&model_, &FilterListModel::modelReset);
  const QPersistentModelIndex kept = model_.index(3);
  session().choices().setFilters({BloatFilter::catalog()[3]});
  EXPECT_EQ(model_.rowCount(), 1);
  EXPECT_EQ(kept.row(), 0);
  EXPECT_EQ(resets.count(), 0);
}

}  // namespace
}  // namespace tessaly
