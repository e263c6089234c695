// Disks change while they are walked. No test waits for a moment: either the change happens inside
// a callback, or it goes on all the time.
#include <atomic>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "scan/ScanFacts.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class Vanishing : public ScanFacts {};
INSTANTIATE_TEST_SUITE_P(by, Vanishing,
                         testing::Values(Walker{"one_thread", 1}, Walker{"two_threads", 2},
                                         Walker{"four_threads", 4}, Walker{"eight_threads", 8}),
                         [](const auto& instance) { return std::string(instance.param.name); });

constexpr const char* home = R"(
  folder-##/ x20
    inner-#/ x5
      film-# 256K x2
      small-# 4K x3
    Tool.app/
      binary 64K
)";
constexpr std::int64_t homeLarge = 20 * 5 * 2;

TEST_P(Vanishing, everything_may_vanish_at_the_first_item) {
  const TempTree tree(home);
  ScanRecord record;
  record.during(1, [&] {
    for (const auto& entry : fs::directory_iterator(tree.path())) removeTree(entry.path().native());
  });
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_GE(root.size(), 0);
  EXPECT_LE(root.size(), homeLarge * 256 * KiB + 20 * 5 * 3 * 4 * KiB + 20 * 64 * KiB);
  EXPECT_EQ(record.lines().back(), "Building map…");
  EXPECT_EQ(record.fractions().back(), 1.0);
}

TEST_P(Vanishing, the_root_itself_may_vanish) {
  TempTree tree;
  tree.plant(std::string("top/\n") + "  a/\n    film 1M\n  b/\n    film 1M");
  ScanRecord record;
  record.during(1, [&] { removeTree(tree.at("top")); });
  const DiskNode root = GetParam().scan(tree.at("top"), record.callbacks());
  EXPECT_EQ(root.path(), tree.at("top"));
  EXPECT_LE(root.size(), 2 * MiB);
  EXPECT_EQ(record.lines().back(), "Building map…");
}

// The first item inside "folder" is reported when all its names are known but not all are opened.
constexpr const char* folderOfFolders = R"(
  folder/
    inner-##/ x60
      film 256K
)";

std::vector<std::string> innerFolders(const TempTree& tree) {
  std::vector<std::string> paths;
  for (const auto& entry : fs::directory_iterator(tree.at("folder"))) {
    paths.push_back(entry.path().native());
  }
  return paths;
}

TEST_P(Vanishing, a_folder_that_becomes_a_link_is_not_followed) {
  const TempTree outside("film 16M");
  const TempTree tree(folderOfFolders);
  ScanRecord record;
  record.during(2, [&] {
    for (const std::string& inner : innerFolders(tree)) {
      removeTree(inner);
      fs::create_directory_symlink(outside.path(), inner);
    }
  });
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_LE(root.size(), 60 * 256 * KiB);
}

TEST_P(Vanishing, a_folder_that_becomes_a_file_or_a_pipe_does_not_stop_the_walk) {
  const TempTree tree(folderOfFolders);
  ScanRecord record;
  record.during(2, [&] {
    int number = 0;
    for (const std::string& inner : innerFolders(tree)) {
      removeTree(inner);
      ASSERT_EQ(mknod(inner.c_str(), (number++ % 2 == 0 ? S_IFIFO : S_IFREG) | 0600, 0), 0);
    }
  });
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_LE(root.size(), 60 * 256 * KiB);
  EXPECT_EQ(record.lines().back(), "Building map…");
}

TEST_P(Vanishing, a_folder_that_is_moved_away_affects_nothing_else) {
  const TempTree elsewhere;
  const TempTree tree(R"(
    a/
      deep/
        deeper/
          film 1M
    b/
      film 1M
  )");
  ScanRecord record;
  record.during(3, [&] { fs::rename(tree.at("a/deep"), elsewhere.at("deep")); });
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_EQ(below(root, "b").size(), 1 * MiB);
  EXPECT_LE(root.size(), 2 * MiB);
}

TEST_P(Vanishing, remaining_items_are_complete_while_files_come_and_go_beside_them) {
  const TempTree tree(R"(
    stays/
      inner-##/ x20
        film-# 256K x3
        small-# 4K x5
    churn/
  )");
  const DiskNode before = below(scan(tree.path()), "stays");
  constexpr int names = 64;
  std::atomic<bool> stop = false;
  std::atomic<int> rounds = 0;
  std::thread churner([&] {
    while (!stop) {
      for (int number = 0; number < names; ++number) {
        const std::string folder = tree.at("churn/f" + std::to_string(number));
        mkdir(folder.c_str(), 0755);
        mknod((folder + "/x.app").c_str(), S_IFREG | 0600, 0);
        mkdir((folder + "/Tool.app").c_str(), 0755);
        mknod((folder + "/Tool.app/y").c_str(), S_IFREG | 0600, 0);
      }
      for (int number = 0; number < names; ++number) {
        const std::string folder = tree.at("churn/f" + std::to_string(number));
        unlink((folder + "/Tool.app/y").c_str());
        rmdir((folder + "/Tool.app").c_str());
        unlink((folder + "/x.app").c_str());
        rmdir(folder.c_str());
      }
      ++rounds;
    }
  });
  for (int scans = 0; scans < 40 || rounds < 10; ++scans) {
    ScanRecord record;
    const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
    const std::string difference = differenceOf(before, below(root, "stays"));
    EXPECT_EQ(difference, "");
    EXPECT_FALSE(record.wasCalledElsewhere());
    EXPECT_EQ(record.lines().back(), "Building map…");
    if (!difference.empty()) break;
  }
  stop = true;
  churner.join();
}

}  // namespace
}  // namespace tessaly
