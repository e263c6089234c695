#include "app/panes/CompareListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

class CompareList : public SessionFixture {
 protected:
  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < state_.rows()->rowCount(); ++row)
      texts.push_back(
          state_.rows()->data(state_.rows()->index(row), role).toString().toStdString());
    return texts;
  }
  // Compares the folder on screen with a folder of these items.
  void compareWith(const std::vector<DiskNode>& children) {
    walks().at(walks().ran()).result = folder("/b", 1, children);
    folderPanel_.answer = "/b";
    state_.chooseFolder();
    dispatch().drainAll();
  }

  CompareListState state_{session()};
  QAbstractItemModelTester tester_{state_.rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(CompareList, each_difference_has_one_row_in_the_order_of_the_session) {
  scanTo(folder("/a", 1, {file("/a/less", 100), file("/a/caf\xe9", 5LL << 20U)}));
  compareWith({file("/b/more", 1LL << 30U), file("/b/caf\xe9", 7LL << 20U)});
  EXPECT_THAT(column(CompareListModel::PlaceRole), ElementsAre("more", "caf\uFFFD", "less"));
  EXPECT_THAT(column(CompareListModel::LeftRole), ElementsAre("0 B", "5.0 MB", "100 B"));
  EXPECT_THAT(column(CompareListModel::RightRole), ElementsAre("1.0 GB", "7.0 MB", "0 B"));
  EXPECT_THAT(column(CompareListModel::DifferenceRole),
              ElementsAre("+1.0 GB", "+2.0 MB", "\u2212100 B"));
  EXPECT_THAT(column(CompareListModel::ShrinksRole), ElementsAre("false", "false", "true"));
}

TEST_F(CompareList, the_caption_explains_what_to_do_until_there_are_rows) {
  const QString hint =
      "Click Compare… and pick a second folder. Sizes are matched by relative path.";
  QSignalSpy changes(&state_, &CompareListState::captionChanged);
  EXPECT_EQ(state_.caption(), hint);
  scanTo(folder("/caf\xe9", 1, {file("/caf\xe9/less", 100)}));
  compareWith({});
  EXPECT_EQ(state_.caption(), QStringLiteral("caf\uFFFD  vs  b"));
  EXPECT_GE(changes.count(), 1);
  compareWith({file("/b/less", 100)});
  EXPECT_EQ(state_.caption(), hint);
}

TEST_F(CompareList, the_folder_that_is_compared_is_named_until_its_rows_are_there) {
  scanTo(folder("/a", 1, {file("/a/less", 100)}));
  QSignalSpy changes(&state_, &CompareListState::progressChanged);
  EXPECT_EQ(state_.progress(), "");
  walks().at(1).during = [this](const auto&) {
    EXPECT_EQ(state_.progress(), QStringLiteral("Comparing with caf\uFFFD…"));
  };
  folderPanel_.answer = "/old/caf\xe9";
  state_.chooseFolder();
  EXPECT_EQ(state_.progress(), QStringLiteral("Comparing with caf\uFFFD…"));
  EXPECT_FALSE(state_.hasRows());
  dispatch().drainAll();
  EXPECT_EQ(walks().ran(), 2U);
  EXPECT_EQ(state_.progress(), "");
  EXPECT_TRUE(state_.hasRows());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(CompareList, the_latest_of_two_comparisons_is_named_while_it_runs) {
  scanTo(folder("/a", 1, {file("/a/less", 100)}));
  for (const char* other : {"/b", "/c"}) {
    folderPanel_.answer = other;
    state_.chooseFolder();
  }
  EXPECT_EQ(state_.progress(), QStringLiteral("Comparing with c…"));
  dispatch().step(Queue::userInitiated);
  runMain();
  EXPECT_EQ(state_.progress(), QStringLiteral("Comparing with c…"));
  dispatch().drainAll();
  EXPECT_EQ(state_.progress(), "");
}

TEST_F(CompareList, a_comparison_goes_on_during_a_scan_and_says_so) {
  scanTo(folder("/a", 1, {file("/a/less", 100)}));
  folderPanel_.answer = "/b";
  state_.chooseFolder();
  session().scan("/other");
  session().run().cancel();
  EXPECT_EQ(state_.progress(), QStringLiteral("Comparing with b…"));
  dispatch().drainAll();
  EXPECT_EQ(state_.progress(), "");
}

TEST_F(CompareList, a_panel_that_is_cancelled_compares_nothing) {
  scanTo(folder("/a", 1));
  folderPanel_.answer = std::nullopt;
  state_.chooseFolder();
  EXPECT_EQ(state_.progress(), "");
}

TEST_F(CompareList, the_caption_changes_with_the_first_row_and_with_the_names) {
  scanTo(folder("/a", 1, {file("/a/less", 100)}));
  compareWith({file("/b/less", 100)});
  QSignalSpy changes(&state_, &CompareListState::captionChanged);
  compareWith({});  // of the same name
  EXPECT_EQ(state_.caption(), QStringLiteral("a  vs  b"));
  EXPECT_EQ(changes.count(), 1);
  // The names are those of the next comparison at once, its rows follow.
  folderPanel_.answer = "/c";
  state_.chooseFolder();
  EXPECT_EQ(state_.caption(), QStringLiteral("a  vs  c"));
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(CompareList, a_list_that_is_opened_after_the_comparison_has_its_rows) {
  scanTo(folder("/a", 1, {file("/a/less", 100)}));
  compareWith({});
  CompareListState opened(session());
  EXPECT_EQ(opened.rows()->rowCount(), state_.rows()->rowCount());
  EXPECT_GT(opened.rows()->rowCount(), 0);
}

TEST_F(CompareList, the_panel_asks_for_the_second_folder) {
  state_.chooseFolder();
  ASSERT_EQ(folderPanel_.requests.size(), 1U);
  EXPECT_EQ(walks().ran(), 0U);
}

TEST(CompareDifference, a_difference_is_green_below_zero_and_orange_otherwise) {
  const struct {
    FolderCompareRow row;
    const char* text;
    bool shrinks;
  } rows[] = {{{"a", 100, 40}, "\u221260 B", true},
              {{"a", 40, 100}, "+60 B", false},
              {{"a", 40, 40}, "+0 B", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(CompareListModel::differenceText(row.row), QString::fromUtf8(row.text));
    EXPECT_EQ(CompareListModel::shrinks(row.row), row.shrinks);
  }
}

TEST(CompareDifferenceDeathTest, a_difference_that_overflows_ends_the_program) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_DEATH(CompareListModel::differenceText({"a", -2, most}), "");
}

}  // namespace
}  // namespace tessaly
