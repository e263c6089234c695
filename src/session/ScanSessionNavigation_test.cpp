#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

// /r
//   big/        600
//     deep/     400
//       film    400
//     song      200
//   Foo.app     300, without children
//   empty/        0
//   note         10
//   + 20 more    40
class Navigating : public SessionFixture {
 protected:
  using Paths = std::vector<std::string>;

  static DiskNode remainder() {
    DiskNode::Fields fields;
    fields.name = "+ 20 more";
    fields.path = "/r/__rest__";
    fields.size = 40;
    return DiskNode(fields);
  }

  const DiskNode film_ = file("/r/big/deep/film", 400);
  const DiskNode deep_ = folder("/r/big/deep", 400, {film_});
  const DiskNode song_ = file("/r/big/song", 200);
  const DiskNode big_ = folder("/r/big", 600, {deep_, song_});
  const DiskNode app_ = folder("/r/Foo.app", 300);
  const DiskNode empty_ = folder("/r/empty", 0);
  const DiskNode note_ = file("/r/note", 10);
  const DiskNode rest_ = remainder();
  const DiskNode root_ = folder("/r", 950, {big_, app_, empty_, note_, rest_});

  void SetUp() override { scanTo(root_); }

  void openBigAndDeep() {
    session().open(big_);
    session().open(deep_);
    ASSERT_EQ(stackPaths(), (Paths{"/r", "/r/big", "/r/big/deep"}));
  }
};

TEST_F(Navigating, current_is_the_last_node_of_the_stack) {
  EXPECT_EQ(session().navigation().current()->path(), "/r");
  session().open(big_);
  EXPECT_EQ(session().navigation().current()->path(), "/r/big");
}

// Back.

TEST_F(Navigating, back_leaves_the_node_on_screen) {
  openBigAndDeep();
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  session().navigation().back();
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/big"}));
  EXPECT_EQ(stack.count(), 1);
}

TEST_F(Navigating, back_does_not_leave_the_root) {
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  session().navigation().back();
  EXPECT_EQ(stackPaths(), Paths{"/r"});
  EXPECT_EQ(stack.count(), 0);
}

using NavigationWithoutTree = SessionFixture;

TEST_F(NavigationWithoutTree, navigation_without_a_tree_does_nothing) {
  session().navigation().back();
  session().navigation().jump(0);
  session().navigation().jump(-1);
  EXPECT_TRUE(session().navigation().stack().empty());
  EXPECT_FALSE(session().navigation().current());
}

TEST_F(Navigating, back_and_jump_keep_focus_and_selection) {
  openBigAndDeep();
  session().selection().selectNodes({film_, song_}, false);
  session().navigation().back();
  EXPECT_EQ(session().selection().focused(), song_);
  EXPECT_EQ(session().selection().selectedNodes(), (std::vector{film_, song_}));
  session().navigation().jump(0);
  EXPECT_EQ(session().selection().focused(), song_);
  EXPECT_EQ(session().selection().selectedNodes(), (std::vector{film_, song_}));
}

// Jump.

TEST_F(Navigating, jump_keeps_the_stack_up_to_the_index) {
  openBigAndDeep();
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  session().navigation().jump(1);
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/big"}));
  session().navigation().jump(0);
  EXPECT_EQ(stackPaths(), Paths{"/r"});
  EXPECT_EQ(stack.count(), 2);
}

TEST_F(Navigating, jump_to_the_last_index_changes_nothing) {
  openBigAndDeep();
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  session().navigation().jump(2);
  EXPECT_EQ(session().navigation().stack().size(), 3u);
  EXPECT_EQ(stack.count(), 0);
}

TEST_F(Navigating, jump_outside_the_stack_does_nothing) {
  openBigAndDeep();
  session().navigation().jump(-1);
  session().navigation().jump(3);
  session().navigation().jump(1000);
  EXPECT_EQ(session().navigation().stack().size(), 3u);
}

// Open.

TEST_F(Navigating, open_enters_a_folder_with_children) {
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  session().open(big_);
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/big"}));
  EXPECT_EQ(stack.count(), 1);
}

TEST_F(Navigating, open_takes_a_node_of_its_own_stack) {
  session().open(session().navigation().stack().front());
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r"}));
}

TEST_F(Navigating, open_does_nothing_for_a_file_an_empty_folder_and_a_remainder) {
  const auto toast = session().messages().toast();
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  session().open(note_);
  session().open(empty_);
  session().open(rest_);
  EXPECT_EQ(stack.count(), 0);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0u);
  EXPECT_EQ(session().messages().toast(), toast);
}

TEST_F(Navigating, open_walks_a_package_without_children) {
  for (const char* name :
       {"/r/Foo.app", "/r/FOO.APP", "/r/Photos.photoslibrary", "/r/Disk.SparseBundle"}) {
    session().open(folder(name, 300));
    EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 1u) << name;
    dispatch().drainAll();
  }
}

TEST_F(Navigating, open_walks_a_file_that_is_named_like_a_package) {
  session().open(file("/r/Tool.app", 5));
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 1u);
}

TEST_F(Navigating, open_enters_a_package_that_has_children) {
  session().open(folder("/r/Foo.app", 300, {folder("/r/Foo.app/Contents", 300)}));
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/Foo.app"}));
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0u);
}

// Expanding a package.

TEST_F(Navigating, expanding_a_package_shows_a_toast_and_its_contents) {
  walks().at(1).result = folder("/r/Foo.app", 300, {folder("/r/Foo.app/Contents", 300)});
  session().expandPackage(app_);
  EXPECT_EQ(session().messages().toast(), "Opening package Foo.app…");
  EXPECT_EQ(stackPaths(), Paths{"/r"});
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  dispatch().drainAll();
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/Foo.app"}));
  EXPECT_EQ(session().navigation().current()->children().size(), 1u);
  session().navigation().back();
  EXPECT_EQ(stackPaths(), Paths{"/r"});
}

TEST_F(Navigating, expanding_a_package_walks_only_it_and_excludes_nothing) {
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) filter.skipScan = true;
  session().choices().setFilters(filters);
  session().choices().setExcludes({"/r"});
  session().expandPackage(app_);
  dispatch().drainAll();
  const WalkScript& walk = walks().at(1);
  ASSERT_TRUE(walk.hasRun);
  EXPECT_EQ(walk.root, "/r/Foo.app");
  EXPECT_TRUE(walk.options.expandPackages);
  EXPECT_TRUE(walk.options.extraNames.empty());
  EXPECT_TRUE(walk.options.extraSuffixes.empty());
  EXPECT_TRUE(walk.options.extraPrefixes.empty());
  EXPECT_FALSE(walk.hadProgress);
}

TEST_F(Navigating, expanding_a_package_is_not_cancelled_by_cancel) {
  bool wasCancelled = true;
  walks().at(1).result = app_;
  walks().at(1).during = [&](const DiskScanner::Callbacks& callbacks) {
    session().run().cancel();
    wasCancelled = callbacks.isCancelled && callbacks.isCancelled();
  };
  session().expandPackage(app_);
  dispatch().drainAll();
  EXPECT_FALSE(wasCancelled);
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/Foo.app"}));
}

TEST_F(Navigating, a_package_expanded_during_a_scan_is_on_the_old_stack_until_the_scan_ends) {
  std::vector<Paths> stacks;
  QObject::connect(&session().navigation(), &Navigation::stackChanged,
                   [&] { stacks.push_back(stackPaths()); });
  walks().at(1).during = [&](const DiskScanner::Callbacks&) {
    session().expandPackage(app_);
    dispatch().drainAll();
    EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  };
  walks().at(1).result = root_;
  walks().at(2).result = app_;
  session().scan("/r");
  dispatch().drainAll();
  EXPECT_EQ(stacks, (std::vector<Paths>{{"/r", "/r/Foo.app"}, {"/r"}}));
}

TEST_F(Navigating, an_expanded_package_is_pushed_on_whatever_tree_is_shown_by_then) {
  walks().at(1).during = [&](const DiskScanner::Callbacks&) {
    session().scan("/other");
    dispatch().drainAll();
    EXPECT_EQ(stackPaths(), Paths{"/other"});
  };
  walks().at(1).result = app_;
  walks().at(2).result = folder("/other", 5, {file("/other/f", 5)});
  session().expandPackage(app_);
  dispatch().drainAll();
  EXPECT_EQ(stackPaths(), (Paths{"/other", "/r/Foo.app"}));
}

TEST_F(Navigating, expanding_a_package_is_cancelled_with_its_session) {
  bool wasCancelled = false;
  walks().at(1).during = [&](const DiskScanner::Callbacks& callbacks) {
    endSession();
    wasCancelled = callbacks.isCancelled();
  };
  session().expandPackage(app_);
  dispatch().drainAll();
  EXPECT_TRUE(wasCancelled);
}

// Showing a path in the map.

TEST_F(Navigating, focus_on_a_file_shows_it_inside_its_folder) {
  session().shown().setVizMode(VizMode::largest);
  session().shown().setPane(MainPane::apps);
  session().focusPath("/r/big/deep/film");
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/big", "/r/big/deep"}));
  EXPECT_EQ(session().selection().focused(), film_);
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  EXPECT_TRUE(workspace_.revealed.empty());
}

TEST_F(Navigating, focus_on_a_folder_enters_it) {
  session().focusPath("/r/empty");
  EXPECT_EQ(stackPaths(), (Paths{"/r", "/r/empty"}));
  EXPECT_EQ(session().selection().focused(), empty_);
}

TEST_F(Navigating, focus_on_the_root_goes_to_the_top) {
  openBigAndDeep();
  session().focusPath("/r");
  EXPECT_EQ(stackPaths(), Paths{"/r"});
  EXPECT_EQ(session().selection().focused(), root_);
}

TEST_F(Navigating, focus_on_a_root_that_is_a_file_shows_it) {
  scanTo(file("/single", 5));
  session().focusPath("/single");
  EXPECT_EQ(stackPaths(), Paths{"/single"});
  EXPECT_EQ(session().selection().focused()->path(), "/single");
}

TEST_F(Navigating, focus_starts_at_the_root_whatever_folder_is_on_screen) {
  openBigAndDeep();
  session().focusPath("/r/note");
  EXPECT_EQ(stackPaths(), Paths{"/r"});
  EXPECT_EQ(session().selection().focused(), note_);
}

TEST_F(Navigating, focus_reveals_a_path_that_the_tree_does_not_contain) {
  openBigAndDeep();
  session().shown().setVizMode(VizMode::largest);
  session().shown().setPane(MainPane::apps);
  session().focusPath("/r/big/pruned\xff");
  EXPECT_EQ(workspace_.revealed, (std::vector<Paths>{{"/r/big/pruned\xff"}}));
  EXPECT_EQ(session().navigation().stack().size(), 3u);
  EXPECT_FALSE(session().selection().focused());
  EXPECT_EQ(session().shown().vizMode(), VizMode::largest);
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
}

TEST_F(NavigationWithoutTree, focus_without_a_tree_reveals_the_path) {
  session().focusPath("/r/note");
  EXPECT_EQ(workspace_.revealed, (std::vector<std::vector<std::string>>{{"/r/note"}}));
  EXPECT_FALSE(session().selection().focused());
}

TEST_F(Navigating, reveal_passes_on_the_bytes_of_the_path) {
  session().navigation().reveal(file("/r/caf\xe9", 1));
  EXPECT_EQ(workspace_.revealed, (std::vector<Paths>{{"/r/caf\xe9"}}));
  EXPECT_TRUE(workspace_.opened.empty());
}

}  // namespace
}  // namespace tessaly
