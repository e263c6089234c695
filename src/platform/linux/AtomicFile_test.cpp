#include "platform/AtomicFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using AtomicFile::Access;
using AtomicFile::Durability;
using testing::AnyOf;
using testing::ElementsAre;
using Kind = SystemError::Kind;

constexpr std::size_t noLimit = std::size_t{1} << 30U;

Outcome replaceIt(const std::string& path, std::string_view content,
                  Durability durability = Durability::cached) {
  return AtomicFile::replace(path, content, durability, Access::usual);
}

// "" for success, else the error: a forked child cannot use assertions, so it returns a text.
std::string told(const Outcome& outcome) {
  return outcome ? "" : outcome.error().description();
}

TEST(AtomicFileReplace, a_replacement_creates_the_file_and_then_replaces_its_content) {
  const TempTree tree;
  for (const Durability durability : {Durability::cached, Durability::synced}) {
    for (const std::string& content : {std::string("first"), std::string(), std::string("3\0x", 3),
                                       std::string(3'000'000, 'x')}) {
      EXPECT_TRUE(replaceIt(tree.at("f"), content, durability));
      EXPECT_EQ(contentOf(tree.at("f")), content);
      EXPECT_THAT(entriesOf(tree.path()), ElementsAre("f"));
    }
  }
}

TEST(AtomicFileReplace, a_process_that_has_the_file_open_keeps_the_old_content) {
  const TempTree tree;
  putFile(tree.at("f"), "old");
  std::ifstream reader(tree.at("f"));
  ASSERT_TRUE(replaceIt(tree.at("f"), "new"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
}

TEST(AtomicFileReplace, the_new_file_has_the_requested_permissions_whatever_those_of_the_old_one) {
  const TempTree tree("open mode=0666\nclosed mode=0600\n");
  const mode_t before = umask(0027);
  EXPECT_TRUE(AtomicFile::replace(tree.at("open"), "", Durability::cached, Access::owner));
  EXPECT_TRUE(AtomicFile::replace(tree.at("closed"), "", Durability::cached, Access::usual));
  umask(before);
  EXPECT_EQ(permissionsOf(tree.at("open")), 0600U);
  EXPECT_EQ(permissionsOf(tree.at("closed")), 0640U);
}

TEST(AtomicFileReplace, a_name_of_the_maximum_length_can_be_replaced) {
  const TempTree tree;
  const std::string longest(255, 'n');
  EXPECT_TRUE(replaceIt(tree.at(longest), "x"));
  EXPECT_EQ(contentOf(tree.at(longest)), "x");
  const Outcome tooLong = replaceIt(tree.at(longest + "n"), "x");
  ASSERT_FALSE(tooLong);
  EXPECT_EQ(tooLong.error().kind, Kind::nameTooLong);
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre(longest));
}

TEST(AtomicFileReplace, a_path_without_a_folder_is_in_the_current_folder) {
  const TempTree tree;
  EXPECT_EQ(inForkedChild([&] {
              if (chdir(tree.path().c_str()) != 0) return std::string("no folder");
              return told(replaceIt("f", "x"));
            }),
            "");
  EXPECT_EQ(contentOf(tree.at("f")), "x");
}

TEST(AtomicFileReplace, a_missing_folder_is_an_error) {
  const TempTree tree("file\n");
  const Outcome missing = replaceIt(tree.at("none/f"), "x");
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error(), SystemError::fromErrno(ENOENT, tree.at("none/f")));
  const Outcome noFolder = replaceIt(tree.at("file/f"), "x");
  ASSERT_FALSE(noFolder);
  EXPECT_EQ(noFolder.error().kind, Kind::notADirectory);
  EXPECT_EQ(replaceIt("", "x").error().kind, Kind::notFound);
  EXPECT_EQ(replaceIt(tree.at(""), "x").error().kind, Kind::isADirectory);
}

TEST(AtomicFileReplace, the_target_of_a_link_is_replaced) {
  const TempTree tree(R"(
    kept/
      settings 4K
    used/
      direct -> ../kept/settings
      twice -> direct
  )");
  for (const char* name : {"used/direct", "used/twice"}) {
    ASSERT_TRUE(replaceIt(tree.at(name), name, Durability::synced));
    EXPECT_EQ(contentOf(tree.at("kept/settings")), name);
  }
  ASSERT_EQ(symlink(tree.at("kept/settings").c_str(), tree.at("used/absolute").c_str()), 0);
  ASSERT_TRUE(replaceIt(tree.at("used/absolute"), "absolute"));
  EXPECT_EQ(contentOf(tree.at("kept/settings")), "absolute");
  for (const char* name : {"used/direct", "used/twice", "used/absolute"}) {
    EXPECT_TRUE(fs::is_symlink(tree.at(name)));
  }
  EXPECT_THAT(entriesOf(tree.at("kept")), ElementsAre("settings"));
  EXPECT_THAT(entriesOf(tree.at("used")), ElementsAre("absolute", "direct", "twice"));
}

TEST(AtomicFileReplace, the_missing_target_of_a_link_is_created_in_an_existing_folder) {
  const TempTree tree(R"(
    kept/
    link -> kept/new
    nowhere -> none/new
    loop -> loop
  )");
  EXPECT_TRUE(replaceIt(tree.at("link"), "x"));
  EXPECT_EQ(contentOf(tree.at("kept/new")), "x");
  EXPECT_TRUE(fs::is_symlink(tree.at("link")));
  const Outcome nowhere = replaceIt(tree.at("nowhere"), "x");
  ASSERT_FALSE(nowhere);
  EXPECT_EQ(nowhere.error().kind, Kind::notFound);
  const Outcome loop = replaceIt(tree.at("loop"), "x");
  ASSERT_FALSE(loop);
  EXPECT_EQ(loop.error().code, ELOOP);
}

TEST(AtomicFileReplace, as_many_links_as_the_system_follows_are_followed) {
  const TempTree tree;
  std::string target = "f";
  for (int number = 1; number <= 41; ++number) {
    const std::string link = "link-" + std::to_string(number);
    fs::create_symlink(target, tree.at(link));
    target = link;
  }
  EXPECT_TRUE(replaceIt(tree.at("link-40"), "x"));
  EXPECT_EQ(contentOf(tree.at("f")), "x");
  const Outcome tooMany = replaceIt(tree.at("link-41"), "y");
  ASSERT_FALSE(tooMany);
  EXPECT_EQ(tooMany.error().code, ELOOP);
  struct stat status {};
  EXPECT_EQ(::stat(tree.at("link-40").c_str(), &status), 0);
  EXPECT_NE(::stat(tree.at("link-41").c_str(), &status), 0);
}

TEST(AtomicFileReplace, a_path_that_is_not_a_regular_file_is_not_replaced) {
  const TempTree tree(R"(
    folder/
    pipe fifo
    tap socket
    device -> /dev/null
    folder-link -> folder
  )");
  for (const char* name : {"folder", "folder-link"}) {
    const Outcome outcome = replaceIt(tree.at(name), "x");
    ASSERT_FALSE(outcome) << name;
    EXPECT_EQ(outcome.error().kind, Kind::isADirectory) << name;
  }
  for (const char* name : {"pipe", "tap", "device"}) {
    const Outcome outcome = replaceIt(tree.at(name), "x");
    ASSERT_FALSE(outcome) << name;
    EXPECT_EQ(outcome.error().kind, Kind::notSupported) << name;
  }
  EXPECT_TRUE(fs::is_fifo(tree.at("pipe")));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_THAT(entriesOf(tree.path()),
              ElementsAre("device", "folder", "folder-link", "pipe", "tap"));
}

TEST(AtomicFileReplace, a_folder_without_write_permission_is_an_error) {
  const TempTree tree("locked/ mode=0555\n  f 4K\n");
  ASSERT_EQ(chmod(tree.path().c_str(), 0755), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const Outcome outcome = replaceIt(tree.at("locked/f"), "x");
              if (outcome) return "written";
              return outcome.error().kind == Kind::notPermitted ? "" : told(outcome);
            }),
            "");
  EXPECT_EQ(fs::file_size(tree.at("locked/f")), 4096U);
}

// Runs `body` in a child with a disk of 64 KiB mounted on the folder `full` of `tree`.
std::string onSmallDisk(const TempTree& tree, const std::function<std::string()>& body) {
  return inForkedChild([&]() -> std::string {
    const int spaces = CLONE_NEWNS | (geteuid() == 0 ? 0 : CLONE_NEWUSER);
    if (unshare(spaces) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", tree.at("full").c_str(), "tmpfs", 0, "size=64k") != 0) {
      return "refused: " + needs(Need::mounts, std::strerror(errno));
    }
    return body();
  });
}

TEST(AtomicFileReplace, the_old_file_is_kept_when_the_disk_is_full) {
  const TempTree tree("full/\n");
  const std::string result = onSmallDisk(tree, [&]() -> std::string {
    const std::string path = tree.at("full/f");
    for (const Durability durability : {Durability::cached, Durability::synced}) {
      if (!replaceIt(path, "old", durability)) return "no first file";
      const Outcome outcome = replaceIt(path, std::string(100'000, 'x'), durability);
      if (outcome) return "100,000 bytes on a disk of 65,536";
      if (outcome.error().kind != Kind::noSpace) return told(outcome);
      if (contentOf(path) != "old") return "the old file is gone";
      if (entriesOf(tree.at("full")) != std::vector<std::string>{"f"}) return "a temporary is left";
      if (!replaceIt(path, "new", durability) || contentOf(path) != "new") return "no way on";
    }
    return "";
  });
  if (result.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << result;
  EXPECT_EQ(result, "");
}

TEST(AtomicFileReplace, the_old_file_is_kept_when_the_new_one_would_be_too_large) {
  const TempTree tree;
  putFile(tree.at("f"), "old");
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              // The first write is cut short at the limit, and the next one fails.
              const rlimit limit{5000, 5000};
              ::signal(SIGXFSZ, SIG_IGN);
              if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return "no limit";
              const Outcome outcome = replaceIt(tree.at("f"), std::string(100'000, 'x'));
              if (outcome) return "written";
              return outcome.error().code == EFBIG ? "" : told(outcome);
            }),
            "");
  EXPECT_EQ(contentOf(tree.at("f")), "old");
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre("f"));
}

TEST(AtomicFileReplace, names_that_a_killed_process_of_the_same_number_left_are_not_used_again) {
  const TempTree tree;
  constexpr int names = 5000;
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              // Of the names that this child may choose, only every hundredth is free.
              const std::string name = ".tessaly-" + std::to_string(getpid()) + "-";
              for (int k = 0; k < names; ++k) {
                const std::string path = tree.at(name + std::to_string(k));
                if (k % 100 != 0 && mknod(path.c_str(), S_IFREG | 0600, 0) != 0) return "no file";
              }
              for (int k = 0; k < 20; ++k) {
                const Outcome outcome = replaceIt(tree.at("f"), "new");
                if (!outcome) return told(outcome);
              }
              return "";
            }),
            "");
  EXPECT_EQ(contentOf(tree.at("f")), "new");
  EXPECT_EQ(entriesOf(tree.path()).size(), names - names / 100 + 1);
}

TEST(AtomicFileReplace, concurrent_writers_of_one_path_do_not_mix_their_contents) {
  const TempTree tree;
  std::vector<std::string> contents;
  for (int k = 0; k < 4; ++k) contents.emplace_back(40'000, static_cast<char>('a' + k));
  ASSERT_TRUE(replaceIt(tree.at("f"), contents[0]));
  std::atomic<int> failures = 0;
  std::vector<std::thread> threads;
  for (const std::string& content : contents) {
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) {
        if (!replaceIt(tree.at("f"), content)) ++failures;
        const Result<std::string> found = AtomicFile::read(tree.at("f"), noLimit);
        if (!found || std::count(contents.begin(), contents.end(), found.value()) != 1) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre("f"));
}

TEST(AtomicFileRead, a_file_is_read_with_all_its_bytes) {
  const TempTree tree("link -> f\n");
  for (const std::string& content :
       {std::string(), std::string("a\0\xff\n", 4), std::string(1'000'000, 'x')}) {
    putFile(tree.at("f"), content);
    for (const char* name : {"f", "link"}) {
      const Result<std::string> found = AtomicFile::read(tree.at(name), noLimit);
      ASSERT_TRUE(found);
      EXPECT_EQ(found.value(), content);
    }
  }
}

TEST(AtomicFileRead, a_file_that_reports_the_length_0_is_read_whole) {
  // Files of /proc report the length 0.
  const Result<std::string> found = AtomicFile::read("/proc/self/status", noLimit);
  ASSERT_TRUE(found);
  EXPECT_TRUE(found.value().starts_with("Name:"));
  EXPECT_TRUE(found.value().ends_with('\n'));
}

TEST(AtomicFileRead, a_file_longer_than_the_limit_is_refused) {
  const TempTree tree("huge sparse=1G\n");
  putFile(tree.at("f"), "12345");
  EXPECT_EQ(AtomicFile::read(tree.at("f"), 5).value(), "12345");
  for (const Result<std::string>& refused :
       {AtomicFile::read(tree.at("f"), 4), AtomicFile::read(tree.at("f"), 0),
        AtomicFile::read(tree.at("huge"), 1000), AtomicFile::read("/proc/self/status", 100)}) {
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, EFBIG);
  }
}

TEST(AtomicFileRead, a_path_that_is_not_a_regular_file_is_refused_without_waiting) {
  const TempTree tree("pipe fifo\ntap socket\nfolder/\nnull -> /dev/null\nloop -> loop\n");
  const auto codeOf = [&](const char* name) {
    const Result<std::string> found = AtomicFile::read(tree.at(name), noLimit);
    return found ? 0 : found.error().code;
  };
  EXPECT_EQ(codeOf("pipe"), EOPNOTSUPP);
  EXPECT_EQ(codeOf("tap"), ENXIO);
  EXPECT_EQ(codeOf("null"), EOPNOTSUPP);
  EXPECT_EQ(codeOf("folder"), EISDIR);
  EXPECT_EQ(codeOf("loop"), ELOOP);
  EXPECT_EQ(codeOf("none"), ENOENT);
  EXPECT_EQ(codeOf("none/f"), ENOENT);
}

TEST(AtomicFileRead, a_file_without_read_permission_is_an_error) {
  const TempTree tree("secret 4K mode=0000\n");
  ASSERT_EQ(chmod(tree.path().c_str(), 0755), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const Result<std::string> found = AtomicFile::read(tree.at("secret"), noLimit);
              if (found) return "read";
              return found.error().kind == Kind::notPermitted ? "" : found.error().description();
            }),
            "");
}

TEST(AtomicFileSetAside, a_file_is_set_aside_under_the_first_free_name) {
  const TempTree tree;
  for (const char* name : {"f.old", "f.old-2", "f.old-3"}) {
    putFile(tree.at("f"), name);
    const Result<std::string> moved = AtomicFile::setAside(tree.at("f"), ".old");
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved.value(), tree.at(name));
  }
  for (const char* name : {"f.old", "f.old-2", "f.old-3"}) {
    EXPECT_EQ(contentOf(tree.at(name)), name);
  }
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre("f.old", "f.old-2", "f.old-3"));
}

TEST(AtomicFileSetAside, the_target_of_a_link_is_set_aside) {
  const TempTree tree("kept/\nlink -> kept/f\n");
  putFile(tree.at("kept/f"), "x");
  const Result<std::string> moved = AtomicFile::setAside(tree.at("link"), ".old");
  ASSERT_TRUE(moved);
  EXPECT_EQ(contentOf(tree.at("kept/f.old")), "x");
  EXPECT_TRUE(fs::is_symlink(tree.at("link")));
}

TEST(AtomicFileSetAside, a_failure_to_set_a_file_aside_is_reported_by_its_cause) {
  const TempTree tree;
  const std::string longest(255, 'n');
  putFile(tree.at(longest), "x");
  EXPECT_EQ(AtomicFile::setAside(tree.at("none"), ".old").error().kind, Kind::notFound);
  EXPECT_EQ(AtomicFile::setAside(tree.at(longest), ".old").error().kind, Kind::nameTooLong);
  EXPECT_EQ(contentOf(tree.at(longest)), "x");
}

// Interrupts a replacement at every system call, for an existing file and for a new one.
class AtomicFileInterrupted : public ::testing::TestWithParam<Durability> {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  static std::function<std::string()> replacing(const std::string& path) {
    return [path] { return told(replaceIt(path, newContent, GetParam())); };
  }

  inline static const std::string oldContent = std::string(5000, 'o');
  inline static const std::string newContent = std::string(9000, 'n');
};

INSTANTIATE_TEST_SUITE_P(Durabilities, AtomicFileInterrupted,
                         testing::Values(Durability::cached, Durability::synced),
                         [](const auto& instance) {
                           return instance.param == Durability::cached ? "cached" : "synced";
                         });

TEST_P(AtomicFileInterrupted, a_kill_at_any_step_leaves_the_old_file_or_the_new_one) {
  for (const bool hasOld : {true, false}) {
    bool wasOld = false;
    bool wasNew = false;
    for (std::size_t stop = 1;; ++stop) {
      const TempTree tree;
      if (hasOld) putFile(tree.at("f"), oldContent);
      const TracedRun run = SystemCallTrace::killedAt(stop, replacing(tree.at("f")));
      const bool isNew = contentOf(tree.at("f")) == newContent;
      const bool isOld = hasOld ? contentOf(tree.at("f")) == oldContent : !fs::exists(tree.at("f"));
      ASSERT_TRUE(isOld || isNew) << "killed at stop " << stop;
      ASSERT_FALSE(wasNew && isOld) << "killed at stop " << stop;
      (isNew ? wasNew : wasOld) = true;
      ASSERT_NE(run.end, TracedRun::End::crashed) << run.told;
      // Leftovers of the killed writer do not affect later ones.
      ASSERT_LE(entriesOf(tree.path()).size(), 2U);
      ASSERT_TRUE(replaceIt(tree.at("f"), "next"));
      ASSERT_EQ(contentOf(tree.at("f")), "next");
      if (run.end == TracedRun::End::finished) {
        EXPECT_EQ(run.told, "");
        EXPECT_GT(stop, 10U);
        break;
      }
    }
    EXPECT_TRUE(wasOld);
    EXPECT_TRUE(wasNew);
  }
}

TEST_P(AtomicFileInterrupted, a_failure_at_any_step_is_reported_and_keeps_the_old_file) {
  std::size_t failures = 0;
  for (std::size_t call = 1;; ++call) {
    const TempTree tree;
    putFile(tree.at("f"), oldContent);
    const TracedRun run = SystemCallTrace::failingAt(call, EIO, replacing(tree.at("f")));
    ASSERT_EQ(run.end, TracedRun::End::finished) << run.told;
    if (run.failedCall < 0) {
      EXPECT_EQ(run.told, "");
      break;
    }
    if (run.failedCall == SYS_getpid) continue;  // it cannot fail
    if (run.told.empty()) {
      // A failure to close the folder at the very end is not reported, nor is a missing lock:
      // another process clears an unlocked temporary file away only if it can lock the file itself.
      EXPECT_THAT(run.failedCall, AnyOf(SYS_close, SYS_flock, SYS_fcntl)) << "call " << call;
      EXPECT_EQ(contentOf(tree.at("f")), newContent);
      continue;
    }
    ++failures;
    EXPECT_EQ(run.told, tree.at("f") + ": " + std::strerror(EIO));
    const bool folderSyncFailed =
        run.failedCall == SYS_fsync && contentOf(tree.at("f")) == newContent;
    if (!folderSyncFailed) {
      EXPECT_EQ(contentOf(tree.at("f")), oldContent) << "call " << call;
    }
    EXPECT_THAT(entriesOf(tree.path()), ElementsAre("f")) << "call " << call;
  }
  // The calls: open each folder from the root on, open and stat the possible link, stat the file,
  // create the temporary file, stat it, write, close and rename it; open the folder for the sync,
  // and two syncs.
  const std::string path = TempTree().at("f");
  const auto folders = static_cast<std::size_t>(std::count(path.begin(), path.end(), '/'));
  EXPECT_EQ(failures, folders + (GetParam() == Durability::synced ? 11U : 8U));
}

TEST_P(AtomicFileInterrupted, an_interrupted_call_is_made_again) {
  for (std::size_t call = 1;; ++call) {
    const TempTree tree;
    putFile(tree.at("f"), oldContent);
    const TracedRun run = SystemCallTrace::failingAt(call, EINTR, replacing(tree.at("f")));
    if (run.failedCall < 0) break;
    const std::vector<long> restarted = {SYS_openat, SYS_write, SYS_fsync, SYS_close};
    if (std::count(restarted.begin(), restarted.end(), run.failedCall) == 0) continue;
    EXPECT_EQ(run.told, "") << "call " << call;
    EXPECT_EQ(contentOf(tree.at("f")), newContent) << "call " << call;
  }
}

TEST_P(AtomicFileInterrupted, the_content_is_synced_before_the_rename_and_the_folder_after_it) {
  const TempTree tree;
  TracedRun run = SystemCallTrace::of(replacing(tree.at("f")));
  std::erase_if(run.calls, [](long call) {
    return call != SYS_write && call != SYS_fsync && call != SYS_renameat && call != SYS_close;
  });
  // The folders of the path are closed before anything is written. At the end the lock of the
  // temporary file is released, and the folder closed.
  run.calls.erase(run.calls.begin(), std::find(run.calls.begin(), run.calls.end(), SYS_write));
  if (GetParam() == Durability::synced) {
    EXPECT_THAT(run.calls, ElementsAre(SYS_write, SYS_fsync, SYS_close, SYS_renameat, SYS_fsync,
                                       SYS_close, SYS_close));
  } else {
    EXPECT_THAT(run.calls, ElementsAre(SYS_write, SYS_close, SYS_renameat, SYS_close, SYS_close));
  }
}

}  // namespace
}  // namespace tessaly
