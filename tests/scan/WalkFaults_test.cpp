// A scan in which each system call fails in turn: the tree is right, or the scan reports that
// something could not be read.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sys/resource.h>
#include <sys/syscall.h>

#include "scan/ScanFacts.h"
#include "support/AllDescriptorsBut.h"
#include "support/SystemCallTrace.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

using End = TracedRun::End;

constexpr const char* home = R"(
  Documents/
    note 4K
    deeper/
      film 300K
      small 4K
  Tool.app/
    Contents/
      binary 300K
  empty/
  link -> Documents
  film 300K
)";

class WalkFaults : public testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  static int code() { return GetParam(); }

  // "right", "told", or what is wrong without a report.
  static std::string outcome(const std::string& path, const DiskNode& expected) {
    std::size_t told = 0;
    DiskScanner::Callbacks callbacks;
    callbacks.unreadable = [&](const SystemError&) { ++told; };
    DiskScanner::Options options;
    options.threads = 1;  // the thread that is traced
    const DiskNode root = DiskScanner::scan(path, callbacks, options, Places::forLinux());
    if (told > 0) return "told";
    const std::string difference = differenceOf(expected, root);
    return difference.empty() ? "right" : difference;
  }

  // An item that the system reports as missing counts as vanished.
  static bool mayBeMissing(const TracedRun& run) {
    return code() == ENOENT && (run.failedCall == SYS_statx || run.failedCall == SYS_getdents64);
  }

  // Makes each call of a kind that reads fail in turn.
  static void expectRightOrTold(const std::function<std::string()>& body) {
    for (const long number : {SYS_openat, SYS_getdents64, SYS_lseek, SYS_newfstatat, SYS_statx}) {
      // A few of a thousand files suffice.
      constexpr std::size_t most = 40;
      for (std::size_t nth = 1; nth <= most; ++nth) {
        const TracedRun run = SystemCallTrace::failingNth(number, nth, code(), body);
        expectRightOrTold(run,
                          "call " + std::to_string(nth) + " of number " + std::to_string(number));
        if (run.failedCall == -1) break;
      }
    }
  }

  static void expectRightOrTold(const TracedRun& run, const std::string& where) {
    ASSERT_EQ(run.end, End::finished) << where << ": " << run.told;
    if (mayBeMissing(run)) return;
    if (code() == EINTR) {
      EXPECT_EQ(run.told, "right") << where;
    } else {
      EXPECT_TRUE(run.told == "right" || run.told == "told") << where << ": " << run.told;
    }
  }
};
INSTANTIATE_TEST_SUITE_P(of, WalkFaults,
                         testing::Values(EINTR, EIO, EACCES, EPERM, ENOENT, ENOTDIR, ELOOP, ESTALE,
                                         ENOMEM, EMFILE, ENFILE, EINVAL, ENOSYS, ENXIO),
                         [](const auto& instance) {
                           return std::string(strerrorname_np(instance.param));
                         });

TEST_P(WalkFaults, the_tree_is_right_or_reported_whichever_call_fails) {
  const TempTree tree(home);
  const DiskNode expected = DiskScanner::scan(tree.path(), {}, {}, Places::forLinux());
  std::size_t told = 0;
  std::size_t call = 1;
  for (;; ++call) {
    const TracedRun run =
        SystemCallTrace::failingAt(call, code(), [&] { return outcome(tree.path(), expected); });
    expectRightOrTold(
        run, "call " + std::to_string(call) + ", number " + std::to_string(run.failedCall));
    if (run.told == "told") ++told;
    if (run.failedCall == -1) break;
  }
  EXPECT_GT(call, 40U);
  if (code() == EIO) {
    EXPECT_GT(told, 20U);
  }
  std::printf("%zu calls failed, %zu scans reported it\n", call - 1, told);
}

// Each directory is opened by its path then.
TEST_P(WalkFaults, the_tree_is_right_or_reported_with_one_descriptor) {
  const TempTree tree(home);
  const DiskNode expected = DiskScanner::scan(tree.path(), {}, {}, Places::forLinux());
  const auto body = [&]() -> std::string {
    rlimit number{};
    number.rlim_cur = number.rlim_max = 16;
    if (setrlimit(RLIMIT_NOFILE, &number) != 0) return "no limit";
    const std::vector<Descriptor> held = allDescriptorsBut(1);
    return outcome(tree.path(), expected);
  };
  expectRightOrTold(body);
}

// The longest possible names, so that few files need several runs.
TEST_P(WalkFaults, a_folder_read_in_runs_is_right_or_reported) {
  const TempTree tree("wide/\n  " + std::string(240, 'n') +
                      "-### 4K x600\n  z/\n    film 4K\nother 4K\n");
  const DiskNode expected = DiskScanner::scan(tree.path(), {}, {}, Places::forLinux());
  const auto body = [&] { return outcome(tree.path(), expected); };
  const TracedRun whole = SystemCallTrace::of(body);
  EXPECT_GT(std::count(whole.calls.begin(), whole.calls.end(), SYS_lseek), 1);
  expectRightOrTold(body);
}

}  // namespace
}  // namespace tessaly
