#include <filesystem>
#include <iterator>
#include <thread>

#include "platform/Deadline.h"
#include "scan/ScanFacts.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class Cancelling : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(Cancelling);

constexpr const char* home = R"(
  folder-##/ x12
    inner-#/ x6
      film-# 256K x2
      small-# 4K x4
    Tool.app/
      binary 64K
    link -> inner-0
  .Trash/
    film 1M
  film 1M
)";

TEST_P(Cancelling, cancelling_on_the_first_item_gives_an_empty_root) {
  const TempTree tree(home);
  ScanRecord record(1);
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.lines(), ElementsAre("Cancelled"));
  EXPECT_THAT(record.fractions(), ElementsAre(0.0));
  EXPECT_EQ(root.size(), 0);
  EXPECT_THAT(childNames(root), IsEmpty());
  EXPECT_EQ(root.path(), tree.path());
}

TEST_P(Cancelling, cancelling_at_any_item_keeps_the_walked_part_and_builds_no_map) {
  const TempTree tree(home);
  ScanRecord whole;
  GetParam().scan(tree.path(), whole.callbacks());
  const std::size_t items = whole.polls() - 1;
  for (std::size_t at = 1; at <= items; at += at < 40 ? 1 : 29) {
    SCOPED_TRACE(at);
    ScanRecord expected(at);
    const DiskNode partial = SequentialScan::scan(tree.path(), expected.callbacks());
    ScanRecord record(at);
    const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
    EXPECT_THAT(record.lines(), Contains("Cancelled"));
    EXPECT_THAT(record.lines(), Not(Contains("Building map…")));
    EXPECT_EQ(record.polls(), at + 1);
    EXPECT_EQ(differenceOf(expected, record), "");
    ASSERT_EQ(differenceOf(partial, root), "");
  }
}

TEST_P(Cancelling, cancelling_counts_the_current_entry_as_finished) {
  const TempTree tree(R"(
    only/
      a 4K
      b 4K
  )");
  ScanRecord record(2);
  GetParam().scan(tree.path(), record.callbacks());
  EXPECT_THAT(record.lines(), ElementsAre("0%  only", "Cancelled"));
  EXPECT_THAT(record.fractions(), ElementsAre(0, 0, 1));
}

TEST_P(Cancelling, cancelling_after_the_last_item_builds_no_map_either) {
  const TempTree tree(home);
  ScanRecord whole;
  const DiskNode complete = GetParam().scan(tree.path(), whole.callbacks());
  ScanRecord record(whole.polls());
  const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
  EXPECT_EQ(root, complete);
  EXPECT_THAT(record.lines(), Not(Contains("Cancelled")));
  EXPECT_THAT(record.lines(), Not(Contains("Building map…")));
}

TEST_P(Cancelling, cancelling_without_other_callbacks_gives_the_same_part) {
  const TempTree tree(home);
  ScanRecord record(50);
  const DiskNode part = GetParam().scan(tree.path(), record.callbacks());
  ScanRecord silent(50);
  const DiskNode same = GetParam().scan(tree.path(), {{}, {}, silent.callbacks().isCancelled});
  EXPECT_EQ(differenceOf(part, same), "");
}

TEST_P(Cancelling, cancelling_works_anywhere_in_a_wide_and_deep_tree) {
  TempTree tree(R"(
    wide/
      ##### x9000
    many-###/ x300
      inner-#/ x4
        film-# x3
  )");
  tree.chain("many-007", "d", 300);
  for (const std::size_t at : {1, 2, 10, 100, 1000, 4096, 4097, 9000, 9100, 12000}) {
    ScanRecord record(static_cast<std::size_t>(at));
    GetParam().scan(tree.path(), record.callbacks());
    EXPECT_EQ(record.polls(), at + 1);
    EXPECT_THAT(record.lines(), Not(Contains("Building map…")));
  }
}

std::ptrdiff_t threadsOfThisProcess() {
  namespace fs = std::filesystem;
  return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

TEST(CancellingThreads, threads_that_read_ahead_end_before_the_tree_is_built) {
  const TempTree tree(home);
  // The thread sanitizer starts a thread of its own with the first one of the program.
  std::thread([] {}).join();
  const std::ptrdiff_t before = threadsOfThisProcess();
  std::ptrdiff_t helpers = 0;
  bool areGone = false;
  DiskScanner::Callbacks callbacks;
  callbacks.isCancelled = [polls = 0, &helpers, before]() mutable {
    if (++polls == 1) helpers = threadsOfThisProcess() - before;
    return polls >= 5;
  };
  // Reported after the walk and before the tree is built.
  callbacks.progress = [&](const std::string& line) {
    if (line != "Cancelled") return;
    const Deadline deadline = Deadline::after(60);
    while (!(areGone = threadsOfThisProcess() == before) && !deadline.hasPassed())
      std::this_thread::yield();
  };
  DiskScanner::Options options;
  options.threads = 4;
  DiskScanner::scan(tree.path(), callbacks, options);
  EXPECT_EQ(helpers, 3);
  EXPECT_TRUE(areGone);
}

}  // namespace
}  // namespace tessaly
