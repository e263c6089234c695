#include "scan/DiskNode.h"

#include <forward_list>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/mman.h>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include "scan/DiskTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

static_assert(std::forward_iterator<DiskNode::Children::Iterator>);
static_assert(std::is_nothrow_move_constructible_v<DiskNode>);

DiskNode file(const std::string& path, std::int64_t size) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return DiskNode({name, path, size, false, FileKind::other, std::nullopt});
}

DiskNode folder(const std::string& path, std::int64_t size,
                const std::vector<DiskNode>& children = {}) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return DiskNode({name, path, size, true, FileKind::folder, 12.5}, children);
}

std::vector<std::string> namesOf(const DiskNode::Children& children) {
  std::vector<std::string> names;
  for (const DiskNode& child : children) names.emplace_back(child.name());
  return names;
}

DiskTree::PathForm formOf(const DiskNode& node) {
  return DiskTree::of(node).entry(DiskTree::indexOf(node)).pathForm();
}

// A chain of folders, each inside the previous one, the lowest at `depth`.
DiskNode chainOf(int depth, std::int64_t lowestSize) {
  DiskTreeBuilder builder;
  builder.open({"top", 1, true, FileKind::folder, std::nullopt}, "/top");
  for (int level = 1; level <= depth; ++level) {
    builder.openBelow({"d", level == depth ? lowestSize : 1, true, FileKind::folder, std::nullopt});
  }
  for (int level = 0; level <= depth; ++level) builder.close();
  return builder.finish();
}

TEST(DiskTree, an_entry_of_a_tree_takes_forty_bytes) {
  EXPECT_EQ(sizeof(DiskTree::Entry), 40U);
}

TEST(DiskNode, a_default_node_is_an_empty_file_without_a_name) {
  const DiskNode node;
  EXPECT_EQ(node.name(), "");
  EXPECT_EQ(node.path(), "");
  EXPECT_EQ(node.size(), 0);
  EXPECT_FALSE(node.isDir());
  EXPECT_EQ(node.kind(), FileKind::other);
  EXPECT_EQ(node.mtime(), std::nullopt);
  EXPECT_TRUE(node.children().empty());
  EXPECT_EQ(node.children().begin(), node.children().end());
  EXPECT_EQ(node.subtreeCount(), 1U);
  EXPECT_EQ(node, DiskNode(DiskNode::Fields{}));
  EXPECT_EQ(std::hash<DiskNode>{}(node), std::hash<DiskNode>{}(DiskNode(DiskNode::Fields{})));
}

TEST(DiskNode, a_node_that_was_moved_away_is_a_default_node) {
  DiskNode parent = folder("/a", 5, {file("/a/b", 5)});
  DiskNode node = parent.children().front();
  const DiskNode taken = std::move(node);
  EXPECT_EQ(taken.path(), "/a/b");
  // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): this is what is promised
  EXPECT_EQ(node, DiskNode());
  EXPECT_EQ(node.name(), "");
  // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
}

TEST(DiskNode, a_node_returns_the_fields_it_was_made_from) {
  const DiskNode node({"clip.mov", "/media/clip.mov", 4096, false, FileKind::video, 1700000000.25});
  EXPECT_EQ(node.name(), "clip.mov");
  EXPECT_EQ(node.path(), "/media/clip.mov");
  EXPECT_EQ(node.size(), 4096);
  EXPECT_FALSE(node.isDir());
  EXPECT_EQ(node.kind(), FileKind::video);
  EXPECT_EQ(node.mtime(), 1700000000.25);
}

TEST(DiskNode, children_keep_the_given_order) {
  const DiskNode node =
      folder("/a", 10, {folder("/a/b", 6, {file("/a/b/x", 6)}), file("/a/c", 3), file("/a/d", 1)});
  const DiskNode::Children children = node.children();
  EXPECT_EQ(children.size(), 3U);
  EXPECT_THAT(namesOf(children), ElementsAre("b", "c", "d"));
  EXPECT_EQ(children.front().name(), "b");
  EXPECT_EQ(children[2].path(), "/a/d");
  EXPECT_EQ(children[0].children().front().path(), "/a/b/x");
  EXPECT_THAT(namesOf(children[1].children()), IsEmpty());
  EXPECT_EQ(node.subtreeCount(), 5U);
  EXPECT_EQ(children[0].subtreeCount(), 2U);
}

TEST(DiskNode, children_of_a_temporary_node_outlive_it) {
  std::vector<std::string> names;
  for (const DiskNode& child : folder("/a", 2, {file("/a/b", 1), file("/a/c", 1)}).children()) {
    names.emplace_back(child.name());
  }
  EXPECT_THAT(names, ElementsAre("b", "c"));
}

TEST(DiskNode, a_node_keeps_its_tree_alive) {
  DiskNode leaf;
  {
    const DiskNode root = folder("/a", 2, {folder("/a/b", 2, {file("/a/b/c", 2)})});
    leaf = root.children().front().children().front();
  }
  EXPECT_EQ(leaf.path(), "/a/b/c");
  EXPECT_EQ(leaf.size(), 2);
}

TEST(DiskNode, a_copy_shares_the_block_of_its_original) {
  const DiskNode node = folder("/a", 2, {file("/a/b", 2)});
  DiskNode copy;
  copy = node;
  EXPECT_EQ(copy.name().data(), node.name().data());
}

TEST(DiskNode, a_path_below_the_root_of_the_disk_has_one_slash) {
  const DiskNode root({"Macintosh HD", "/", 3, true, FileKind::folder, std::nullopt},
                      {file("/a", 2), file("/__rest__", 1)});
  EXPECT_EQ(root.path(), "/");
  EXPECT_EQ(root.children()[0].path(), "/a");
  EXPECT_EQ(formOf(root.children()[0]), DiskTree::PathForm::name);
}

TEST(DiskNode, a_remainder_has_a_path_of_its_own_below_its_parent) {
  DiskTreeBuilder builder;
  builder.open({"a", 9, true, FileKind::folder, std::nullopt}, "/x/a");
  builder.openBelow({"+ 20 more", 9, false, FileKind::other, std::nullopt}, "__rest__");
  builder.close();
  builder.close();
  const DiskNode remainder = builder.finish().children().front();
  EXPECT_EQ(remainder.name(), "+ 20 more");
  EXPECT_EQ(remainder.path(), "/x/a/__rest__");
  EXPECT_EQ(formOf(remainder), DiskTree::PathForm::component);
}

TEST(DiskNode, names_keep_bytes_that_are_not_utf8) {
  const std::string odd = "caf\xe9\n\xff\x80";
  const DiskNode node = folder("/\xfe", 1, {file("/\xfe/" + odd, 1)});
  EXPECT_EQ(node.children().front().name(), odd);
  EXPECT_EQ(node.children().front().path(), "/\xfe/" + odd);
}

TEST(DiskTree, pathIs_compares_a_path_without_building_it) {
  const DiskNode root = folder("/x/a", 1, {folder("/x/a/b", 1, {file("/x/a/b/c", 1)})});
  const DiskNode c = root.children().front().children().front();
  const auto isPathOfC = [&c](std::string_view path) {
    return DiskTree::of(c).pathIs(DiskTree::indexOf(c), path);
  };
  EXPECT_TRUE(isPathOfC("/x/a/b/c"));
  for (const char* other : {"", "c", "/c", "b/c", "/x/a/b/d", "/x/a/bc", "/x/a/b.c", "/x/a.b/c",
                            "/y/a/b/c", "/w/x/a/b/c", "/x/a/b/c/", "/x/a/b//c", "x/a/b/c"}) {
    EXPECT_FALSE(isPathOfC(other)) << other;
  }
}

TEST(DiskTreeBuilder, a_path_below_that_of_the_parent_is_not_stored) {
  DiskTreeBuilder builder;
  builder.open({"a", 1, true, FileKind::folder, std::nullopt}, "/x/a");
  const auto openAndClose = [&builder](std::string_view name, std::string_view path) {
    builder.open({name, 1, false, FileKind::other, std::nullopt}, path);
    builder.close();
  };
  openAndClose("b", "/x/a/b");
  openAndClose("shown", "/x/a/b");
  openAndClose("far", "/x/a/b/c/far");
  openAndClose("b", "/x/ab");
  openAndClose("b", "/y/a/b");
  openAndClose("a", "/x/a");
  openAndClose("", "/x/a/");
  openAndClose("", "");
  builder.close();
  const DiskNode root = builder.finish();

  std::vector<std::string> paths;
  std::vector<DiskTree::PathForm> forms;
  for (const DiskNode& child : root.children()) {
    paths.push_back(child.path());
    forms.push_back(formOf(child));
  }
  EXPECT_THAT(paths, ElementsAre("/x/a/b", "/x/a/b", "/x/a/b/c/far", "/x/ab", "/y/a/b", "/x/a",
                                 "/x/a/", ""));
  using enum DiskTree::PathForm;
  EXPECT_THAT(
      forms, ElementsAre(name, component, component, absolute, absolute, absolute, name, absolute));
}

TEST(DiskTreeBuilder, a_path_below_a_parent_that_ends_in_a_slash_is_not_stored) {
  DiskTreeBuilder builder;
  builder.open({"a", 1, true, FileKind::folder, std::nullopt}, "/a");
  builder.open({"", 1, true, FileKind::folder, std::nullopt}, "/a/");
  builder.open({"b", 1, true, FileKind::folder, std::nullopt}, "/a/b");
  builder.openBelow({"c", 1, false, FileKind::other, std::nullopt});
  builder.close();
  builder.close();
  builder.close();
  builder.close();
  const DiskNode b = builder.finish().children().front().children().front();
  EXPECT_EQ(b.path(), "/a/b");
  EXPECT_EQ(formOf(b), DiskTree::PathForm::name);
  EXPECT_EQ(b.children().front().path(), "/a/b/c");
}

TEST(DiskTreeBuilder, the_builder_makes_the_same_tree_as_the_constructor_from_fields) {
  const DiskNode byHand({"top", "/top", 30, true, FileKind::folder, 2.5},
                        {folder("/top/b", 20, {file("/top/b/x", 20)}), file("/elsewhere/c", 3),
                         DiskNode({"+ 2 more", "/top/__rest__", 7, false, FileKind::other, {}})});
  DiskTreeBuilder builder;
  builder.open({"top", 30, true, FileKind::folder, 2.5}, "/top");
  builder.openBelow({"b", 20, true, FileKind::folder, 12.5});
  builder.openBelow({"x", 20, false, FileKind::other, {}});
  builder.close();
  builder.close();
  builder.open({"c", 3, false, FileKind::other, {}}, "/elsewhere/c");
  builder.close();
  builder.openBelow({"+ 2 more", 7, false, FileKind::other, {}}, "__rest__");
  builder.close();
  builder.close();
  const DiskNode built = builder.finish();
  EXPECT_EQ(built, byHand);
  EXPECT_EQ(std::hash<DiskNode>{}(built), std::hash<DiskNode>{}(byHand));
}

TEST(DiskTreeBuilder, an_appended_subtree_keeps_its_paths_below_any_parent) {
  const DiskNode subtree =
      folder("/a/b", 4, {folder("/a/b/c", 3, {file("/a/b/c/d", 3)}), file("/other", 1)});
  const DiskNode atHome = folder("/a", 4, {file("/a/z", 9), subtree, file("/a/y", 1)});
  const DiskNode abroad = folder("/q", 4, {subtree});
  EXPECT_EQ(atHome.children()[1], subtree);
  EXPECT_EQ(abroad.children()[0], subtree);
  EXPECT_EQ(formOf(atHome.children()[1]), DiskTree::PathForm::name);
  EXPECT_EQ(formOf(abroad.children()[0]), DiskTree::PathForm::absolute);
  EXPECT_EQ(abroad.children()[0].children()[0].children()[0].path(), "/a/b/c/d");
  EXPECT_EQ(abroad.children()[0].children()[1].path(), "/other");
  EXPECT_THAT(namesOf(atHome.children()), ElementsAre("z", "b", "y"));
}

TEST(DiskTreeBuilder, finish_leaves_the_builder_empty) {
  DiskTreeBuilder builder;
  builder.open({"a", 1, false, FileKind::other, {}}, "/a");
  builder.close();
  const DiskNode first = builder.finish();
  builder.open({"b", 1, false, FileKind::other, {}}, "/b");
  builder.close();
  const DiskNode second = builder.finish();
  EXPECT_EQ(first.path(), "/a");
  EXPECT_EQ(second.path(), "/b");
  EXPECT_EQ(second.subtreeCount(), 1U);
}

TEST(DiskTreeBuilder, a_finished_tree_has_no_spare_memory) {
  DiskTreeBuilder builder;
  builder.reserve(1000, 100000);
  builder.open({"a", 1, false, FileKind::other, {}}, "/a");
  builder.close();
  EXPECT_LT(DiskTree::of(builder.finish()).bytesHeld(), 200U);
}

TEST(DiskNodeEquality, equality_covers_all_seven_fields) {
  const DiskNode::Fields fields{"n", "/p/n", 5, true, FileKind::folder, 1.5};
  const DiskNode node(fields);
  EXPECT_EQ(node, DiskNode(fields));
  const auto differsBy = [&](auto change) {
    DiskNode::Fields other = fields;
    change(other);
    const DiskNode changed(other);
    return !(node == changed) && std::hash<DiskNode>{}(node) != std::hash<DiskNode>{}(changed);
  };
  EXPECT_TRUE(differsBy([](auto& f) { f.name = "m"; }));
  EXPECT_TRUE(differsBy([](auto& f) { f.path = "/q/n"; }));
  EXPECT_TRUE(differsBy([](auto& f) { f.size = 6; }));
  EXPECT_TRUE(differsBy([](auto& f) { f.isDir = false; }));
  EXPECT_TRUE(differsBy([](auto& f) { f.kind = FileKind::app; }));
  EXPECT_TRUE(differsBy([](auto& f) { f.mtime = 1.25; }));
  EXPECT_TRUE(differsBy([](auto& f) { f.mtime.reset(); }));
  EXPECT_NE(node, DiskNode(fields, {file("/p/n/x", 1)}));
}

TEST(DiskNodeEquality, an_absent_time_is_not_the_time_zero) {
  EXPECT_NE(DiskNode({"n", "/n", 1, false, FileKind::other, 0.0}),
            DiskNode({"n", "/n", 1, false, FileKind::other, std::nullopt}));
}

TEST(DiskNodeEquality, nodes_with_a_difference_deep_in_their_trees_are_different) {
  const auto tree = [](std::int64_t size, const std::string& lowest) {
    return folder("/a", 9, {folder("/a/b", 9, {file(lowest, size)}), file("/a/c", 1)});
  };
  EXPECT_EQ(tree(3, "/a/b/x"), tree(3, "/a/b/x"));
  EXPECT_NE(tree(3, "/a/b/x"), tree(4, "/a/b/x"));
  EXPECT_NE(tree(3, "/a/b/x"), tree(3, "/elsewhere/x"));
  EXPECT_NE(tree(3, "/here/x"), tree(3, "/elsewhere/x"));
  EXPECT_NE(tree(3, "/a/b/c/x"), tree(3, "/a/b/d/x"));
  EXPECT_NE(tree(3, "/a/b/x"), tree(3, "x"));
}

TEST(DiskNodeEquality, nodes_below_different_parents_are_different) {
  // The same nodes in the same pre-order, with one of them first as a child and then as a sibling.
  const DiskNode::Fields b{"b", "/a/b", 1, true, FileKind::folder, std::nullopt};
  const DiskNode x = file("/q/x", 1);
  const DiskNode inside = folder("/a", 2, {DiskNode(b, {x})});
  const DiskNode beside = folder("/a", 2, {DiskNode(b), x});
  EXPECT_NE(inside, beside);
  EXPECT_NE(std::hash<DiskNode>{}(inside), std::hash<DiskNode>{}(beside));
}

TEST(DiskNodeEquality, equal_nodes_of_different_trees_are_equal) {
  const DiskNode alone = folder("/a/b", 4, {file("/a/b/c", 4)});
  const DiskNode below = folder("/a", 4, {alone}).children().front();
  EXPECT_EQ(alone, below);
  EXPECT_EQ(std::hash<DiskNode>{}(alone), std::hash<DiskNode>{}(below));
  std::unordered_set<DiskNode> set{alone, below};
  EXPECT_EQ(set.size(), 1U);
}

TEST(DiskNodeDepth, a_hundred_thousand_levels_need_no_stack) {
  constexpr int depth = 100000;
  const DiskNode deep = chainOf(depth, 7);
  EXPECT_EQ(deep.subtreeCount(), depth + 1U);
  EXPECT_EQ(deep, chainOf(depth, 7));
  EXPECT_NE(deep, chainOf(depth, 8));
  EXPECT_EQ(std::hash<DiskNode>{}(deep), std::hash<DiskNode>{}(chainOf(depth, 7)));

  DiskNode node = deep;
  while (!node.children().empty()) node = node.children().front();
  EXPECT_EQ(node.size(), 7);
  EXPECT_EQ(node.path().size(), std::string("/top").size() + 2U * depth);

  const DiskNode copied({"over", "/", 1, true, FileKind::folder, std::nullopt}, {deep});
  EXPECT_EQ(copied.children().front(), deep);
}

TEST(DiskTreeBuilderDeath, nodes_that_do_not_pair_up_end_the_program) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const DiskTreeItem item{"a", 1, true, FileKind::folder, std::nullopt};
  EXPECT_DEATH(DiskTreeBuilder().close(), "never opened");
  EXPECT_DEATH(DiskTreeBuilder().finish(), "without a node");
  EXPECT_DEATH(DiskTreeBuilder().openBelow(item), "no open node");
  EXPECT_DEATH(
      {
        DiskTreeBuilder builder;
        builder.open(item, "/a");
        builder.finish();
      },
      "still open");
  EXPECT_DEATH(
      {
        DiskTreeBuilder builder;
        builder.open(item, "/a");
        builder.close();
        builder.open(item, "/b");
      },
      "second node at the top");
}

TEST(DiskTreeBuilderDeath, names_of_more_than_four_gibibytes_end_the_program) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  constexpr std::size_t size = std::size_t{1} << 32U;
  void* pages = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(pages, MAP_FAILED);
  const std::string_view name(static_cast<const char*>(pages), size);
  EXPECT_DEATH(DiskTreeBuilder().open({name, 1, false, FileKind::other, std::nullopt}, "/a"),
               "too many bytes of names");
  munmap(pages, size);
}

}  // namespace
}  // namespace tessaly
