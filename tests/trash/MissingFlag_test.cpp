// File systems that do not support moves without replacing (RENAME_NOREPLACE), and partly no hard
// links either.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <sys/syscall.h>
#include <unistd.h>

#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using End = TracedRun::End;
using SystemCallTrace::Refusals;

const Refusals noFlag = {{SYS_renameat2, EINVAL}};
const Refusals noLinksEither = {{SYS_renameat2, EINVAL}, {SYS_linkat, EPERM}};

struct Case {
  const char* name;
  const char* item;
  Refusals refusals;

  friend void PrintTo(const Case& one, std::ostream* out) { *out << one.name; }
};

class MissingFlag : public testing::TestWithParam<Case> {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  static std::unique_ptr<TrashOnDisk> freshDisk() { return std::make_unique<TrashOnDisk>(items); }
  void throwAway() {
    const Result<ItemInTrash> moved = disk_->mover().moveToTrash(item());
    ASSERT_EQ(told(moved), "");
    inTrash_ = moved.value();
  }
  std::string putBack() { return told(disk_->mover().putBack(inTrash_, item())); }

  // The type and the content of an item; "" if it is missing.
  static std::string tellOf(const std::string& path) {
    if (!isThere(path)) return "";
    const fs::file_status status = fs::symlink_status(path);
    if (fs::is_symlink(status)) return "link to " + fs::read_symlink(path).string();
    if (fs::is_regular_file(status)) return "file with " + contentOf(path);
    std::string told = "folder with";
    for (const std::string& name : TrashOnDisk::namesIn(path)) told += " " + name;
    return told;
  }

  std::string item() const { return disk_->tree.at(GetParam().item); }
  std::string place() const { return disk_->homeTrash() + "/files/" + GetParam().item; }

  static constexpr const char* items = "film 4K\nfolder/\n  film 4K\nlink -> nowhere\nempty/\n";
  std::unique_ptr<TrashOnDisk> disk_ = freshDisk();
  ItemInTrash inTrash_;
};
INSTANTIATE_TEST_SUITE_P(Items, MissingFlag,
                         testing::Values(Case{"film", "film", noFlag},
                                         Case{"folder", "folder", noFlag},
                                         Case{"link", "link", noFlag},
                                         Case{"empty", "empty", noFlag},
                                         Case{"film_without_links", "film", noLinksEither},
                                         Case{"link_without_links", "link", noLinksEither}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(MissingFlag, items_move_on_file_systems_without_the_flag) {
  const TracedRun run = SystemCallTrace::refusing(
      GetParam().refusals, [&] { return told(disk_->mover().moveToTrash(item())); });
  EXPECT_NE(run.failedCall, -1);
  EXPECT_EQ(run.told, "");
  EXPECT_FALSE(isThere(item()));
  EXPECT_TRUE(isThere(place()));
  EXPECT_EQ(recordedPath(place()), item());
}

TEST_P(MissingFlag, items_come_back_on_file_systems_without_the_flag) {
  throwAway();
  const TracedRun run = SystemCallTrace::refusing(GetParam().refusals, [&] { return putBack(); });
  EXPECT_NE(run.failedCall, -1);
  EXPECT_EQ(run.told, "");
  EXPECT_TRUE(isThere(item()));
  EXPECT_TRUE(disk_->files().empty());
  EXPECT_TRUE(disk_->infos().empty());
}

TEST_P(MissingFlag, nothing_is_replaced_on_file_systems_without_the_flag) {
  const std::string what = tellOf(item());
  const std::string target = disk_->tree.at("target");
  putFile(target, "theirs");
  const std::vector<std::function<void()>> others = {
      [&] { fs::create_directory(item()); },
      [&] { putFile(item(), ""); },
      [&] { putFile(item(), "new"); },
      [&] { fs::create_symlink("nowhere else", item()); },
      [&] { fs::create_symlink(target, item()); },
  };
  throwAway();
  for (const auto& makeOther : others) {
    makeOther();
    const std::string other = tellOf(item());
    const TracedRun run = SystemCallTrace::refusing(GetParam().refusals, [&]() -> std::string {
      const Outcome back = disk_->mover().putBack(inTrash_, item());
      if (back) return "came back";
      return back.error().kind == SystemError::Kind::alreadyExists ? "" : told(back);
    });
    EXPECT_EQ(run.told, "") << other;
    EXPECT_EQ(tellOf(item()), other);
    EXPECT_EQ(tellOf(place()), what) << other;
    EXPECT_EQ(recordedPath(place()), item()) << other;
    fs::remove(item());
  }
  EXPECT_EQ(contentOf(target), "theirs");
  EXPECT_EQ(putBack(), "");
}

// Each of these systems lacks one call; in addition one other call fails.
TEST_P(MissingFlag, the_item_has_one_name_without_the_flag_whichever_call_fails) {
  const std::string what = tellOf(item());
  for (const int code : {EIO, EACCES}) {
    std::size_t refused = 0;
    for (std::size_t call = 1;; ++call) {
      disk_ = freshDisk();
      throwAway();
      const TracedRun run = SystemCallTrace::failingAt(
          call, code, [&] { return putBack(); }, GetParam().refusals);
      ASSERT_EQ(run.end, End::finished) << run.told;
      const bool isBack = tellOf(item()) == what;
      const bool isInTrash = tellOf(place()) == what && recordedPath(place()) == item();
      EXPECT_TRUE(isBack != isInTrash) << "call " << call << ": " << run.told;
      EXPECT_EQ(isBack, run.told.empty()) << "call " << call << ": " << run.told;
      if (run.failedCall == SYS_renameat) {
        EXPECT_EQ(tellOf(item()), "") << "the name is still held";
      }
      refused += isBack ? 0 : 1;
      if (call > run.calls.size()) break;
    }
    EXPECT_GT(refused, 3U);
  }
}

// Only at the last stops before the move can a file still appear in its way.
TEST_P(MissingFlag, a_file_created_meanwhile_is_safe_without_the_flag) {
  std::size_t refused = 0;
  std::size_t stop = 1;
  for (;; ++stop) {
    disk_ = freshDisk();
    throwAway();
    bool isMade = false;
    const auto make = [&] {
      // Like programs that must not replace anything either.
      const int file = ::open(item().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
      isMade = file >= 0;
      if (isMade && ::write(file, "new", 3) != 3) isMade = false;
      if (file >= 0) ::close(file);
    };
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, make, [&] { return putBack(); }, GetParam().refusals);
    ASSERT_EQ(run.end, End::finished) << run.told;
    if (isMade) {
      ++refused;
      EXPECT_EQ(contentOf(item()), "new") << stop;
      EXPECT_NE(run.told, "") << stop;
      EXPECT_TRUE(isThere(place())) << stop;
      EXPECT_EQ(recordedPath(place()), item()) << stop;
    } else {
      EXPECT_EQ(run.told, "") << stop;
      EXPECT_FALSE(isThere(place())) << stop;
      EXPECT_TRUE(isThere(item())) << stop;
    }
    if (!run.wasInterrupted) break;
  }
  EXPECT_GT(refused, 10U);
  std::printf("a file made at each of %zu places, kept at %zu\n", stop - 1, refused);
}

class SavedItem : public MissingFlag {};
INSTANTIATE_TEST_SUITE_P(Items, SavedItem,
                         testing::Values(Case{"film", "film", noFlag}, Case{"link", "link", noFlag},
                                         Case{"film_without_links", "film", noLinksEither}),
                         [](const auto& test) { return std::string(test.param.name); });

// A program that saves by renaming puts a new file in the item's place, which is another item.
TEST_P(SavedItem, a_file_saved_over_the_item_is_kept_without_the_flag) {
  for (std::size_t stop = 1;; ++stop) {
    disk_ = freshDisk();
    const auto save = [&] {
      putFile(disk_->tree.at("draft"), "saved");
      fs::rename(disk_->tree.at("draft"), item());
    };
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, save, [&] { return told(disk_->mover().moveToTrash(item())); }, GetParam().refusals);
    ASSERT_EQ(run.end, End::finished) << run.told;
    if (!run.wasInterrupted) break;
    EXPECT_EQ(run.told, "") << stop;
    EXPECT_TRUE(isThere(place())) << stop;
    EXPECT_TRUE((contentOf(item()) == "saved") != (contentOf(place()) == "saved")) << stop;
  }
}

TEST_P(MissingFlag, one_complete_item_is_left_without_the_flag_wherever_the_program_is_killed) {
  const std::string what = tellOf(item());
  for (std::size_t stop = 1;; ++stop) {
    disk_ = freshDisk();
    throwAway();
    const TracedRun run = SystemCallTrace::killedAt(
        stop, [&] { return putBack(); }, GetParam().refusals);
    const bool isInTrash = tellOf(place()) == what && recordedPath(place()) == item();
    const bool isBack = tellOf(item()) == what;
    EXPECT_TRUE(isInTrash || isBack) << stop;
    if (run.end == End::killed) continue;
    EXPECT_EQ(run.told, "");
    EXPECT_TRUE(isBack && !isInTrash);
    break;
  }
}

class NameHeldByAFile : public MissingFlag {};
INSTANTIATE_TEST_SUITE_P(Items, NameHeldByAFile,
                         testing::Values(Case{"film", "film", noLinksEither},
                                         Case{"link", "link", noLinksEither}),
                         [](const auto& test) { return std::string(test.param.name); });

// As on file systems whose moves never replace anything.
TEST_P(NameHeldByAFile, an_item_comes_back_if_moves_never_replace_a_file) {
  const std::string what = tellOf(item());
  std::size_t call = 0;
  long refused = -1;
  while (refused != SYS_renameat) {
    disk_ = freshDisk();
    throwAway();
    const TracedRun run = SystemCallTrace::failingAt(
        ++call, EEXIST, [&] { return putBack(); }, GetParam().refusals);
    ASSERT_EQ(run.end, End::finished) << run.told;
    ASSERT_LE(call, run.calls.size()) << "nothing was moved by name";
    refused = run.failedCall;
    if (refused == SYS_renameat) {
      EXPECT_EQ(run.told, "");
    }
  }
  EXPECT_EQ(tellOf(item()), what);
  EXPECT_FALSE(isThere(place()));
}

// Writes into the file that reserves the name, like a program that does not check.
TEST_P(NameHeldByAFile, data_written_before_the_last_check_is_kept) {
  std::size_t stop = 1;
  for (;; ++stop) {
    disk_ = freshDisk();
    throwAway();
    const auto write = [&] { std::ofstream(item(), std::ios::app) << "new"; };
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, write, [&] { return putBack(); }, GetParam().refusals);
    ASSERT_TRUE(run.wasInterrupted);
    const auto moved = std::find(run.calls.begin(), run.calls.end(), SYS_renameat);
    if (moved != run.calls.end()) {
      const auto look = std::find(std::reverse_iterator(moved), run.calls.rend(), SYS_newfstatat);
      EXPECT_EQ(look.base(), moved) << "the check is not the last call before the move";
      // Two stops per call: the last safe one is before the check.
      if (stop >= 2 * static_cast<std::size_t>(run.calls.rend() - look)) break;
    }
    EXPECT_NE(run.told, "") << stop;
    EXPECT_EQ(contentOf(item()), "new") << stop;
    EXPECT_TRUE(isThere(place())) << stop;
  }
  EXPECT_GT(stop, 20U);
}

}  // namespace
}  // namespace tessaly
