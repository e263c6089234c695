#include "platform/FileBlocks.h"

#include <atomic>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "support/DeadVolume.h"
#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

bool goOn() {
  return false;
}

std::optional<FileBlocks> blocksOf(const std::string& path) {
  return fileBlocks({path}, goOn).front();
}

TEST(FileBlocks, a_file_has_its_inode_its_names_and_its_bytes_on_disk) {
  const TempTree tree("film 1M\ntwin = film\nhollow sparse=1G\n");
  const std::optional<FileBlocks> film = blocksOf(tree.at("film"));
  struct stat status {};
  ASSERT_EQ(lstat(tree.at("film").c_str(), &status), 0);
  ASSERT_TRUE(film);
  EXPECT_EQ(film->device, status.st_dev);
  EXPECT_EQ(film->inode, status.st_ino);
  EXPECT_EQ(film->links, 2U);
  EXPECT_EQ(film->blockBytes, 1048576);
  EXPECT_EQ(film->blockBytes, tree.allocated("film"));
  EXPECT_EQ(film->cloneId, 0U);
  EXPECT_EQ(blocksOf(tree.at("twin")), film);
  EXPECT_EQ(blocksOf(tree.at("hollow"))->blockBytes, 0);
}

TEST(FileBlocks, the_results_are_in_the_order_of_the_paths) {
  const TempTree tree("a 4K\nb 8K\nc 12K\n");
  const auto all = fileBlocks({tree.at("c"), tree.at("gone"), tree.at("a"), tree.at("b")}, goOn);
  ASSERT_THAT(all, SizeIs(4));
  EXPECT_EQ(all[0]->blockBytes, 12288);
  EXPECT_FALSE(all[1]);
  EXPECT_EQ(all[2]->blockBytes, 4096);
  EXPECT_EQ(all[3]->blockBytes, 8192);
}

TEST(FileBlocks, what_is_missing_or_no_path_has_no_result) {
  TempTree tree("file 4K\n");
  EXPECT_FALSE(blocksOf(tree.at("gone")));
  EXPECT_FALSE(blocksOf(tree.at("file/below")));
  EXPECT_FALSE(blocksOf(""));
  EXPECT_FALSE(blocksOf("file"));
  // The system would examine "file".
  EXPECT_FALSE(blocksOf(tree.at("file") + std::string("\0x", 2)));
  EXPECT_THAT(fileBlocks({}, goOn), IsEmpty());
}

TEST(FileBlocks, links_are_examined_themselves) {
  const TempTree tree("film 1M\nalias -> film\ndead -> nowhere\nloop -> loop\n");
  for (const char* name : {"alias", "dead", "loop"}) {
    const std::optional<FileBlocks> link = blocksOf(tree.at(name));
    ASSERT_TRUE(link) << name;
    EXPECT_EQ(link->links, 1U);
    EXPECT_LT(link->blockBytes, 1048576);
  }
}

TEST(FileBlocks, what_is_no_file_is_never_opened) {
  const TempTree tree("pipe fifo\ntap socket\nfolder/\n");
  for (const char* name : {"pipe", "tap", "folder"}) {
    EXPECT_TRUE(blocksOf(tree.at(name))) << name;
    EXPECT_EQ(blocksOf(tree.at(name))->cloneId, 0U) << name;
  }
  // A writer of a pipe waits until somebody opens the other end, or tries to.
  const pid_t writer = fork();
  ASSERT_GE(writer, 0);
  if (writer == 0) _exit(open(tree.at("pipe").c_str(), O_WRONLY) >= 0 ? 1 : 2);
  for (int i = 0; i < 1000; ++i) blocksOf(tree.at("pipe"));
  int status = 0;
  EXPECT_EQ(waitpid(writer, &status, WNOHANG), 0);
  kill(writer, SIGKILL);
  waitpid(writer, &status, 0);
  EXPECT_TRUE(blocksOf("/dev/tty"));
}

TEST(FileBlocks, a_file_that_may_not_be_read_is_examined_without_being_opened) {
  const TempTree tree("secret 8K mode=0\nlocked/ mode=0\n  film 4K\n");
  ASSERT_EQ(chmod(tree.path().c_str(), 0755), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const std::optional<FileBlocks> secret = blocksOf(tree.at("secret"));
              if (!secret || secret->blockBytes != 8192) return "the file was not examined";
              return blocksOf(tree.at("locked/film")) ? "a file behind a locked folder" : "";
            }),
            "");
  ASSERT_EQ(chmod(tree.at("locked").c_str(), 0755), 0);
}

TEST(FileBlocks, paths_of_any_length_are_examined) {
  TempTree tree("a/\n");
  const std::string name(200, 'n');
  tree.chain("a", name, 40);
  std::string folder = tree.at("a");
  for (int i = 0; i < 40; ++i) folder += "/" + name;
  ASSERT_GT(folder.size(), static_cast<std::size_t>(PATH_MAX));
  EXPECT_TRUE(blocksOf(folder));
}

// One path is a file, a pipe, a link, a folder and nothing in turn, as fast as another thread can
// make them.
TEST(FileBlocks, an_item_that_changes_all_the_time_is_examined_as_one_of_those_it_was) {
  const TempTree tree("now/\nfile 4K\n");
  std::atomic<bool> isOver = false;
  const std::string path = tree.at("now/item");
  std::thread other([&] {
    while (!isOver) {
      link(tree.at("file").c_str(), path.c_str());
      unlink(path.c_str());
      mkfifo(path.c_str(), 0600);
      unlink(path.c_str());
      static_cast<void>(!symlink(tree.at("file").c_str(), path.c_str()));
      unlink(path.c_str());
      mkdir(path.c_str(), 0700);
      rmdir(path.c_str());
    }
  });
  for (int i = 0; i < 3000; ++i) {
    const std::optional<FileBlocks> seen = blocksOf(path);
    EXPECT_EQ(seen ? seen->cloneId : 0, 0U);
  }
  isOver = true;
  other.join();
}

TEST(FileBlocks, places_that_would_mount_something_are_not_touched) {
  const TempTree tree("point/\nfile 4K\n");
  const std::string told = inPrivateMounts([&]() -> std::string {
    // An automounter that does not answer. It is another process: its own accesses do not wait.
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t automounter = fork();
    if (automounter == 0) {
      pause();
      _exit(0);
    }
    setpgid(automounter, automounter);
    struct End {
      ~End() {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
      }
      pid_t pid;
    } const end{automounter};
    const std::string options = "fd=" + std::to_string(ends[1]) +
                                ",pgrp=" + std::to_string(automounter) +
                                ",minproto=5,maxproto=5,indirect";
    if (::mount("test", tree.at("point").c_str(), "autofs", 0, options.c_str()) != 0) {
      return refusal();
    }
    // Ends a wait.
    int looks = 0;
    const auto seen =
        fileBlocks({tree.at("point/host/film"), tree.at("file")}, [&] { return ++looks > 200; });
    if (looks > 200) return "it waits for the automounter";
    if (seen[0]) return "there is something";
    return seen[1] ? "" : "the file beside it was not examined";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

TEST(FileBlocks, a_volume_that_does_not_answer_is_given_up_when_cancelled) {
  if (geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root mounts a dead volume");
  DeadVolume volume;
  const TempTree tree("file 4K\n");
  const std::string told = inForkedChild([&]() -> std::string {
    if (!volume.mountInChild()) return refusal(Need::fuse);
    int looks = 0;
    const auto seen = fileBlocks({tree.at("file"), "/media/dead/film", tree.at("file")},
                                 [&] { return ++looks > 5; });
    if (looks != 6) return "it did not hang";
    if (!seen[0]) return "the first file was not examined";
    return !seen[1] && !seen[2] ? "" : "a result from beyond";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

// Takes the ten seconds after which it is given up.
TEST(FileBlocks, a_volume_that_does_not_answer_withholds_no_other_file) {
  if (geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root mounts a dead volume");
  DeadVolume volume;
  const TempTree tree("file 4K\n");
  const std::string told = inForkedChild([&]() -> std::string {
    if (!volume.mountInChild()) return refusal(Need::fuse);
    const auto seen = fileBlocks({"/media/dead/film", tree.at("file"), "/media/dead/other"}, goOn);
    if (seen[0] || seen[2]) return "the volume has answered";
    return seen[1] ? "" : "the other file was not examined";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

TEST(FileBlocks, a_cancelled_examination_finds_nothing) {
  const TempTree tree("file 4K\n");
  const auto seen = fileBlocks({tree.at("file")}, [] { return true; });
  ASSERT_THAT(seen, SizeIs(1));
  EXPECT_FALSE(seen[0]);
}

TEST(FileBlocks, no_descriptor_and_no_thread_is_left) {
  const TempTree tree("file 4K\npipe fifo\nlink -> file\n");
  const OwnProcess before = OwnProcess::now();
  for (int i = 0; i < 20; ++i) {
    fileBlocks({tree.at("file"), tree.at("pipe"), tree.at("link"), tree.at("gone")}, goOn);
  }
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly
