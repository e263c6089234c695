#include "app/panes/ModeListModel.h"

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

class ModeListModelTest : public SessionFixture {
 protected:
  QVariant at(int row, int role) { return model_.data(model_.index(row), role); }
  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < model_.rowCount(); ++row)
      texts.push_back(at(row, role).toString().toStdString());
    return texts;
  }
  std::vector<int> active() {
    std::vector<int> rows;
    for (int row = 0; row < model_.rowCount(); ++row)
      if (at(row, ModeListModel::ActiveRole).toBool()) rows.push_back(row);
    return rows;
  }

  ModeListModel model_{session().shown()};
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ModeListModelTest, the_model_has_nine_rows_and_the_treemap_is_active_at_first) {
  EXPECT_EQ(model_.rowCount(), 9);
  for (int row = 0; row < 9; ++row)
    EXPECT_EQ(model_.data(model_.index(row), ModeListModel::ActiveRole).toBool(), row == 0);
}

TEST_F(ModeListModelTest, the_rows_are_nine_of_the_eleven_modes) {
  EXPECT_THAT(column(ModeListModel::LabelRole),
              ElementsAre("Treemap", "List Wins", "Grew", "Duplicates", "Compare", "Largest",
                          "Shared Blocks", "History", "Safe Score"));
  EXPECT_THAT(column(ModeListModel::KeyRole),
              ElementsAre("treemap", "list", "grew", "duplicates", "compare", "largest", "clones",
                          "history", "safe"));
  for (int row = 0; row < 9; ++row)
    EXPECT_EQ(at(row, ModeListModel::StartsGroupRole).toBool(), row == 6);
}

TEST_F(ModeListModelTest, choosing_a_row_sets_its_mode_and_other_numbers_do_nothing) {
  const VizMode modes[] = {VizMode::treemap,    VizMode::list,    VizMode::grew,
                           VizMode::duplicates, VizMode::compare, VizMode::largest,
                           VizMode::clones,     VizMode::history, VizMode::safe};
  for (int row = 0; row < 9; ++row) {
    model_.choose(row);
    EXPECT_EQ(session().shown().vizMode(), modes[row]);
    EXPECT_THAT(active(), ElementsAre(row));
  }
  for (const int row : {-1, 9, 10}) {
    model_.choose(row);
    EXPECT_EQ(session().shown().vizMode(), VizMode::safe);
  }
}

TEST_F(ModeListModelTest, a_change_of_the_mode_updates_the_two_rows_concerned) {
  QSignalSpy changes(&model_, &ModeListModel::dataChanged);
  session().shown().setVizMode(VizMode::history);
  ASSERT_EQ(changes.count(), 2);
  EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 0);
  EXPECT_EQ(changes.at(1).at(0).toModelIndex().row(), 7);
  session().shown().setVizMode(VizMode::cloud);
  EXPECT_EQ(changes.count(), 3);
  EXPECT_THAT(active(), ElementsAre());
}

TEST_F(ModeListModelTest, modes_without_a_button_have_a_key_too) {
  EXPECT_EQ(ModeListModel::keyOf(VizMode::clones), "clones");
  EXPECT_EQ(ModeListModel::keyOf(VizMode::aliases), "aliases");
  EXPECT_EQ(ModeListModel::keyOf(VizMode::cloud), "cloud");
}

}  // namespace
}  // namespace tessaly
