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

TEST_F(FileAccessTest, directories_are_distinguished_from_all_other_types) {
  const TempTree tree("folder/\nfile 4K\npipe fifo\nsocket socket\n");
  EXPECT_EQ(files_.kindOf(tree.at("folder")), Kind::directory);
  for (const char* name : {"file", "pipe", "socket"})
    EXPECT_EQ(files_.kindOf(tree.at(name)), Kind::file) << name;
  EXPECT_EQ(files_.kindOf("/dev/null"), Kind::file);
}

TEST_F(FileAccessTest, links_are_followed) {
  const TempTree tree("folder/\nfile 4K\nto-folder -> folder\nto-file -> file\nbroken -> gone\n");
  EXPECT_EQ(files_.kindOf(tree.at("to-folder")), Kind::directory);
  EXPECT_TRUE(files_.canList(tree.at("to-folder")));
  EXPECT_EQ(files_.kindOf(tree.at("to-file")), Kind::file);
  EXPECT_TRUE(files_.canOpen(tree.at("to-file")));
  EXPECT_EQ(files_.kindOf(tree.at("broken")), Kind::nothing);
}

TEST_F(FileAccessTest, a_missing_path_has_no_kind_and_no_access) {
  const TempTree tree("file 4K\n");
  for (const std::string& path : {tree.at("gone"), tree.at("file/below"), std::string()}) {
    EXPECT_EQ(files_.kindOf(path), Kind::nothing) << path;
    EXPECT_FALSE(files_.canList(path)) << path;
    EXPECT_FALSE(files_.canOpen(path)) << path;
    EXPECT_FALSE(files_.canReadWhole(path)) << path;
  }
}

TEST_F(FileAccessTest, only_directories_can_be_listed_even_empty_ones) {
  const TempTree tree("empty/\nwide/\n  file## x100\nfile 4K\npipe fifo\n");
  EXPECT_TRUE(files_.canList(tree.at("empty")));
  EXPECT_TRUE(files_.canList(tree.at("wide")));
  EXPECT_FALSE(files_.canList(tree.at("file")));
  EXPECT_FALSE(files_.canList(tree.at("pipe")));
}

TEST_F(FileAccessTest, files_of_any_size_can_be_read_whole) {
  const TempTree tree("empty\nsmall 1\nlarge 3M\nhuge sparse=8G\n");
  for (const char* name : {"empty", "small", "large", "huge"})
    EXPECT_TRUE(files_.canReadWhole(tree.at(name))) << name;
}

TEST_F(FileAccessTest, a_file_that_cannot_be_mapped_can_be_read_whole) {
  EXPECT_TRUE(files_.canReadWhole("/proc/self/status"));
}

// If the call waited, this test would hang.
TEST_F(FileAccessTest, a_pipe_is_opened_without_waiting_for_a_writer) {
  const TempTree tree("pipe fifo\n");
  EXPECT_TRUE(files_.canOpen(tree.at("pipe")));
  EXPECT_FALSE(files_.canReadWhole(tree.at("pipe")));
}

TEST_F(FileAccessTest, a_device_cannot_be_read_whole) {
  EXPECT_TRUE(files_.canOpen("/dev/zero"));
  EXPECT_FALSE(files_.canReadWhole("/dev/zero"));
}

TEST_F(FileAccessTest, a_socket_cannot_be_opened) {
  const TempTree tree("socket socket\n");
  EXPECT_FALSE(files_.canOpen(tree.at("socket")));
  EXPECT_FALSE(files_.canReadWhole(tree.at("socket")));
}

TEST_F(FileAccessTest, folders_and_files_without_permission_cannot_be_listed_or_read) {
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

TEST_F(FileAccessTest, a_listing_that_fails_half_way_counts_as_refused) {
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

TEST_F(FileAccessTest, no_descriptor_is_left_open) {
  const TempTree tree("folder/\nfile 4K\n");
  const OwnProcess before = OwnProcess::now();
  files_.canList(tree.at("folder"));
  files_.canOpen(tree.at("file"));
  files_.canReadWhole(tree.at("file"));
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly
