#include "app/sidebar/PathListModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using Paths = std::vector<std::string>;

class PathListModelTest : public SessionFixture {
 protected:
  void start(PathListModel::List list, std::string_view key, const Paths& paths) {
    tester_.reset();
    model_.reset();
    settings_.setTexts(key, paths);
    restart();
    model_.emplace(session().choices(), list, session().homeDirectory());
    tester_.emplace(&*model_, QAbstractItemModelTester::FailureReportingMode::Fatal);
  }

  QVariant at(int row, int role) { return model_->data(model_->index(row), role); }
  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < model_->rowCount(); ++row)
      texts.push_back(at(row, role).toString().toStdString());
    return texts;
  }
  Paths handed() {
    Paths paths;
    for (int row = 0; row < model_->rowCount(); ++row)
      paths.push_back(at(row, PathListModel::PathRole).value<PathHandle>().path());
    return paths;
  }

  std::optional<PathListModel> model_;
  std::optional<QAbstractItemModelTester> tester_;
};

TEST_F(PathListModelTest, the_model_of_an_empty_list_is_empty) {
  const PathListModel model(session().choices(), PathListModel::Pins, session().homeDirectory());
  EXPECT_EQ(model.count(), 0);
}

TEST_F(PathListModelTest,
       pinned_and_recent_folders_have_their_last_part_as_name_except_the_disk_and_the_home) {
  for (const auto& [list, key] : {std::pair(PathListModel::Pins, "marrow.pins"),
                                  {PathListModel::Recents, "marrow.recents"}}) {
    start(list, key, {"/", "/home/user", "/home/user/Films", "/srv/user", "/media/a b/"});
    EXPECT_THAT(column(PathListModel::NameRole),
                ElementsAre("System Disk", "Home", "Films", "user", "a b"));
  }
}

TEST_F(PathListModelTest, every_excluded_folder_has_its_last_part_as_name) {
  start(PathListModel::Excludes, "marrow.excludes", {"/", "/home/user", "/srv/data"});
  EXPECT_THAT(column(PathListModel::NameRole), ElementsAre("/", "user", "data"));
  EXPECT_THAT(column(PathListModel::PlaceRole), ElementsAre("/", "/home/user", "/srv/data"));
}

TEST_F(PathListModelTest, rows_keep_the_bytes_of_names_that_are_not_utf8) {
  start(PathListModel::Recents, "marrow.recents", {"/a/caf\xe9", "/a/caf\xe8", "/a/two\nlines"});
  EXPECT_THAT(column(PathListModel::NameRole),
              ElementsAre("caf\uFFFD", "caf\uFFFD", "two\uFFFDlines"));
  EXPECT_THAT(handed(), ElementsAre("/a/caf\xe9", "/a/caf\xe8", "/a/two\nlines"));
}

TEST_F(PathListModelTest, adding_and_removing_a_folder_leaves_the_other_rows) {
  start(PathListModel::Pins, "marrow.pins", {"/a", "/b", "/c"});
  const QSignalSpy resets(&*model_, &PathListModel::modelReset);
  QSignalSpy removals(&*model_, &PathListModel::rowsRemoved);
  QSignalSpy insertions(&*model_, &PathListModel::rowsInserted);
  session().choices().togglePin("/b");
  session().choices().togglePin("/d");
  EXPECT_THAT(handed(), ElementsAre("/d", "/a", "/c"));
  EXPECT_EQ(resets.count(), 0);
  ASSERT_EQ(removals.count(), 1);
  EXPECT_EQ(removals.at(0).at(1).toInt(), 1);
  ASSERT_EQ(insertions.count(), 1);
  EXPECT_EQ(insertions.at(0).at(1).toInt(), 0);
}

TEST_F(PathListModelTest, scanning_a_recent_folder_again_moves_its_row_to_the_front) {
  start(PathListModel::Recents, "marrow.recents", {"/a", "/b", "/c"});
  const QSignalSpy removals(&*model_, &PathListModel::rowsRemoved);
  QSignalSpy moves(&*model_, &PathListModel::rowsMoved);
  scanTo(folder("/c", 5, {file("/c/f", 5)}));
  EXPECT_THAT(handed(), ElementsAre("/c", "/a", "/b"));
  EXPECT_EQ(removals.count(), 0);
  EXPECT_EQ(moves.count(), 1);
}

TEST_F(PathListModelTest, the_rows_follow_lists_with_few_entries_in_common) {
  start(PathListModel::Excludes, "marrow.excludes", {"/a", "/b", "/c", "/d"});
  const std::vector<Paths> steps = {
      {"/d", "/x", "/b"}, {"/x", "/x", "/b", "/x"}, {"/b", "/x"}, {}, {"/a"}, {"/c", "/b", "/a"}};
  for (const Paths& step : steps) {
    session().choices().setExcludes(step);
    EXPECT_EQ(handed(), step);
    EXPECT_EQ(model_->count(), static_cast<int>(step.size()));
  }
}

TEST_F(PathListModelTest, the_count_is_announced_only_when_it_changes) {
  start(PathListModel::Excludes, "marrow.excludes", {"/a", "/b"});
  const QSignalSpy counts(&*model_, &PathListModel::countChanged);
  session().choices().setExcludes({"/b", "/a"});
  EXPECT_EQ(counts.count(), 0);
  session().choices().removeExclude("/a");
  EXPECT_EQ(counts.count(), 1);
}

TEST_F(PathListModelTest, the_model_follows_only_its_own_list) {
  start(PathListModel::Pins, "marrow.pins", {"/a"});
  session().choices().setExcludes({"/x"});
  EXPECT_THAT(handed(), ElementsAre("/a"));
  const PathListModel excludes(session().choices(), PathListModel::Excludes,
                               session().homeDirectory());
  EXPECT_EQ(excludes.count(), 1);
}

}  // namespace
}  // namespace tessaly
