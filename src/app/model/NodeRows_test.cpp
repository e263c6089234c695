#include "app/model/NodeRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

class NodeRowsTest : public testing::Test {
 protected:
  Texts column(int role) {
    Texts texts;
    for (int row = 0; row < rows_.rowCount(); ++row)
      texts.push_back(rows_.data(rows_.index(row), role).toString().toStdString());
    return texts;
  }
  DiskNode node(int row) {
    return *rows_.data(rows_.index(row), NodeRows::NodeRole).value<NodeHandle>().node();
  }
  Texts paths() {
    Texts paths;
    for (int row = 0; row < rows_.rowCount(); ++row) paths.push_back(node(row).path());
    return paths;
  }

  NodeRows rows_;
  QAbstractItemModelTester tester_{&rows_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(NodeRowsTest, there_are_no_rows_at_first) {
  EXPECT_EQ(rows_.rowCount(), 0);
}

TEST_F(NodeRowsTest, each_node_has_one_row_in_the_given_order) {
  rows_.set({file("/b/second", 1536), folder("/a/first", 1LL << 30U)});
  EXPECT_THAT(column(NodeRows::NameRole), ElementsAre("second", "first"));
  EXPECT_THAT(column(NodeRows::PlaceRole), ElementsAre("/b/second", "/a/first"));
  EXPECT_THAT(column(NodeRows::KindRole), ElementsAre("File", "Folder"));
  EXPECT_THAT(column(NodeRows::SizeRole), ElementsAre("1.5 KB", "1.0 GB"));
  EXPECT_THAT(paths(), ElementsAre("/b/second", "/a/first"));
}

TEST_F(NodeRowsTest, rows_keep_the_bytes_of_names_that_are_not_utf8) {
  rows_.set({file("/a/caf\xe9", 1), file("/a/caf\xe8", 1), file("/a/two\nlines", 1)});
  EXPECT_THAT(column(NodeRows::NameRole), ElementsAre("caf\uFFFD", "caf\uFFFD", "two\uFFFDlines"));
  EXPECT_THAT(column(NodeRows::PlaceRole),
              ElementsAre("/a/caf\uFFFD", "/a/caf\uFFFD", "/a/two\uFFFDlines"));
  EXPECT_THAT(paths(), ElementsAre("/a/caf\xe9", "/a/caf\xe8", "/a/two\nlines"));
}

TEST_F(NodeRowsTest, every_kind_of_file_has_a_name) {
  const std::pair<FileKind, const char*> kinds[] = {
      {FileKind::app, "Application"}, {FileKind::video, "Video"},
      {FileKind::image, "Image"},     {FileKind::document, "Document"},
      {FileKind::code, "Developer"},  {FileKind::archive, "Archive"},
      {FileKind::disk, "Disk image"}, {FileKind::other, "File"}};
  std::vector<DiskNode> files;
  Texts expected;
  for (const auto& [kind, word] : kinds) {
    files.push_back(DiskNode({.name = word, .path = std::string("/r/") + word, .kind = kind}));
    expected.emplace_back(word);
  }
  rows_.set(files);
  EXPECT_EQ(column(NodeRows::KindRole), expected);
}

TEST_F(NodeRowsTest, rows_whose_path_remains_are_kept) {
  rows_.set({file("/a", 3), file("/b", 2), file("/c", 1)});
  const QPersistentModelIndex c = rows_.index(2);
  const QSignalSpy resets(&rows_, &NodeRows::modelReset);
  QSignalSpy contents(&rows_, &NodeRows::dataChanged);
  rows_.set({file("/c", 4), file("/a", 3), file("/new", 2)});
  EXPECT_THAT(paths(), ElementsAre("/c", "/a", "/new"));
  EXPECT_EQ(column(NodeRows::SizeRole)[0], "4 B");
  EXPECT_EQ(node(0), file("/c", 4));
  EXPECT_EQ(c.row(), 0);
  ASSERT_EQ(contents.count(), 1);
  EXPECT_EQ(contents.at(0).at(0).toModelIndex().row(), 0);
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(NodeRowsTest, a_row_changes_with_its_kind_and_its_size_but_not_with_the_tree_below_it) {
  rows_.set({folder("/a", 3)});
  const QSignalSpy contents(&rows_, &NodeRows::dataChanged);
  rows_.set({folder("/a", 3, {file("/a/b", 3)})});
  EXPECT_EQ(contents.count(), 0);
  rows_.set({file("/a", 3)});
  EXPECT_EQ(contents.count(), 1);
  EXPECT_THAT(column(NodeRows::KindRole), ElementsAre("File"));
  rows_.set({file("/a", 4)});
  EXPECT_EQ(contents.count(), 2);
}

TEST_F(NodeRowsTest, rows_are_removed_together) {
  rows_.set({file("/a", 3), file("/b", 2), file("/c", 1)});
  const QSignalSpy removals(&rows_, &NodeRows::rowsRemoved);
  rows_.set({});
  EXPECT_THAT(paths(), IsEmpty());
  EXPECT_EQ(removals.count(), 1);
}

}  // namespace
}  // namespace tessaly
