#include "app/panes/DuplicateListState.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "app/panes/FoundListFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t mega = 1LL << 20U;

DuplicateGroup groupOf(const std::string& digest, std::int64_t bytes,
                       const std::vector<std::string>& paths) {
  DuplicateGroup group = {.digest = digest, .bytes = bytes};
  for (const std::string& path : paths)
    group.files.push_back({.name = path.substr(path.rfind('/') + 1), .path = path, .size = bytes});
  return group;
}

ShareGroup sharedBy(const std::vector<std::string>& paths) {
  ShareGroup group = {.id = "inode-1", .kind = "hardlink"};
  for (const std::string& path : paths) group.files.push_back({.path = path});
  return group;
}

class DuplicateList : public FoundListFixture<DuplicateListState, DuplicateGroup> {
 protected:
  DuplicateList() {
    analysis_.duplicates = [this](const PostScanAnalysis::FinishedScan& scan, const auto&) {
      if (reported_) scan.duplicates.progress(*reported_);
      if (reported_) runMain();
      if (during_) during_();
      return found_;
    };
    analysis_.cloneGroups = [this](const auto&, const auto&) { return shared_; };
    start();
  }

  void find(std::vector<DuplicateGroup> groups, std::vector<ShareGroup> shared = {}) {
    shared_ = std::move(shared);
    FoundListFixture::find(std::move(groups));
  }
  void queue(const DiskNode& node) { session().cleanupQueue().addToQueue(node); }

  std::optional<DuplicateProgress> reported_;  // by the engine
  std::function<void()> during_;               // called after the report has arrived
  std::vector<ShareGroup> shared_;
};

TEST_F(DuplicateList, each_copy_has_one_row_and_the_first_of_a_group_has_the_heading) {
  EXPECT_EQ(state_->rows()->rowCount(), 0);
  EXPECT_FALSE(state_->hasRows());
  const QSignalSpy filled(state_.get(), &DuplicateListState::hasRowsChanged);
  find({groupOf("0123456789abcdef", 60 * mega, {"/r/in/caf\xe9", "/r/b\n.iso", "/r/c.iso"}),
        groupOf("fedcba9876543210", 80 * mega, {"/r/d", "/r/e"})});
  EXPECT_THAT(column(DuplicateListModel::GroupRole),
              ElementsAre("3× 60.0 MB", "", "", "2× 80.0 MB", ""));
  EXPECT_THAT(column(DuplicateListModel::DigestRole),
              ElementsAre("0123456789", "", "", "fedcba9876", ""));
  EXPECT_THAT(column(DuplicateListModel::PlaceRole),
              ElementsAre("/r/in/caf\uFFFD", "/r/b\uFFFD.iso", "/r/c.iso", "/r/d", "/r/e"));
  EXPECT_THAT(column(DuplicateListModel::NameRole),
              ElementsAre("caf\uFFFD", "b\uFFFD.iso", "c.iso", "d", "e"));
  EXPECT_THAT(column(DuplicateListModel::SizeRole),
              ElementsAre("60.0 MB", "60.0 MB", "60.0 MB", "80.0 MB", "80.0 MB"));
  EXPECT_TRUE(state_->hasRows());
  EXPECT_EQ(filled.count(), 1);
}

TEST_F(DuplicateList, copies_of_the_next_analysis_keep_their_rows) {
  find({groupOf("a", 60, {"/r/a", "/r/b", "/r/c"}), groupOf("d", 50, {"/r/d", "/r/e"})});
  const QPersistentModelIndex b = state_->rows()->index(1);
  const QPersistentModelIndex e = state_->rows()->index(4);
  const QSignalSpy resets(state_->rows(), &DuplicateListModel::modelReset);
  find({groupOf("d", 50, {"/r/d", "/r/e"}), groupOf("a", 60, {"/r/b", "/r/c"})});
  EXPECT_EQ(b.row(), 2);
  EXPECT_EQ(e.row(), 1);
  EXPECT_THAT(column(DuplicateListModel::GroupRole), ElementsAre("2× 50 B", "", "2× 60 B", ""));
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(DuplicateList, a_copy_is_queued_as_a_file_with_its_name_path_size_and_kind) {
  find({groupOf("a", 60 * mega, {"/r/in/caf\xe9.iso", "/r/b"})});
  state_->addToQueue(node(0));
  state_->addToQueue(node(0));
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  const DiskNode& queued = session().cleanupQueue().queue().front();
  EXPECT_EQ(queued.name(), "caf\xe9.iso");
  EXPECT_EQ(queued.path(), "/r/in/caf\xe9.iso");
  EXPECT_EQ(queued.size(), 60 * mega);
  EXPECT_FALSE(queued.isDir());
  EXPECT_EQ(queued.kind(), FileKind::disk);
  EXPECT_EQ(queued.children().size(), 0U);
  EXPECT_FALSE(queued.mtime());
}

TEST_F(DuplicateList, a_group_warns_while_every_copy_of_it_is_queued) {
  find({groupOf("a", 60, {"/r/a", "/r/b"}), groupOf("d", 50, {"/r/d", "/r/e"})});
  const auto warnings = [this] { return column(DuplicateListModel::NoneKeptRole); };
  EXPECT_THAT(warnings(), ElementsAre("false", "false", "false", "false"));
  queue(file("/r/d", 50));
  queue(file("/r/a", 60));
  EXPECT_THAT(warnings(), ElementsAre("false", "false", "false", "false"));
  const QSignalSpy changes(state_->rows(), &DuplicateListModel::dataChanged);
  queue(file("/r/e", 50));
  EXPECT_THAT(warnings(), ElementsAre("false", "false", "true", "false"));
  EXPECT_EQ(changes.count(), 1);
  session().cleanupQueue().removeFromQueue("/r/d");
  EXPECT_THAT(warnings(), ElementsAre("false", "false", "false", "false"));
}

TEST_F(DuplicateList, copies_in_queued_folders_are_queued_too) {
  find(
      {groupOf("a", 60, {"/r/in/a", "/r/in/deep/b", "/r/c"}), groupOf("d", 5, {"/r/inn", "/r/x"})});
  const auto warnings = [this] { return column(DuplicateListModel::NoneKeptRole); };
  queue(folder("/r/in", 120));
  queue(file("/r/c", 60));
  queue(file("/r/x", 5));
  EXPECT_THAT(warnings(), ElementsAre("true", "false", "false", "false", "false"));
  queue(folder("/", 200));
  EXPECT_THAT(warnings(), ElementsAre("true", "false", "false", "true", "false"));
}

TEST_F(DuplicateList, copies_that_share_their_blocks_with_another_of_their_group_are_marked) {
  find({groupOf("a", 60, {"/r/a", "/r/b", "/r/c"}), groupOf("d", 50, {"/r/d", "/r/e"})},
       {sharedBy({"/r/a", "/r/c", "/r/d"}), sharedBy({"/r/e", "/elsewhere"})});
  EXPECT_THAT(column(DuplicateListModel::SameBlocksRole),
              ElementsAre("true", "false", "true", "false", "false"));
  DuplicateListState opened(session());
  EXPECT_TRUE(
      opened.rows()->data(opened.rows()->index(2), DuplicateListModel::SameBlocksRole).toBool());
}

TEST_F(DuplicateList, a_copy_is_shown_on_the_map_or_else_in_the_file_manager) {
  find({groupOf("a", 60, {"/r/in/caf\xe9", "/r/gone"})});
  session().shown().setVizMode(VizMode::duplicates);
  state_->showOnMap(node(1));
  EXPECT_EQ(session().shown().vizMode(), VizMode::duplicates);
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre("/r/gone")));
  state_->showOnMap(node(0));
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().selection().focused()->path(), "/r/in/caf\xe9");
}

TEST_F(DuplicateList, the_progress_of_a_comparison_is_a_text_until_it_ends) {
  EXPECT_EQ(state_->progress(), "");
  const QSignalSpy changes(state_.get(), &DuplicateListState::progressChanged);
  reported_ = DuplicateProgress{
      .files = 12, .fileCount = 40, .bytes = 1229 * mega, .byteCount = 8192 * mega};
  QString during;
  during_ = [&] { during = state_->progress(); };
  find({groupOf("a", 60, {"/r/a", "/r/b"})});
  EXPECT_EQ(during, "Comparing 12 of 40 files · 1.2 of 8 GB");
  EXPECT_EQ(state_->progress(), "");
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(DuplicateList, actions_do_nothing_for_a_handle_without_a_file) {
  find({groupOf("a", 60, {"/r/a", "/r/b"})});
  session().shown().setVizMode(VizMode::duplicates);
  state_->showOnMap(NodeHandle());
  state_->addToQueue(NodeHandle());
  EXPECT_EQ(session().shown().vizMode(), VizMode::duplicates);
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
