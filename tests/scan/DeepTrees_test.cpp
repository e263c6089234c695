// Chains of folders with paths far longer than the system accepts.
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

#include "scan/ScanFacts.h"
#include "support/Descriptor.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

class DeepTrees : public ScanFacts {
 protected:
  // Deep enough that no system call accepts the paths. The model needs quadratic time.
  static int depth() { return GetParam().threads == 0 ? 2500 : 5000; }

  static std::string down(const std::string& name, int levels) {
    std::string path = name;
    for (int level = 1; level < levels; ++level) path += "/" + name;
    return path;
  }

  // A chain with a file of 1 MiB in its last folder.
  static void plantChain(TempTree& tree, const std::string& name, int levels) {
    tree.chain("", name, levels, [&](int folder, int level) {
      if (level == levels) plantTree(folder, folder, "film 1M mtime=1700000000");
    });
  }

  // A chain with one more folder on each level, before or after that of the chain.
  static void plantChainWithNeighbours(TempTree& tree, int levels) {
    const Descriptor top(open(tree.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    tree.chain("", "m", levels, [&](int folder, int level) {
      plantTree(top.get(), folder, level % 2 == 0 ? "a/\n  x = seed" : "z/\n  x = seed");
    });
  }

  static void expectLikeTheModel(const std::string& root) {
    ScanRecord expected;
    ScanRecord record;
    const DiskNode model = SequentialScan::scan(root, expected.callbacks());
    EXPECT_EQ(differenceOf(model, GetParam().scan(root, record.callbacks())), "");
    EXPECT_EQ(differenceOf(expected, record), "");
  }
};
TESSALY_FOR_ALL_WALKERS(DeepTrees);

TEST_P(DeepTrees, a_file_below_thousands_of_folders_counts) {
  TempTree tree;
  plantChain(tree, "folder", depth());
  ScanRecord record;
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_EQ(root.size(), 1 * MiB);
  EXPECT_EQ(record.polls(), depth() + 2U);
  EXPECT_EQ(root.subtreeCount(), 13U);
  const DiskNode last = below(root, down("folder", 12));
  EXPECT_EQ(last.size(), 1 * MiB);
  EXPECT_THAT(childNames(last), IsEmpty());
  EXPECT_EQ(last.path(), tree.at(down("folder", 12)));
}

TEST_P(DeepTrees, a_file_below_thousands_of_folders_makes_all_of_them_newer) {
  TempTree tree;
  tree.chain("", "d", depth(), [&](int folder, int level) {
    if (level == depth()) plantTree(folder, folder, "film 4K mtime=15000000000");
  });
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.mtime(), 15000000000.0);
  EXPECT_EQ(root.size(), 4 * KiB);
}

TEST_P(DeepTrees, a_second_folder_on_each_of_thousands_of_levels_counts) {
  TempTree tree("seed 256K");
  plantChainWithNeighbours(tree, depth());
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.size(), (depth() + 1) * 256 * KiB);
  EXPECT_EQ(below(root, "m/m/a").size(), 256 * KiB);
  EXPECT_EQ(below(root, down("m", 12)).size(), (depth() - 11) * 256 * KiB);
}

TEST_P(DeepTrees, a_second_folder_on_each_level_is_met_in_the_order_of_the_model) {
  TempTree tree("seed 256K");
  plantChainWithNeighbours(tree, 1200);
  expectLikeTheModel(tree.path());
}

TEST_P(DeepTrees, a_chain_of_thousands_of_folders_in_a_package_counts) {
  TempTree tree("Tool.app/");
  tree.chain("Tool.app", "folder", depth(), [&](int folder, int level) {
    if (level == depth()) plantTree(folder, folder, "film 1M");
  });
  EXPECT_EQ(below(scan(tree.path()), "Tool.app").size(), 1 * MiB);
  EXPECT_EQ(below(scanExpanded(tree.path()), "Tool.app").size(), 1 * MiB);
}

TEST_P(DeepTrees, a_chain_of_names_of_255_bytes_counts) {
  TempTree tree;
  plantChain(tree, std::string(255, '\xfd'), 400);
  EXPECT_EQ(scan(tree.path()).size(), 1 * MiB);
  expectLikeTheModel(tree.path());
}

TEST_P(DeepTrees, a_bundle_below_thousands_of_folders_counts) {
  TempTree tree;
  tree.chain("", "d", depth(), [&](int folder, int level) {
    if (level == depth()) plantTree(folder, folder, "Tool.app/\n  inside 1M\nOther.app 4K");
  });
  EXPECT_EQ(scan(tree.path()).size(), 1 * MiB + 4 * KiB);
}

TEST_P(DeepTrees, an_excluded_folder_is_left_out_at_any_length_of_path) {
  TempTree tree;
  plantChain(tree, "folder", 2000);
  DiskScanner::Options options;
  options.extraPrefixes = {tree.at(down("folder", 1999))};
  EXPECT_EQ(scan(tree.path(), options).size(), 0);
  options.extraPrefixes = {tree.at(down("folder", 1999)) + "s"};
  EXPECT_EQ(scan(tree.path(), options).size(), 1 * MiB);
}

// The model cannot do this: it opens its root by one path.
TEST(DeepRoot, a_root_beyond_the_longest_path_of_the_system_is_walked) {
  TempTree tree;
  tree.chain("", "folder", 3000, [&](int folder, int level) {
    if (level == 3000) plantTree(folder, folder, "film 1M");
  });
  std::string root = tree.path();
  for (int level = 0; level < 2000; ++level) root += "/folder";
  for (const int threads : {1, 4}) {
    DiskScanner::Options options;
    options.threads = threads;
    const DiskNode node = DiskScanner::scan(root, {}, options);
    EXPECT_EQ(node.size(), 1 * MiB);
    EXPECT_EQ(node.path(), root);
    EXPECT_EQ(node.name(), "folder");
  }
}

}  // namespace
}  // namespace tessaly
