#include "app/panes/AliasListState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "app/panes/FoundListFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DeadLink link(const std::string& path, const std::string& destination,
              const std::string& kind = "symlink") {
  return {.name = path.substr(path.rfind('/') + 1),
          .path = path,
          .destination = destination,
          .kind = kind};
}

class AliasList : public FoundListFixture<AliasListState, DeadLink> {
 protected:
  AliasList() : FoundListFixture(&PostScanAnalysis::Engines::deadLinks) {}
};

TEST_F(AliasList, each_link_has_one_row_in_the_order_of_the_session) {
  EXPECT_EQ(state_->rows()->rowCount(), 0);
  find({link("/r/in/caf\xe9", "../go\ne"), link("/r/b.desktop", "/srv/a", "alias"),
        link("/r/c", "", "alias")});
  EXPECT_THAT(column(AliasListModel::NameRole), ElementsAre("caf\uFFFD", "b.desktop", "c"));
  EXPECT_THAT(column(AliasListModel::PlaceRole),
              ElementsAre("/r/in/caf\uFFFD", "/r/b.desktop", "/r/c"));
  EXPECT_THAT(column(AliasListModel::TargetRole), ElementsAre("→ ../go\uFFFDe", "→ /srv/a", ""));
  EXPECT_THAT(column(AliasListModel::KindRole), ElementsAre("symlink", "alias", "alias"));
}

TEST_F(AliasList, locks_are_told_apart) {
  DeadLink lock = link("/r/.#notes", "ada@host.1:2");
  lock.isLock = true;
  find({link("/r/a", "x"), lock});
  EXPECT_THAT(column(AliasListModel::LockRole), ElementsAre("false", "true"));
}

TEST_F(AliasList, links_of_the_next_analysis_keep_their_rows) {
  find({link("/r/a", "x"), link("/r/b", "y")});
  const QPersistentModelIndex b = state_->rows()->index(1);
  const QSignalSpy resets(state_->rows(), &AliasListModel::modelReset);
  find({link("/r/b", "z"), link("/r/c", "")});
  EXPECT_EQ(b.row(), 0);
  EXPECT_THAT(column(AliasListModel::TargetRole), ElementsAre("→ z", ""));
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(AliasList, a_link_is_queued_as_a_file_of_no_kind_and_no_size) {
  find({link("/r/in/caf\xe9.mp4", "x")});
  state_->addToQueue(node(0));
  state_->addToQueue(node(0));
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  const DiskNode& queued = session().cleanupQueue().queue().front();
  EXPECT_EQ(queued.name(), "caf\xe9.mp4");
  EXPECT_EQ(queued.path(), "/r/in/caf\xe9.mp4");
  EXPECT_EQ(queued.size(), 0);
  EXPECT_FALSE(queued.isDir());
  EXPECT_EQ(queued.kind(), FileKind::other);
  EXPECT_EQ(queued.children().size(), 0U);
  EXPECT_FALSE(queued.mtime());
}

TEST_F(AliasList, a_link_that_the_tree_lacks_is_shown_in_the_file_manager) {
  find({link("/r/in/link", "x"), link("/r/in/caf\xe9", "y")});
  session().shown().setVizMode(VizMode::aliases);
  state_->showOnMap(node(0));
  EXPECT_EQ(session().shown().vizMode(), VizMode::aliases);
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre("/r/in/link")));
  state_->showOnMap(node(1));
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
}

TEST_F(AliasList, actions_do_nothing_for_a_handle_without_a_link) {
  find({link("/r/a", "x")});
  session().shown().setVizMode(VizMode::aliases);
  state_->showOnMap(NodeHandle());
  state_->addToQueue(NodeHandle());
  EXPECT_EQ(session().shown().vizMode(), VizMode::aliases);
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
