#include "app/panes/CloneListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "app/panes/FoundListFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr std::int64_t mega = 1LL << 20U;

ShareGroup groupOf(const std::string& id, const std::string& kind, std::int64_t logical,
                   std::int64_t unique, const std::vector<std::string>& paths) {
  ShareGroup group = {.id = id, .kind = kind, .logical = logical, .unique = unique};
  for (const std::string& path : paths)
    group.files.push_back({.name = path.substr(path.rfind('/') + 1),
                           .path = path,
                           .logical = logical / static_cast<std::int64_t>(paths.size())});
  return group;
}

class CloneList : public FoundListFixture<CloneListState, ShareGroup> {
 protected:
  CloneList() : FoundListFixture(&PostScanAnalysis::Engines::cloneGroups) {}
};

TEST_F(CloneList, each_file_has_one_row_and_the_first_of_a_group_has_the_heading) {
  EXPECT_EQ(state_->rows()->rowCount(), 0);
  find({groupOf("clone-7", "clone", 20 * mega, 10 * mega, {"/r/in/caf\xe9", "/r/b\n"}),
        groupOf("inode-3", "hardlink", 9 * mega, 3 * mega, {"/r/c", "/r/d", "/r/e"})});
  EXPECT_THAT(column(CloneListModel::KindRole), ElementsAre("Clone", "", "Hard link", "", ""));
  EXPECT_THAT(column(CloneListModel::CountRole), ElementsAre("2×", "", "3×", "", ""));
  EXPECT_THAT(column(CloneListModel::SavesRole),
              ElementsAre("saves 10.0 MB", "", "saves 6.0 MB", "", ""));
  EXPECT_THAT(column(CloneListModel::SizesRole),
              ElementsAre("Logical 20.0 MB · unique 10.0 MB", "", "Logical 9.0 MB · unique 3.0 MB",
                          "", ""));
  EXPECT_THAT(column(CloneListModel::PlaceRole),
              ElementsAre("/r/in/caf\uFFFD", "/r/b\uFFFD", "/r/c", "/r/d", "/r/e"));
  EXPECT_EQ(node(0).node()->path(), "/r/in/caf\xe9");
}

TEST_F(CloneList, a_group_never_saves_less_than_nothing) {
  find({groupOf("clone-7", "clone", 2 * mega, 3 * mega, {"/r/a", "/r/b"})});
  EXPECT_THAT(column(CloneListModel::SavesRole), ElementsAre("saves 0 B", ""));
}

TEST_F(CloneList, files_of_the_next_analysis_keep_their_rows) {
  find({groupOf("clone-7", "clone", 20, 10, {"/r/a", "/r/b"}),
        groupOf("inode-3", "hardlink", 9, 3, {"/r/c", "/r/d", "/r/e"})});
  const QPersistentModelIndex d = state_->rows()->index(3);
  const QSignalSpy resets(state_->rows(), &CloneListModel::modelReset);
  find({groupOf("inode-3", "hardlink", 6, 3, {"/r/d", "/r/e"}),
        groupOf("clone-7", "clone", 30, 10, {"/r/a", "/r/b", "/r/x"})});
  EXPECT_EQ(d.row(), 0);
  EXPECT_THAT(column(CloneListModel::CountRole), ElementsAre("2×", "", "3×", "", ""));
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(CloneList, a_file_is_shown_on_the_map_or_else_in_the_file_manager) {
  find({groupOf("clone-7", "clone", 20, 10, {"/r/in/caf\xe9", "/r/gone"})});
  session().shown().setVizMode(VizMode::clones);
  state_->showOnMap(NodeHandle());
  EXPECT_EQ(session().shown().vizMode(), VizMode::clones);
  state_->showOnMap(node(1));
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre("/r/gone")));
  state_->showOnMap(node(0));
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().selection().focused()->path(), "/r/in/caf\xe9");
}

}  // namespace
}  // namespace tessaly
