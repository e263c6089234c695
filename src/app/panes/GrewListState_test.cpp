#include "app/panes/GrewListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "app/model/NodeHandle.h"
#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t mega = 1 << 20U;

class GrewList : public SessionFixture {
 protected:
  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < state_.rows()->rowCount(); ++row)
      texts.push_back(
          state_.rows()->data(state_.rows()->index(row), role).toString().toStdString());
    return texts;
  }
  // Finishes a scan of a folder with items of these sizes.
  void scanWith(std::int64_t film, std::int64_t song) {
    scanTo(folder("/r", film + song, {file("/r/caf\xe9", film), file("/r/song", song)}));
  }

  GrewListState state_{session()};
  QAbstractItemModelTester tester_{state_.rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(GrewList, the_title_says_whether_there_is_growth_to_compare) {
  QSignalSpy changes(&state_, &GrewListState::titleChanged);
  EXPECT_EQ(state_.title(), "No growth to compare yet");
  scanWith(100 * mega, 50 * mega);
  scanWith(300 * mega, 50 * mega);
  ASSERT_FALSE(session().result().deltas().empty());
  EXPECT_EQ(state_.title(), "Grew since last scan of this folder");
  EXPECT_GE(changes.count(), 1);
  scanWith(300 * mega, 50 * mega);
  EXPECT_THAT(session().result().deltas(), IsEmpty());
  EXPECT_EQ(state_.title(), "No growth to compare yet");
}

TEST_F(GrewList, each_delta_has_one_row_in_the_order_of_the_session) {
  scanWith(100 * mega, 50 * mega);
  scanWith(1124 * mega, 90 * mega);
  std::vector<std::string> paths;
  for (const ScanDelta& delta : session().result().deltas()) paths.push_back(delta.path);
  ASSERT_THAT(paths, ElementsAre("/r", "/r/caf\xe9", "/r/song"));
  EXPECT_THAT(column(GrewListModel::NameRole), ElementsAre("r", "caf\uFFFD", "song"));
  EXPECT_THAT(column(GrewListModel::PlaceRole), ElementsAre("/r", "/r/caf\uFFFD", "/r/song"));
  EXPECT_THAT(column(GrewListModel::GrowthRole), ElementsAre("+1.0 GB", "+1.0 GB", "+40.0 MB"));
  EXPECT_THAT(column(GrewListModel::SizeRole), ElementsAre("1.2 GB", "1.1 GB", "90.0 MB"));
}

TEST_F(GrewList, each_row_has_the_node_of_its_item) {
  scanWith(100 * mega, 50 * mega);
  scanWith(1124 * mega, 90 * mega);
  const auto node = [this](int row) {
    return *state_.rows()
                ->data(state_.rows()->index(row), GrewListModel::NodeRole)
                .value<NodeHandle>()
                .node();
  };
  EXPECT_EQ(node(0), *session().navigation().current());
  EXPECT_EQ(node(1), file("/r/caf\xe9", 1124 * mega));
}

TEST_F(GrewList, a_row_is_shown_on_the_map_and_an_empty_handle_does_nothing) {
  scanWith(100 * mega, 50 * mega);
  scanWith(300 * mega, 50 * mega);
  session().shown().setVizMode(VizMode::grew);
  state_.showOnMap(
      state_.rows()->data(state_.rows()->index(1), GrewListModel::PathRole).value<PathHandle>());
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().selection().focused()->path(), "/r/caf\xe9");
  session().shown().setVizMode(VizMode::grew);
  state_.showOnMap(PathHandle());
  EXPECT_EQ(session().shown().vizMode(), VizMode::grew);
}

}  // namespace
}  // namespace tessaly
