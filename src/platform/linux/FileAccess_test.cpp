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

TEST_F(FileAccessTest, an_entry_of_any_kind_and_name_makes_a_directory_one_with_entries) {
  const TempTree tree(
      "empty/\nfull/\n  folder/\nhidden/\n  .x\nodd/\n  ...\nlink/\n  a -> b\nfile 4K\n"
      "to-full -> full\n");
  for (const char* name : {"full", "hidden", "odd", "link", "to-full"})
    EXPECT_TRUE(files_.hasEntries(tree.at(name))) << name;
  for (const char* name : {"empty", "file", "gone"})
    EXPECT_FALSE(files_.hasEntries(tree.at(name))) << name;
}

TEST_F(FileAccessTest, the_entries_of_a_locked_directory_are_unknown) {
  const TempTree tree("locked/ mode=0311\n  file\n");
  EXPECT_EQ(asOtherUser([&] { return files_.hasEntries(tree.at("locked")) ? "it has" : ""; }), "");
}

TEST_F(FileAccessTest, an_item_is_examined_itself_and_not_what_a_link_leads_to) {
  const TempTree tree(
      "file 12K mtime=1500000000.25\nshort 5\nsparse sparse=1G mtime=-2.5\nlink -> file\n"
      "\\xFF\\n 4K\nfolder/ mtime=7\n");
  EXPECT_EQ(files_.valuesOf(tree.at("file")),
            (FileAccess::Values{.modified = 1500000000.25, .allocated = 12288, .size = 12288}));
  EXPECT_EQ(files_.valuesOf(tree.at("short")).size, 5);
  EXPECT_EQ(files_.valuesOf(tree.at("sparse")),
            (FileAccess::Values{.modified = -2.5, .allocated = 0, .size = 1 << 30}));
  EXPECT_EQ(files_.valuesOf(tree.at("link")).size, 4);
  EXPECT_EQ(files_.valuesOf(tree.at("\xFF\n")).allocated, 4096);
  EXPECT_EQ(files_.valuesOf(tree.at("folder")).modified, 7);
}

TEST_F(FileAccessTest, an_item_with_a_path_of_any_length_is_examined) {
  TempTree tree;
  const std::string name(200, 'x');
  tree.chain("", name, 30, [](int folder, int level) {
    if (level == 30) plantTree(folder, folder, "file 8K mtime=9\n");
  });
  std::string path = tree.path();
  for (int level = 0; level < 30; ++level) path += "/" + name;
  EXPECT_EQ(files_.valuesOf(path + "/file"),
            (FileAccess::Values{.modified = 9, .allocated = 8192, .size = 8192}));
  EXPECT_EQ(files_.valuesOf(path + "/gone"), FileAccess::Values());
}

TEST_F(FileAccessTest, a_path_that_is_not_absolute_or_has_a_nul_is_that_of_no_item) {
  EXPECT_EQ(files_.valuesOf("."), FileAccess::Values());
  EXPECT_EQ(files_.valuesOf(std::string("/tmp\0x", 6)), FileAccess::Values());
}

TEST_F(FileAccessTest, nothing_is_known_of_an_item_that_cannot_be_examined) {
  const TempTree tree("file 4K\nlocked/ mode=0\n  file 4K\n");
  const FileAccess::Values none;
  EXPECT_EQ(files_.valuesOf(tree.at("gone")), none);
  EXPECT_EQ(files_.valuesOf(tree.at("file/below")), none);
  EXPECT_EQ(files_.valuesOf(""), none);
  EXPECT_EQ(files_.valuesOf(tree.at(std::string(5000, 'x'))), none);
  EXPECT_EQ(asOtherUser([&] {
              return files_.valuesOf(tree.at("locked/file")) == none ? "" : "something is known";
            }),
            "");
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
