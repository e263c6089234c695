#include <algorithm>

#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Sizes : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(Sizes);

TEST_P(Sizes, a_small_file_counts_twice_in_its_parent_and_once_above) {
  const TempTree tree(R"(
    a/
      b/
        small 4K
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), 4 * KiB);
  EXPECT_EQ(below(root, "a").size(), 4 * KiB);
  EXPECT_EQ(below(root, "a/b").size(), 8 * KiB);
  EXPECT_THAT(childNames(below(root, "a/b")), IsEmpty());
}

TEST_P(Sizes, a_small_file_directly_in_the_root_counts_twice_in_the_root) {
  const TempTree tree("small 4K");
  EXPECT_EQ(scan(tree.path()).size(), 8 * KiB);
}

TEST_P(Sizes, a_file_of_256_KiB_has_a_node_and_counts_once) {
  const TempTree tree(R"(
    a/
      limit 256K
      under 252K
  )");
  const DiskNode a = below(scan(tree.path()), "a");
  EXPECT_THAT(childNames(a), ElementsAre("limit"));
  EXPECT_EQ(a.size(), (256 + 2 * 252) * KiB);
  EXPECT_EQ(below(a, "limit").size(), 256 * KiB);
  EXPECT_FALSE(below(a, "limit").isDir());
}

TEST_P(Sizes, a_plain_folder_does_not_count_its_own_entry) {
  const TempTree tree(R"(
    empty/
    wide/
      a-name-that-fills-the-entry-of-the-folder-#### x2000
  )");
  ASSERT_GT(tree.length("wide"), 0);
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), 0);
  EXPECT_EQ(below(root, "wide").size(), 0);
  EXPECT_EQ(below(root, "empty").size(), 0);
  EXPECT_TRUE(below(root, "empty").isDir());
}

TEST_P(Sizes, a_sparse_file_counts_its_size_on_disk) {
  const TempTree tree(R"(
    hollow sparse=1G
    part 512K sparse=1G
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_THAT(childNames(root), ElementsAre("part"));
  EXPECT_EQ(root.size(), 512 * KiB);
}

TEST_P(Sizes, every_name_of_a_hard_linked_file_counts) {
  const TempTree tree(R"(
    a/
      one 1M
      two = a/one
    b/
      three = a/one
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), 3 * MiB);
  EXPECT_EQ(below(root, "a").size(), 2 * MiB);
  EXPECT_EQ(below(root, "b/three").size(), 1 * MiB);
}

TEST_P(Sizes, links_are_neither_followed_nor_counted) {
  const TempTree tree(R"(
    real/
      film 1M
    Downloads/
      to-file -> ../real/film
      to-folder -> ../real
      to-nothing -> nowhere
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), 1 * MiB);
  EXPECT_THAT(childNames(below(root, "Downloads")), IsEmpty());
}

TEST_P(Sizes, loops_of_links_end) {
  const TempTree tree(R"(
    a/
      up -> ..
      self -> self
      b/
        top -> ../..
        ping -> pong
        pong -> ping
      film 1M
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), 1 * MiB);
  EXPECT_EQ(root.subtreeCount(), 4U);
}

TEST_P(Sizes, pipes_and_sockets_count_nothing_and_are_never_opened) {
  const TempTree tree(R"(
    a/
      pipe fifo
      socket socket
    Downloads/
      pipe fifo
      socket socket
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), 0);
  EXPECT_THAT(childNames(below(root, "a")), IsEmpty());
  EXPECT_THAT(childNames(below(root, "Downloads")), ElementsAre("pipe", "socket"));
  EXPECT_EQ(below(root, "Downloads/pipe").kind(), FileKind::other);
  EXPECT_FALSE(below(root, "Downloads/pipe").isDir());
}

TEST_P(Sizes, a_small_file_in_Downloads_has_a_node_but_not_in_its_subfolders) {
  const TempTree tree(R"(
    Downloads/
      tiny 10
      sub/
        tiny 10
  )");
  const std::int64_t tiny = tree.allocated("Downloads/tiny");
  ASSERT_GT(tiny, 0);
  const DiskNode downloads = below(scan(tree.path()), "Downloads");
  EXPECT_THAT(childNames(downloads), ElementsAre("sub", "tiny"));
  EXPECT_EQ(below(downloads, "tiny").size(), tiny);
  EXPECT_EQ(below(downloads, "sub").size(), 2 * tiny);
  EXPECT_THAT(childNames(below(downloads, "sub")), IsEmpty());
  EXPECT_EQ(downloads.size(), 2 * tiny);
}

TEST_P(Sizes, important_folders_match_by_their_exact_name_at_any_depth) {
  const TempTree tree(R"(
    downloads/
      tiny 4K
    deep/
      Music/
        tiny 4K
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_FALSE(has(root, "downloads/tiny"));
  EXPECT_EQ(below(root, "downloads").size(), 8 * KiB);
  EXPECT_TRUE(has(root, "deep/Music/tiny"));
  EXPECT_EQ(below(root, "deep/Music").size(), 4 * KiB);
}

TEST_P(Sizes, the_root_can_be_an_important_folder) {
  const TempTree tree(R"(
    Documents/
      tiny 4K
  )");
  const DiskNode root = scan(tree.at("Documents"));
  EXPECT_THAT(childNames(root), ElementsAre("tiny"));
  EXPECT_EQ(root.size(), 4 * KiB);
}

TEST_P(Sizes, important_folders_are_those_of_the_given_places) {
  const TempTree tree(R"(
    Videos/
      tiny 4K
  )");
  EXPECT_TRUE(has(scan(tree.path(), {}, Places::forLinux()), "Videos/tiny"));
  EXPECT_FALSE(has(scan(tree.path(), {}, Places::forMacos()), "Videos/tiny"));
}

TEST_P(Sizes, empty_files_of_an_important_folder_have_nodes) {
  const TempTree tree(R"(
    Desktop/
      b
      a
  )");
  EXPECT_THAT(childNames(below(scan(tree.path()), "Desktop")), ElementsAre("a", "b"));
}

TEST_P(Sizes, a_folder_at_depth_12_has_its_full_size_and_no_children) {
  TempTree tree;
  tree.chain("", "d", 14);
  tree.plant("d/d/d/d/d/d/d/d/d/d/d/d/d/d", "deep 1M");
  tree.plant("d/d/d/d/d/d/d/d/d/d/d/d", "at-13 512K");
  tree.plant("d/d/d/d/d/d/d/d/d/d/d", "at-12 256K");
  const DiskNode root = scan(tree.path());
  const DiskNode at11 = below(root, "d/d/d/d/d/d/d/d/d/d/d");
  EXPECT_THAT(childNames(at11), ElementsAre("d", "at-12"));
  EXPECT_EQ(at11.size(), 1792 * KiB);
  const DiskNode at12 = below(at11, "d");
  EXPECT_THAT(childNames(at12), IsEmpty());
  EXPECT_EQ(at12.size(), 1536 * KiB);
  EXPECT_TRUE(at12.isDir());
}

TEST_P(Sizes, children_are_sorted_largest_first_and_equal_ones_by_the_bytes_of_their_paths) {
  const TempTree tree(R"(
    b 256K
    \xff 256K
    B 256K
    largest 512K
    \xc3\xa4 256K
    a/
  )");
  EXPECT_THAT(childNames(scan(tree.path())),
              ElementsAre("largest", "B", "b", "\xc3\xa4", "\xff", "a"));
}

TEST_P(Sizes, paths_are_those_of_the_disk) {
  const TempTree tree(R"(
    a/
      film.mkv 1M
  )");
  const DiskNode film = below(scan(tree.path()), "a/film.mkv");
  EXPECT_EQ(film.path(), tree.at("a/film.mkv"));
  EXPECT_EQ(film.kind(), FileKind::video);
}

TEST_P(Sizes, a_folder_has_the_kind_of_folders_whatever_its_suffix) {
  const TempTree tree(R"(
    movie.mp4/
      inside 1M
  )");
  const DiskNode movie = below(scan(tree.path()), "movie.mp4");
  EXPECT_EQ(movie.kind(), FileKind::folder);
  EXPECT_THAT(childNames(movie), ElementsAre("inside"));
}

}  // namespace
}  // namespace tessaly
