#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

class Times : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(Times);

TEST_P(Times, a_folder_has_the_newest_time_of_itself_and_its_contents) {
  const TempTree tree(R"(
    a/ mtime=100
      b/ mtime=50
        film 1M mtime=300.5
      c/ mtime=200
        old 1M mtime=7
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.mtime(), 300.5);
  EXPECT_EQ(below(root, "a").mtime(), 300.5);
  EXPECT_EQ(below(root, "a/b").mtime(), 300.5);
  EXPECT_EQ(below(root, "a/c").mtime(), 200);
  EXPECT_EQ(below(root, "a/c/old").mtime(), 7);
}

TEST_P(Times, a_small_file_makes_its_folders_as_new_as_itself) {
  const TempTree tree(R"(
    a/ mtime=100
      b/ mtime=100
        small 4K mtime=900
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.mtime(), 900);
  EXPECT_EQ(below(root, "a/b").mtime(), 900);
}

TEST_P(Times, the_time_of_the_root_itself_does_not_count) {
  const TempTree tree(R"(
    top/ mtime=5000
      film 1M mtime=30
    bare/ mtime=5000
  )");
  EXPECT_EQ(scan(tree.at("top")).mtime(), 30);
  EXPECT_EQ(scan(tree.at("bare")).mtime(), std::nullopt);
}

TEST_P(Times, times_at_or_before_1970_count_as_unknown) {
  const TempTree tree(R"(
    a/ mtime=-1000000000
      before 1M mtime=-0.25
      zero 1M mtime=0
      just-after 1M mtime=0.000000001
  )");
  const DiskNode a = below(scan(tree.path()), "a");
  EXPECT_EQ(below(a, "before").mtime(), std::nullopt);
  EXPECT_EQ(below(a, "zero").mtime(), std::nullopt);
  EXPECT_EQ(below(a, "just-after").mtime(), 1e-9);
  EXPECT_EQ(a.mtime(), 1e-9);
}

TEST_P(Times, a_far_future_time_is_kept) {
  const TempTree tree(R"(
    far 1M mtime=15000000000.75
    near 1M mtime=4294967296
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(below(root, "far").mtime(), 15000000000.75);
  EXPECT_EQ(below(root, "near").mtime(), 4294967296.0);
}

TEST_P(Times, nanoseconds_are_kept_with_the_precision_of_the_number) {
  const TempTree tree("film 1M mtime=1600000000.123456789");
  EXPECT_EQ(below(scan(tree.path()), "film").mtime(), 1600000000 + 123456789 / 1e9);
}

TEST_P(Times, links_and_skipped_items_make_nothing_newer) {
  const TempTree tree(R"(
    a/ mtime=100
      link -> nowhere mtime=900
      .Trash/ mtime=900
        film 1M mtime=900
  )");
  EXPECT_EQ(scan(tree.path()).mtime(), 100);
}

}  // namespace
}  // namespace tessaly
