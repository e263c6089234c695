#include "scan/ScanFacts.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

using testing::SizeIs;

class WideFolders : public ScanFacts {
 protected:
  static void expectLikeTheModel(const std::string& root) {
    ScanRecord expected;
    ScanRecord record;
    const DiskNode model = SequentialScan::scan(root, expected.callbacks());
    EXPECT_EQ(differenceOf(model, GetParam().scan(root, record.callbacks())), "");
    EXPECT_EQ(differenceOf(expected, record), "");
  }
};
TESSALY_FOR_ALL_WALKERS(WideFolders);

// More files than 16 bits can count.
TEST_P(WideFolders, all_of_70000_small_files_count_twice) {
  const TempTree tree(R"(
    flat/
      first 4K
      ###### = flat/first x20000
      empty-###### x50000
  )");
  ScanRecord record;
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_EQ(record.polls(), 1U + 70001U + 1U);
  EXPECT_EQ(root.size(), std::int64_t{20001} * 4 * KiB);
  EXPECT_EQ(below(root, "flat").size(), std::int64_t{20001} * 8 * KiB);
  EXPECT_EQ(root.subtreeCount(), 2U);
  expectLikeTheModel(tree.path());
}

TEST_P(WideFolders, a_folder_of_5000_large_files_has_80_nodes_and_a_remainder) {
  TempTree tree;
  for (int sort = 0; sort < 50; ++sort) {
    const std::string number = std::to_string(sort);
    const std::string size = std::to_string(256 + 4 * sort);
    tree.plant("first-" + number + " " + size + "K\n" +  //
               number + "-## = first-" + number + " x99");
  }
  const DiskNode root = scan(tree.path());
  ASSERT_THAT(childNames(root), SizeIs(81));
  EXPECT_EQ(root.children()[0].name(), "49-00");
  EXPECT_EQ(root.children()[0].size(), 452 * KiB);
  EXPECT_EQ(root.children()[79].name(), "49-79");
  EXPECT_EQ(root.children()[80].name(), "+ 4920 more");
  std::int64_t all = 0;
  for (int sort = 0; sort < 50; ++sort) all += (256 + 4 * sort) * 100 * KiB;
  EXPECT_EQ(root.size(), all);
  EXPECT_EQ(root.children()[80].size(), all - 80 * 452 * KiB);
  expectLikeTheModel(tree.path());
}

TEST_P(WideFolders, wide_folders_of_folders_count) {
  const TempTree tree(R"(
    many/
      d-####/ x9000
        Documents/
          tiny 4K
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), std::int64_t{9000} * 4 * KiB);
  EXPECT_EQ(below(root, "many").children()[80].name(), "+ 8920 more");
  expectLikeTheModel(tree.path());
}

TEST_P(WideFolders, a_wide_folder_between_others_keeps_its_place) {
  const TempTree tree(R"(
    before/
      film 1M
    wide/
      a-#### x5000
      inner-###/ x200
        film-# x2
      link-### -> nowhere x300
    wider/
      b-##### x12000
      z/
        film 1M
    after/
      film 1M
  )");
  expectLikeTheModel(tree.path());
}

}  // namespace
}  // namespace tessaly
