#include "session/SharedBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

// A folder with so many files of this size.
DiskNode treeOf(int files, std::int64_t size) {
  std::vector<DiskNode> children;
  for (int i = 0; i < files; ++i) {
    const std::string name = std::to_string(i);
    children.push_back(DiskNode({.name = name, .path = "/r/" + name, .size = size}));
  }
  return DiskNode({.name = "r", .path = "/r", .isDir = true, .kind = FileKind::folder}, children);
}

// All files are clones of each other.
std::vector<std::optional<FileBlocks>> allClones(const std::vector<std::string>& paths,
                                                 const std::function<bool()>&) {
  std::vector<std::optional<FileBlocks>> all;
  for (std::uint64_t i = 1; i <= paths.size(); ++i) {
    all.emplace_back(FileBlocks{.inode = i, .links = 1, .blockBytes = 10, .cloneId = 7});
  }
  return all;
}

std::vector<ShareGroup> find(const DiskNode& tree, bool isCancelled = false) {
  return SharedBlocks::engine(allClones)({.tree = tree, .root = "/r", .idleScope = "/r"},
                                         [=] { return isCancelled; });
}

TEST(SharedBlocks, the_first_400_files_are_compared) {
  const std::vector<ShareGroup> found = find(treeOf(450, 1048576));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_THAT(found[0].files, SizeIs(400));
}

TEST(SharedBlocks, groups_that_save_less_than_1_MiB_are_left_out) {
  // The blocks of a file have 10 bytes.
  EXPECT_THAT(find(treeOf(2, (1048576 + 10) / 2)), SizeIs(1));
  EXPECT_THAT(find(treeOf(2, (1048576 + 8) / 2)), IsEmpty());
}

TEST(SharedBlocks, a_cancelled_analysis_finds_nothing) {
  EXPECT_THAT(find(treeOf(10, 1048576), true), IsEmpty());
}

}  // namespace
}  // namespace tessaly
