// Random trees: for any number of threads, a scan gives the tree and the callbacks of the
// sequential model.
#include <algorithm>

#include "scan/ScanFacts.h"
#include "support/RandomTree.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

class RandomTrees : public testing::TestWithParam<int> {
 protected:
  static std::uint64_t seed() { return static_cast<std::uint64_t>(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(of_seed, RandomTrees, testing::Range(1, 25),
                         [](const auto& instance) { return std::to_string(instance.param); });

TEST_P(RandomTrees, random_trees_are_the_same_for_any_number_of_threads_and_the_model) {
  const std::string text = randomTree(seed(), 400);
  const TempTree tree(text);
  for (const bool expandPackages : {false, true}) {
    for (const bool excludes : {false, true}) {
      DiskScanner::Options options;
      if (excludes) options = randomOptions(seed(), tree.path());
      options.expandPackages = expandPackages;
      ScanRecord expected;
      const DiskNode model =
          SequentialScan::scan(tree.path(), expected.callbacks(), options, Places::forLinux());
      for (const int threads : {0, 1, 2, 4, 8}) {
        SCOPED_TRACE(testing::Message() << threads << " threads, expand " << expandPackages
                                        << ", excludes " << excludes);
        options.threads = threads;
        ScanRecord record;
        const DiskNode root =
            DiskScanner::scan(tree.path(), record.callbacks(), options, Places::forLinux());
        ASSERT_EQ(differenceOf(model, root), "") << text;
        ASSERT_EQ(differenceOf(expected, record), "") << text;
        ASSERT_EQ(root, model);
      }
    }
  }
}

TEST_P(RandomTrees, random_trees_are_the_same_with_an_inner_folder_as_root) {
  const TempTree tree(randomTree(seed(), 200));
  const DiskNode whole = SequentialScan::scan(tree.path());
  for (const DiskNode& child : whole.children()) {
    if (!child.isDir()) continue;
    for (const bool expandPackages : {false, true}) {
      DiskScanner::Options options;
      options.expandPackages = expandPackages;
      const DiskNode model = SequentialScan::scan(child.path(), {}, options);
      ASSERT_EQ(differenceOf(model, DiskScanner::scan(child.path(), {}, options)), "");
    }
  }
}

TEST_P(RandomTrees, random_trees_are_the_same_in_any_order_of_siblings) {
  const TempTree tree(randomTree(seed(), 200));
  const DiskNode model = SequentialScan::scan(tree.path());
  const DiskNode sorted = SequentialScan::scan(
      tree.path(), {}, {}, Places::current(),
      [](std::vector<std::string>& names) { std::sort(names.begin(), names.end()); });
  const DiskNode reversed = SequentialScan::scan(
      tree.path(), {}, {}, Places::current(), [](std::vector<std::string>& names) {
        std::sort(names.begin(), names.end(), std::greater<>());
      });
  EXPECT_EQ(differenceOf(model, sorted), "");
  EXPECT_EQ(differenceOf(model, reversed), "");
}

TEST_P(RandomTrees, cancelled_scans_of_random_trees_give_the_part_of_the_model) {
  const TempTree tree(randomTree(seed(), 300));
  ScanRecord whole;
  SequentialScan::scan(tree.path(), whole.callbacks());
  for (std::size_t at = 1; at < whole.polls(); at += 1 + at / 3) {
    ScanRecord expected(at);
    const DiskNode model = SequentialScan::scan(tree.path(), expected.callbacks());
    DiskScanner::Options options;
    options.threads = static_cast<int>(at % 5);
    ScanRecord record(at);
    const DiskNode part = DiskScanner::scan(tree.path(), record.callbacks(), options);
    ASSERT_EQ(differenceOf(expected, record), "") << at;
    ASSERT_EQ(differenceOf(model, part), "") << at;
  }
}

}  // namespace
}  // namespace tessaly
