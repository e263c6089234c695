// A remainder represents many items and is not an item itself. No operation acts on it, nor on a
// file on the disk that has its path.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "session/SessionFixture_test.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Remainder : public SessionFixture {
 protected:
  Remainder() {
    for (const DiskNode* node : {&file_, &likeIt_, &film_}) machine_.trash.put(node->path());
    scanTo(tree_);
    toast_ = session().messages().toast();
  }

  static std::vector<std::string> paths(const std::vector<DiskNode>& nodes) {
    std::vector<std::string> all;
    for (const DiskNode& node : nodes) all.push_back(node.path());
    return all;
  }
  void expectNothingDone() {
    for (const DiskNode* node : {&file_, &likeIt_, &film_}) {
      EXPECT_TRUE(machine_.trash.has(node->path())) << node->path();
    }
    EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
    EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
    EXPECT_THAT(session().selection().selected(), IsEmpty());
    EXPECT_THAT(session().navigation().stack(), SizeIs(1));
    EXPECT_THAT(machine_.workspace.revealed, IsEmpty());
    EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
    EXPECT_EQ(machine_.pasteboard.text, std::nullopt);
    EXPECT_EQ(session().messages().toast(), toast_);
    EXPECT_EQ(session().messages().failure(), std::nullopt);
    EXPECT_EQ(session().shown().menuNode(), std::nullopt);
    EXPECT_EQ(session().removal().criticalWarning(), std::nullopt);
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
    EXPECT_EQ(walks().ran(), 1U);
  }

  DiskNode remainder(const std::string& parent) const {
    DiskNode::Fields fields;
    fields.name = "+ 6 more";
    fields.path = parent + "/__rest__";
    fields.size = 5;
    return DiskNode(fields);
  }

  const DiskNode film_ = file("/data/film", 9);
  const DiskNode file_ = file("/data/__rest__", 8);
  const DiskNode likeIt_ = file("/data/+ 6 more", 7);
  const DiskNode rest_ = remainder("/data");
  const DiskNode tree_ = folder("/data", 40, {film_, file_, likeIt_, rest_});
  std::optional<std::string> toast_;
};

TEST_F(Remainder, a_focused_remainder_is_not_trashed_nor_is_the_folder_on_screen) {
  session().selection().setFocused(rest_);
  session().trashFocused();
  expectNothingDone();
}

TEST_F(Remainder, a_remainder_is_not_trashed_from_a_menu_which_closes) {
  session().shown().setMenuNode(film_);
  session().trash(rest_);
  expectNothingDone();
}

TEST_F(Remainder, a_remainder_of_a_critical_folder_is_neither_trashed_nor_warned_of) {
  const DiskNode critical = remainder("/usr");
  machine_.trash.put("/usr/__rest__");
  session().selection().setFocused(critical);
  session().trashFocused();
  session().trash(critical);
  session().zipThenTrash({critical});
  expectNothingDone();
  session().removal().setCriticalWarning(critical);
  session().overruleWarning();
  EXPECT_TRUE(machine_.trash.has("/usr/__rest__"));
  expectNothingDone();
}

TEST_F(Remainder, a_remainder_is_not_queued) {
  session().cleanupQueue().addToQueue(rest_);
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  expectNothingDone();
}

TEST_F(Remainder, a_remainder_is_not_selected) {
  session().selection().toggleSelect(rest_);
  session().selection().selectNodes({rest_}, true);
  session().queueSelected();
  expectNothingDone();
  EXPECT_EQ(session().selection().focused(), std::nullopt);
  session().selection().selectNodes({film_, rest_}, false);
  EXPECT_THAT(paths(session().selection().selectedNodes()), ElementsAre(film_.path()));
  EXPECT_EQ(session().selection().focused(), film_);
  session().selection().selectNodes({rest_}, false);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
}

TEST_F(Remainder, select_all_selects_files_named_like_a_remainder_and_not_the_remainder) {
  session().selectAllCurrent();
  EXPECT_THAT(paths(session().selection().selectedNodes()),
              ElementsAre(film_.path(), file_.path(), likeIt_.path()));
  EXPECT_EQ(session().messages().toast(), "Selected 3");
}

TEST_F(Remainder, a_remainder_is_not_archived_nor_is_the_file_of_its_path) {
  // A session archives only items that exist on the disk.
  const TempTree disk("__rest__ 4K\n");
  ScanSession session(machine_.services(disk.path()));
  session.zipThenTrash({remainder(disk.path())});
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  EXPECT_EQ(session.removal().criticalWarning(), std::nullopt);
  session.zipThenTrash({remainder(disk.path()), file(disk.at("__rest__"), 1)});
  EXPECT_THAT(machine_.savePanel.requests, SizeIs(1));
}

TEST_F(Remainder, a_remainder_is_not_revealed) {
  session().navigation().reveal(rest_);
  expectNothingDone();
}

TEST_F(Remainder, a_remainder_is_not_opened) {
  DiskNode::Fields fields;
  fields.name = "+ 6 more.app";
  fields.path = rest_.path();
  fields.isDir = true;
  const DiskNode odd(fields, {film_});
  for (const DiskNode& node : {rest_, odd}) {
    session().open(node);
    session().expandPackage(node);
    dispatch().drainAll();
  }
  expectNothingDone();
}

TEST_F(Remainder, copying_a_remainder_leaves_the_pasteboard_unchanged) {
  session().selection().setFocused(rest_);
  session().selection().copySelectedPaths();
  expectNothingDone();
}

TEST_F(Remainder, a_remainder_has_no_menu) {
  session().shown().setMenuNode(rest_);
  expectNothingDone();
}

TEST_F(Remainder, the_map_does_not_navigate_to_a_remainder) {
  scanTo(folder("/data", 9, {film_, rest_}));
  session().shown().setVizMode(VizMode::largest);
  session().focusPath("/data/__rest__");
  EXPECT_EQ(session().selection().focused(), std::nullopt);
  EXPECT_EQ(session().shown().vizMode(), VizMode::largest);
  EXPECT_THAT(machine_.workspace.revealed, IsEmpty());
}

TEST_F(Remainder, a_file_with_the_path_of_a_remainder_can_be_shown) {
  session().focusPath(file_.path());
  EXPECT_EQ(session().selection().focused(), file_);
  // The file may also be among those that the tree leaves out.
  const TempTree disk("__rest__ 4K\n");
  scanTo(folder(disk.path(), 9, {remainder(disk.path())}));
  session().focusPath(disk.at("__rest__"));
  EXPECT_THAT(machine_.workspace.revealed, ElementsAre(ElementsAre(disk.at("__rest__"))));
}

TEST_F(Remainder, files_named_like_a_remainder_are_treated_as_files) {
  for (const DiskNode& node : {file_, likeIt_}) {
    session().navigation().reveal(node);
    session().cleanupQueue().addToQueue(node);
    session().selection().toggleSelect(node);
    session().shown().setMenuNode(node);
    EXPECT_EQ(session().shown().menuNode(), node);
    session().selection().setFocused(node);
    session().trashFocused();
    EXPECT_FALSE(machine_.trash.has(node.path()));
  }
  EXPECT_THAT(machine_.workspace.revealed, SizeIs(2));
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(2));
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
}

}  // namespace
}  // namespace tessaly
