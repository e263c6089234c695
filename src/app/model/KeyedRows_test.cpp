#include "app/model/KeyedRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace tessaly {
namespace {

using testing::ElementsAre;

struct Row {
  int key = 0;
  int content = 0;

  friend bool operator==(const Row&, const Row&) = default;
};
using Rows = std::vector<Row>;

class RowsModel : public QAbstractListModel {
 public:
  // True if the number of rows has changed.
  bool show(Rows wanted) { return rows_.set(std::move(wanted), &Row::key); }
  const Rows& rows() const { return rows_.all(); }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : rows_.count();
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::DisplayRole) return {};
    return QString::number(rows_.at(index.row()).content);
  }

 private:
  KeyedRows<Row> rows_{*this};
};

Rows keys(const std::vector<int>& keys) {
  Rows rows;
  for (const int key : keys) rows.push_back({key, 0});
  return rows;
}

std::vector<int> keysOf(const RowsModel& model) {
  std::vector<int> keys;
  for (const Row& row : model.rows()) keys.push_back(row.key);
  return keys;
}

class KeyedRowsTest : public testing::Test {
 protected:
  RowsModel model_;
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
  QSignalSpy resets_{&model_, &RowsModel::modelReset};
  QSignalSpy removals_{&model_, &RowsModel::rowsRemoved};
  QSignalSpy insertions_{&model_, &RowsModel::rowsInserted};
  QSignalSpy moves_{&model_, &RowsModel::rowsMoved};
  QSignalSpy contents_{&model_, &RowsModel::dataChanged};
  QSignalSpy orders_{&model_, &RowsModel::layoutChanged};
};

TEST_F(KeyedRowsTest, the_same_rows_are_not_announced) {
  model_.show(keys({1, 2, 3}));
  insertions_.clear();
  model_.show(keys({1, 2, 3}));
  for (const QSignalSpy* spy : {&resets_, &removals_, &insertions_, &moves_, &contents_, &orders_})
    EXPECT_EQ(spy->count(), 0);
}

TEST_F(KeyedRowsTest, removed_moved_and_inserted_rows_are_announced) {
  model_.show(keys({1, 2, 3, 4, 5, 6}));
  model_.show(keys({6, 1, 4, 5, 7, 8}));
  EXPECT_THAT(keysOf(model_), ElementsAre(6, 1, 4, 5, 7, 8));
  ASSERT_EQ(removals_.count(), 1);
  EXPECT_EQ(removals_.at(0).at(1).toInt(), 1);
  EXPECT_EQ(removals_.at(0).at(2).toInt(), 2);
  ASSERT_EQ(moves_.count(), 1);
  EXPECT_EQ(moves_.at(0).at(1).toInt(), 3);
  EXPECT_EQ(moves_.at(0).at(4).toInt(), 0);
  ASSERT_EQ(insertions_.count(), 2);
  EXPECT_EQ(insertions_.at(1).at(1).toInt(), 4);
  EXPECT_EQ(insertions_.at(1).at(2).toInt(), 5);
  EXPECT_EQ(contents_.count(), 0);
}

TEST_F(KeyedRowsTest, kept_rows_with_other_content_are_announced) {
  model_.show({{1, 10}, {2, 20}, {3, 30}, {4, 40}, {5, 50}});
  model_.show({{9, 90}, {1, 10}, {2, 21}, {3, 31}, {4, 40}, {5, 51}});
  EXPECT_EQ(model_.rows(), (Rows{{9, 90}, {1, 10}, {2, 21}, {3, 31}, {4, 40}, {5, 51}}));
  ASSERT_EQ(contents_.count(), 2);
  EXPECT_EQ(contents_.at(0).at(0).toModelIndex().row(), 2);
  EXPECT_EQ(contents_.at(0).at(1).toModelIndex().row(), 3);
  EXPECT_EQ(contents_.at(1).at(0).toModelIndex().row(), 5);
  EXPECT_EQ(contents_.at(1).at(1).toModelIndex().row(), 5);
}

TEST_F(KeyedRowsTest, the_result_says_whether_the_number_of_rows_has_changed) {
  EXPECT_TRUE(model_.show(keys({1, 2})));
  EXPECT_FALSE(model_.show(keys({2, 1})));
  EXPECT_FALSE(model_.show(keys({3, 4})));
  EXPECT_TRUE(model_.show(keys({3, 4, 1})));
  EXPECT_EQ(model_.rowCount(), 3);
}

TEST_F(KeyedRowsTest, rows_with_the_same_key_match_in_their_order) {
  model_.show({{1, 10}, {2, 20}, {1, 11}, {1, 12}});
  model_.show({{1, 10}, {1, 11}, {2, 20}});
  EXPECT_EQ(model_.rows(), (Rows{{1, 10}, {1, 11}, {2, 20}}));
  EXPECT_EQ(contents_.count(), 0);
  ASSERT_EQ(removals_.count(), 1);
  EXPECT_EQ(removals_.at(0).at(1).toInt(), 3);
  model_.show({{1, 10}, {1, 11}, {1, 13}, {1, 14}});
  EXPECT_EQ(model_.rows(), (Rows{{1, 10}, {1, 11}, {1, 13}, {1, 14}}));
}

TEST_F(KeyedRowsTest, persistent_indexes_follow_their_rows) {
  model_.show({{1, 1}, {2, 2}, {3, 3}, {4, 4}});
  const QPersistentModelIndex two = model_.index(1);
  const QPersistentModelIndex four = model_.index(3);
  model_.show({{4, 4}, {5, 5}, {3, 3}, {2, 2}});
  EXPECT_EQ(two.row(), 3);
  EXPECT_EQ(four.row(), 0);
  model_.show({{5, 5}, {2, 2}});
  EXPECT_EQ(two.row(), 1);
  EXPECT_FALSE(four.isValid());
}

// Random lists, each replaced by the next one, with few or many keys, kept and shuffled.
TEST_F(KeyedRowsTest, any_list_becomes_any_other_and_all_indexes_follow_their_rows) {
  std::mt19937 random(7);
  for (int round = 0; round < 400; ++round) {
    const unsigned length = random() % (round % 50 < 4 ? 2000U : 30U);
    const unsigned range = round % 4 == 0 ? 5U : 2 * length + 1;
    Rows wanted = round % 3 == 0 ? model_.rows() : Rows();
    if (wanted.size() > 2) std::rotate(wanted.begin(), wanted.begin() + 1, wanted.end() - 1);
    for (unsigned i = 0; i < length; ++i)
      wanted.insert(wanted.begin() + static_cast<int>(random() % (wanted.size() + 1)),
                    {static_cast<int>(random() % range), static_cast<int>(random() % 3)});
    if (wanted.size() > 150 && round % 50 >= 4) wanted.resize(20);

    std::map<int, std::vector<QPersistentModelIndex>> before;
    for (int row = 0; row < model_.rowCount(); ++row)
      before[model_.rows()[static_cast<std::size_t>(row)].key].emplace_back(model_.index(row));
    model_.show(wanted);
    ASSERT_EQ(model_.rows(), wanted);
    ASSERT_EQ(model_.rowCount(), static_cast<int>(wanted.size()));
    for (int row = 0; row < model_.rowCount(); ++row) {
      auto& waiting = before[wanted[static_cast<std::size_t>(row)].key];
      if (waiting.empty()) continue;
      ASSERT_EQ(waiting.front().row(), row);
      waiting.erase(waiting.begin());
    }
    for (const auto& [key, gone] : before) {
      for (const QPersistentModelIndex& index : gone) ASSERT_FALSE(index.isValid()) << key;
    }
  }
  EXPECT_EQ(resets_.count(), 0);
  EXPECT_GT(moves_.count(), 0);
  EXPECT_GT(orders_.count(), 0);
}

TEST_F(KeyedRowsTest, reversing_10000_rows_is_one_change_of_the_order) {
  Rows rows;
  for (int key = 0; key < 10000; ++key) rows.push_back({key, key});
  model_.show(rows);
  const QPersistentModelIndex first = model_.index(0);
  insertions_.clear();
  std::ranges::reverse(rows);
  model_.show(rows);
  EXPECT_EQ(model_.rows(), rows);
  EXPECT_EQ(first.row(), 9999);
  EXPECT_EQ(orders_.count(), 1);
  EXPECT_EQ(moves_.count() + removals_.count() + insertions_.count() + resets_.count(), 0);
}

TEST_F(KeyedRowsTest, removing_every_other_of_10000_rows_takes_few_steps) {
  Rows rows;
  for (int key = 0; key < 10000; ++key) rows.push_back({key, key});
  model_.show(rows);
  std::erase_if(rows, [](const Row& row) { return row.key % 2 == 1; });
  rows.insert(rows.begin() + 2500, {-1, -1});
  insertions_.clear();
  model_.show(rows);
  EXPECT_EQ(model_.rows(), rows);
  EXPECT_EQ(insertions_.count(), 1);
  EXPECT_EQ(orders_.count(), 1);
  EXPECT_EQ(removals_.count(), 1);
}

}  // namespace
}  // namespace tessaly
