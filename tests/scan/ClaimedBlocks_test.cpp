// Scans of a file system that reports an arbitrary number of blocks for a file: the size is that of
// the blocks, or absent. The test changes the answer of the system call.
#include <csignal>
#include <cstdint>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "scan/ScanFacts.h"
#include "support/SystemCallTrace.h"

namespace tessaly {
namespace {

using End = TracedRun::End;

class ClaimedBlocks : public testing::Test {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  // The size of the only file of a tree with this number of reported blocks.
  TracedRun sizeWith(std::uint64_t blocks) const {
    const SystemCallTrace::Answer answer{
        .number = SYS_statx,
        .argument = 4,
        .offset = offsetof(struct statx, stx_blocks),
        .bytes = std::string(reinterpret_cast<const char*>(&blocks), sizeof blocks)};
    return SystemCallTrace::answering(answer, [path = tree_.path()] {
      constexpr rlimit none{};
      setrlimit(RLIMIT_CORE, &none);
      DiskScanner::Options options;
      options.threads = 1;  // the thread that is traced
      const DiskNode root = DiskScanner::scan(path, {}, options, Places::forLinux());
      return std::to_string(below(root, "film").size());
    });
  }

  TempTree tree_{"film 300K\n"};
};

TEST_F(ClaimedBlocks, each_claimed_block_counts_512_bytes) {
  for (const std::uint64_t blocks : {std::uint64_t{600}, std::uint64_t{1} << 52U}) {
    const TracedRun run = sizeWith(blocks);
    ASSERT_EQ(run.end, End::finished) << run.told;
    EXPECT_EQ(run.told, std::to_string(blocks * 512));
  }
}

// Without a check, the first would overflow to 0, the second to a negative size.
TEST_F(ClaimedBlocks, block_counts_that_overflow_a_size_do_not_end_the_program) {
  for (const std::uint64_t blocks :
       {std::uint64_t{1} << 55U, std::uint64_t{1} << 54U, (std::uint64_t{1} << 55U) + 600,
        std::numeric_limits<std::uint64_t>::max()}) {
    const TracedRun run = sizeWith(blocks);
    EXPECT_EQ(run.end, End::crashed) << blocks;
    EXPECT_EQ(run.told, "child ended by signal " + std::to_string(SIGABRT)) << blocks;
  }
}

}  // namespace
}  // namespace tessaly
