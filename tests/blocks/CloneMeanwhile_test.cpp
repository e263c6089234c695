// Files that change between the scan and the look at their blocks, or during it.
#include <algorithm>
#include <atomic>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "blocks/DiskImage.h"
#include "scan/DiskScanner.h"
#include "support/Descriptor.h"
#include "support/ForkedChild.h"

namespace tessaly {
namespace {

class Meanwhile : public testing::TestWithParam<FileSystem> {
 protected:
  void expect(const std::function<std::string()>& body) {
    const std::string told = disk_.run(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  // What is found in a tree that was scanned before.
  std::string found(const DiskNode& tree) const {
    return linesOf(CloneEngine::groups(CloneEngine::collect(tree, 400), MiB), disk_.top());
  }

  DiskImage disk_ = DiskImage(GetParam());
};

INSTANTIATE_TEST_SUITE_P(On, Meanwhile, testing::Values(FileSystem::btrfs(), FileSystem::xfs()),
                         [](const auto& system) { return system.param.name; });

TEST_P(Meanwhile, what_is_no_longer_the_scanned_file_leaves_the_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    for (const char* name : {"b", "gone", "pipe", "alias", "folder", "empty"}) {
      disk_.clone("a", name);
    }
    const DiskNode tree = DiskScanner::scan(disk_.top());
    disk_.shell("cd '" + disk_.top() +
                "' && rm gone pipe alias folder && mkfifo pipe && ln -s a alias && "
                "mkdir folder && : > empty && sync");
    return difference(found(tree), "clone a b, 8 MiB on 4 MiB\n");
  });
}

TEST_P(Meanwhile, a_file_that_may_no_longer_be_read_leaves_the_group_of_clones) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    for (const char* name : {"b", "secret", "h"}) disk_.clone("a", name);
    disk_.link("h", "h-too");
    const DiskNode tree = DiskScanner::scan(disk_.top());
    disk_.shell("cd '" + disk_.top() +
                "' && chmod 755 . && chmod 0 secret h && chmod 755 ../..  ..");
    return asOtherUser([&] {
      // The names of a file are known without reading it.
      return difference(found(tree),
                        "clone a b, 8 MiB on 4 MiB\n"
                        "hardlink h h-too, 8 MiB on 4 MiB\n");
    });
  });
}

TEST_P(Meanwhile, a_file_that_became_a_clone_since_is_in_the_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.write("b", 4 * MiB);
    const DiskNode tree = DiskScanner::scan(disk_.top());
    disk_.clone("a", "b");
    return difference(found(tree), "clone a b, 8 MiB on 4 MiB\n");
  });
}

// A thread rewrites, clones and truncates one file all the time. The others are what they are.
TEST_P(Meanwhile, a_file_that_is_being_rewritten_spoils_no_group) {
  expect([&]() -> std::string {
    disk_.writeEverySecondBlock("a", 400);
    disk_.clone("a", "b");
    disk_.write("other", 3 * MiB);
    disk_.clone("other", "other-too");
    disk_.clone("a", "c");
    const DiskNode tree = DiskScanner::scan(disk_.top());
    std::atomic<bool> isOver = false;
    std::thread writer([&] {
      const Descriptor source(open(disk_.at("a").c_str(), O_RDONLY | O_CLOEXEC));
      const Descriptor target(open(disk_.at("c").c_str(), O_WRONLY | O_CLOEXEC));
      for (int round = 0; !isOver; ++round) {
        static_cast<void>(!pwrite(target.get(), "x", 1, (round % 400) * 8 * KiB));
        if (round % 3 == 0) fsync(target.get());
        if (round % 5 == 0) static_cast<void>(!ftruncate(target.get(), round % 7 * MiB));
        ioctl(target.get(), FICLONE, source.get());
      }
    });
    std::string wrong;
    for (int i = 0; i < 30 && wrong.empty(); ++i) {
      std::string seen = found(tree);
      const bool hasBoth = seen.find("clone a b, ") != std::string::npos ||
                           seen.find("clone a b c, ") != std::string::npos;
      const bool isRight =
          hasBoth && std::count(seen.begin(), seen.end(), '\n') == 2 &&
          seen.find("clone other other-too, 6 MiB on 3 MiB\n") != std::string::npos;
      if (!isRight) wrong = seen;
    }
    isOver = true;
    writer.join();
    return wrong;
  });
}

}  // namespace
}  // namespace tessaly
