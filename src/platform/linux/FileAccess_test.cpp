#include "platform/FileAccess.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using Kind = FileAccess::Kind;

class FileAccessTest : public testing::Test {
 protected:
  const FileAccess& files_ = FileAccess::ofMachine();
};

TEST_F(FileAccessTest, tells_directories_from_everything_else) {
  const TempTree tree("folder/\nfile 4K\npipe fifo\nsocket socket\n");
  EXPECT_EQ(files_.kindOf(tree.at("folder")), Kind::directory);
  for (const char* name : {"file", "pipe", "socket"})
    EXPECT_EQ(files_.kindOf(tree.at(name)), Kind::file) << name;
  EXPECT_EQ(files_.kindOf("/dev/null"), Kind::file);
}

TEST_F(FileAccessTest, follows_links) {
  const TempTree tree("folder/\nfile 4K\nto-folder -> folder\nto-file -> file\nbroken -> gone\n");
  EXPECT_EQ(files_.kindOf(tree.at("to-folder")), Kind::directory);
  EXPECT_TRUE(files_.canList(tree.at("to-folder")));
  EXPECT_EQ(files_.kindOf(tree.at("to-file")), Kind::file);
  EXPECT_TRUE(files_.canOpen(tree.at("to-file")));
  EXPECT_EQ(files_.kindOf(tree.at("broken")), Kind::nothing);
}

TEST_F(FileAccessTest, sees_nothing_where_there_is_nothing) {
  const TempTree tree("file 4K\n");
  for (const std::string& path : {tree.at("gone"), tree.at("file/below"), std::string()}) {
    EXPECT_EQ(files_.kindOf(path), Kind::nothing) << path;
    EXPECT_FALSE(files_.canList(path)) << path;
    EXPECT_FALSE(files_.canOpen(path)) << path;
    EXPECT_FALSE(files_.canReadWhole(path)) << path;
  }
}

TEST_F(FileAccessTest, lists_directories_alone_empty_ones_too) {
  const TempTree tree("empty/\nwide/\n  file## x100\nfile 4K\npipe fifo\n");
  EXPECT_TRUE(files_.canList(tree.at("empty")));
  EXPECT_TRUE(files_.canList(tree.at("wide")));
  EXPECT_FALSE(files_.canList(tree.at("file")));
  EXPECT_FALSE(files_.canList(tree.at("pipe")));
}

TEST_F(FileAccessTest, reads_files_of_any_size_whole) {
  const TempTree tree("empty\nsmall 1\nlarge 3M\nhuge sparse=8G\n");
  for (const char* name : {"empty", "small", "large", "huge"})
    EXPECT_TRUE(files_.canReadWhole(tree.at(name))) << name;
}

TEST_F(FileAccessTest, reads_whole_what_cannot_be_mapped) {
  EXPECT_TRUE(files_.canReadWhole("/proc/self/status"));
}

// If the call waited, this test would hang.
TEST_F(FileAccessTest, waits_for_no_writer_of_a_pipe) {
  const TempTree tree("pipe fifo\n");
  EXPECT_TRUE(files_.canOpen(tree.at("pipe")));
  EXPECT_FALSE(files_.canReadWhole(tree.at("pipe")));
}

TEST_F(FileAccessTest, reads_no_device_whole) {
  EXPECT_TRUE(files_.canOpen("/dev/zero"));
  EXPECT_FALSE(files_.canReadWhole("/dev/zero"));
}

TEST_F(FileAccessTest, opens_no_socket) {
  const TempTree tree("socket socket\n");
  EXPECT_FALSE(files_.canOpen(tree.at("socket")));
  EXPECT_FALSE(files_.canReadWhole(tree.at("socket")));
}

TEST_F(FileAccessTest, is_refused_what_this_user_may_not_read) {
  const TempTree tree(
      "locked/ mode=0\n"
      "unlisted/ mode=0311\n"
      "  file 4K\n"
      "closed 4K mode=0\n"
      "shut/ mode=0700\n"
      "  file 4K\n");
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              if (files_.kindOf(tree.at("locked")) != Kind::directory) return "locked is not seen";
              if (files_.canList(tree.at("locked"))) return "locked is listed";
              if (files_.canList(tree.at("unlisted"))) return "unlisted is listed";
              if (!files_.canOpen(tree.at("unlisted/file"))) return "unlisted is not entered";
              if (files_.kindOf(tree.at("closed")) != Kind::file) return "closed is not seen";
              if (files_.canOpen(tree.at("closed"))) return "closed is opened";
              if (files_.canReadWhole(tree.at("closed"))) return "closed is read";
              if (geteuid() == 65534 && files_.kindOf(tree.at("shut/file")) != Kind::nothing)
                return "what lies in shut is seen";
              return "";
            }),
            "");
}

TEST_F(FileAccessTest, has_not_listed_what_breaks_off_in_between) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << obstacle;
  const TempTree tree("wide/\n  file#### x1000\n");
  const auto body = [&] { return files_.canList(tree.at("wide")) ? "yes" : "no"; };
  int breaks = 0;
  for (std::size_t call = 1;; ++call) {
    const TracedRun run = SystemCallTrace::failingAt(call, EIO, body);
    if (run.failedCall < 0) break;
    if (run.failedCall != SYS_getdents64) continue;
    ++breaks;
    EXPECT_EQ(run.told, "no");
  }
  EXPECT_GE(breaks, 2);
}

TEST_F(FileAccessTest, leaves_nothing_open) {
  const TempTree tree("folder/\nfile 4K\n");
  const OwnProcess before = OwnProcess::now();
  files_.canList(tree.at("folder"));
  files_.canOpen(tree.at("file"));
  files_.canReadWhole(tree.at("file"));
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly
