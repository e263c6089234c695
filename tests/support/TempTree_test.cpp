#include "support/TempTree.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

#include "support/ForkedChild.h"
#include "support/RandomTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

struct stat statusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
  return status;
}

TEST(TempTree, a_tree_is_built_from_its_text) {
  const TempTree tree(R"(
    a/ mode=0700 mtime=5.5
      film\s\n\xff 300K mtime=-1.25
      sparse sparse=1G
      pipe fifo
      socket socket
    link -> a
    twin = a/sparse
    copy-## 10 x12
  )");
  EXPECT_EQ(statusOf(tree.at("a")).st_mode, S_IFDIR | 0700U);
  EXPECT_EQ(statusOf(tree.at("a")).st_mtim.tv_sec, 5);
  EXPECT_EQ(statusOf(tree.at("a")).st_mtim.tv_nsec, 500000000);
  EXPECT_EQ(tree.allocated("a/film \n\xff"), 300 * 1024);
  EXPECT_EQ(statusOf(tree.at("a/film \n\xff")).st_mtim.tv_sec, -2);
  EXPECT_EQ(statusOf(tree.at("a/film \n\xff")).st_mtim.tv_nsec, 750000000);
  EXPECT_EQ(tree.allocated("a/sparse"), 0);
  EXPECT_EQ(tree.length("a/sparse"), 1 << 30);
  EXPECT_TRUE(S_ISFIFO(statusOf(tree.at("a/pipe")).st_mode));
  EXPECT_TRUE(S_ISSOCK(statusOf(tree.at("a/socket")).st_mode));
  EXPECT_EQ(fs::read_symlink(tree.at("link")), "a");
  EXPECT_EQ(statusOf(tree.at("twin")).st_ino, statusOf(tree.at("a/sparse")).st_ino);
  EXPECT_EQ(tree.length("copy-00"), 10);
  EXPECT_EQ(tree.length("copy-11"), 10);
  EXPECT_FALSE(fs::exists(tree.at("copy-12")));
}

TEST(TempTree, a_folder_is_repeated_with_its_contents) {
  const TempTree tree(R"(
    folder-#/ x3
      file-# x2
    last
  )");
  for (const char* path : {"folder-0/file-0", "folder-0/file-1", "folder-2/file-1", "last"}) {
    EXPECT_TRUE(fs::exists(tree.at(path))) << path;
  }
}

TEST(TempTree, an_invalid_line_is_refused) {
  for (const char* text :
       {"a sideways", "a/\n      b", "a\n  b", "a ->", "a\\q", "a\\x1", "a 12Q"}) {
    EXPECT_THROW(TempTree tree(text), std::exception) << text;
  }
}

TEST(TempTree, the_destructor_removes_the_tree) {
  std::string path;
  {
    TempTree tree(R"(
      locked/ mode=0
        inner/ mode=0
          deeper/ mode=0
            film 4K
    )");
    tree.plant(randomTree(7, 300));
    tree.chain("", "folder", 5000,
               [](int folder, int) { plantTree(folder, folder, "a/\n  b/\n    c"); });
    path = tree.path();
    ASSERT_TRUE(fs::exists(path));
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST(TempTree, the_destructor_removes_folders_without_permissions) {
  const auto told = asOtherUser([]() -> std::string {
    std::string path;
    {
      const TempTree tree(R"(
        locked/ mode=0
          inner/ mode=0
            deeper/ mode=0400
              film 4K mode=0
            beside/
      )");
      path = tree.path();
    }
    return fs::exists(path) ? "something is left" : "";
  });
  EXPECT_EQ(told, "");
}

TEST(ForkedChild, a_forked_child_reports_what_its_body_returned) {
  EXPECT_EQ(inForkedChild([] { return std::string(); }), "");
  EXPECT_EQ(inForkedChild([] { return std::string(100000, 'x'); }), std::string(100000, 'x'));
  EXPECT_THAT(inForkedChild([]() -> std::string { throw std::runtime_error("broken"); }),
              testing::HasSubstr("broken"));
  EXPECT_THAT(inForkedChild([]() -> std::string {
                raise(SIGKILL);
                return "";
              }),
              testing::HasSubstr("signal"));
  EXPECT_THAT(inForkedChild([]() -> std::string { _exit(3); }), testing::HasSubstr("3"));
}

TEST(ForkedChild, another_user_is_refused_locked_items) {
  const TempTree tree(R"(
    locked/ mode=0
  )");
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              return access(tree.at("locked").c_str(), R_OK) == 0 ? "not refused" : "";
            }),
            "");
}

}  // namespace
}  // namespace tessaly
