// Another program works in the same Trash at the same time, at each step of this one.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using End = TracedRun::End;

class OtherActor : public testing::Test {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  static std::unique_ptr<TrashOnDisk> freshDisk() {
    auto disk = std::make_unique<TrashOnDisk>();
    disk->put(disk->at("film"), "first");
    // The Trash exists, and the second item is created before the first is moved.
    disk->put(disk->at("kept"), "x");
    EXPECT_EQ(told(disk->mover().moveToTrash(disk->at("kept"))), "");
    TrashOnDisk::takeOut(disk->homeTrash() + "/files/kept");
    disk->put(disk->at("elsewhere/film"), "the second");
    return disk;
  }

  std::string film() const { return disk_->at("film"); }
  std::string inTrash() const { return disk_->homeTrash() + "/files/film"; }
  std::string info() const { return infoPathOf(inTrash()); }

  // Another program restores the item, and moves another one of the same name to the Trash.
  void exchangeInTrash() {
    if (!isThere(inTrash())) return;
    fs::rename(inTrash(), disk_->at("restored"));
    putFile(info(), "[Trash Info]\nPath=" + disk_->at("elsewhere/film") + "\n");
    fs::rename(disk_->at("elsewhere/film"), inTrash());
  }

  std::unique_ptr<TrashOnDisk> disk_ = freshDisk();
};

// The stop after the last move, with two stops per call. Computed for each run, since a sanitizer
// makes a varying number of calls.
std::size_t stopAfterMove(const TracedRun& run) {
  const auto last = std::find(run.calls.rbegin(), run.calls.rend(), SYS_renameat2);
  return 2 * static_cast<std::size_t>(run.calls.rend() - last);
}

TEST_F(OtherActor, a_record_removed_before_its_item_arrives_is_written_again) {
  const auto act = [&] { return told(disk_->mover().moveToTrash(film())); };
  const std::size_t lastStop = stopAfterMove(SystemCallTrace::of(act));
  std::size_t removals = 0;
  for (std::size_t stop = 1; stop <= lastStop; ++stop) {
    disk_ = freshDisk();
    bool isRemoved = false;
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, [&] { isRemoved = fs::remove(info()); }, act);
    ASSERT_EQ(run.end, End::finished) << run.told;
    ASSERT_TRUE(run.wasInterrupted);
    if (stop > stopAfterMove(run)) break;
    removals += isRemoved ? 1 : 0;
    EXPECT_EQ(run.told, "") << stop;
    EXPECT_EQ(contentOf(inTrash()), "first") << stop;
    EXPECT_EQ(recordedPath(inTrash()), film()) << stop;
    EXPECT_EQ(told(disk_->mover().putBack(knownInTrash(inTrash()), film())), "") << stop;
  }
  EXPECT_GT(removals, 5U);
}

// There is no space for a record any more, so the item must not stay without one.
TEST_F(OtherActor, the_item_comes_back_if_its_record_is_removed_and_the_disk_is_full) {
  disk_->tree.plant("volume/\n");
  const std::string volume = disk_->tree.at("volume");
  const std::string told = inPrivateMounts([&]() -> std::string {
    for (std::size_t stop = 1;; ++stop) {
      if (::mount("tmpfs", volume.c_str(), "tmpfs", 0, "nr_inodes=16") != 0) return refusal();
      const std::string film = volume + "/film";
      putFile(film, "first");
      const std::string place = volume + "/.Trash-" + std::to_string(geteuid()) + "/files/film";
      bool isFull = false;
      const auto act = [&] {
        if (!isThere(place) || !fs::remove(infoPathOf(place))) return;
        isFull = true;
        for (int i = 0; std::ofstream(volume + "/full" + std::to_string(i)).is_open(); ++i) {
        }
      };
      const TracedRun run = SystemCallTrace::interruptedAt(stop, act, [&]() -> std::string {
        const Result<ItemInTrash> moved = disk_->mover().moveToTrash(film);
        if (moved) return "";
        return moved.error().kind == SystemError::Kind::noSpace ? "no space" : tessaly::told(moved);
      });
      if (isFull) {
        if (run.told != "no space") return "told: " + run.told;
        return contentOf(film) == "first" && !isThere(place) ? "" : "it has not come back";
      }
      if (!run.wasInterrupted) return "no record was removed";
      if (::umount2(volume.c_str(), MNT_DETACH) != 0) return refusal();
    }
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

// The item then gets another name, and each record belongs to its own item.
TEST_F(OtherActor, a_record_written_by_another_before_the_item_arrives_is_kept) {
  const auto act = [&] { return told(disk_->mover().moveToTrash(film())); };
  const std::size_t lastStop = stopAfterMove(SystemCallTrace::of(act));
  const std::string other = "[Trash Info]\nPath=/other/film\n";
  std::size_t exchanges = 0;
  for (std::size_t stop = 1; stop <= lastStop; ++stop) {
    disk_ = freshDisk();
    bool isTaken = false;
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop,
        [&] {
          isTaken = fs::remove(info());
          if (isTaken) putFile(info(), other);
        },
        act);
    ASSERT_EQ(run.end, End::finished) << run.told;
    if (stop > stopAfterMove(run)) break;
    EXPECT_EQ(run.told, "") << stop;
    exchanges += isTaken ? 1 : 0;
    const std::string place = isTaken ? disk_->homeTrash() + "/files/film.2" : inTrash();
    EXPECT_EQ(contentOf(place), "first") << stop;
    EXPECT_EQ(recordedPath(place), film()) << stop;
    if (isTaken) {
      EXPECT_EQ(contentOf(info()), other) << stop;
      EXPECT_THAT(disk_->files(), ElementsAre("film.2")) << stop;
    }
  }
  EXPECT_GT(exchanges, 5U);
}

// The other program takes our record, which has no item yet, for a leftover, and moves an item of
// the same name. So our item gets another name, and only our own record is removed.
TEST_F(OtherActor, an_item_of_the_name_moved_by_another_keeps_its_record) {
  const auto act = [&] { return told(disk_->mover().moveToTrash(film())); };
  const std::size_t lastStop = stopAfterMove(SystemCallTrace::of(act));
  std::size_t exchanges = 0;
  for (std::size_t stop = 1; stop <= lastStop; ++stop) {
    disk_ = freshDisk();
    const std::string other = "[Trash Info]\nPath=" + disk_->at("elsewhere/film") + "\n";
    bool isTaken = false;
    const auto throwAway = [&] {
      if (isThere(inTrash())) return;
      isTaken = fs::remove(info());
      if (!isTaken) return;
      putFile(info(), other);
      fs::rename(disk_->at("elsewhere/film"), inTrash());
    };
    const TracedRun run = SystemCallTrace::interruptedAt(stop, throwAway, act);
    ASSERT_EQ(run.end, End::finished) << run.told;
    EXPECT_EQ(run.told, "") << stop;
    if (!isTaken) continue;
    ++exchanges;
    EXPECT_EQ(contentOf(inTrash()), "the second") << stop;
    EXPECT_EQ(contentOf(info()), other) << stop;
    const std::string place = disk_->homeTrash() + "/files/film.2";
    EXPECT_EQ(contentOf(place), "first") << stop;
    EXPECT_EQ(recordedPath(place), film()) << stop;
  }
  EXPECT_GT(exchanges, 5U);
}

TEST_F(OtherActor, a_reused_name_keeps_its_item_and_its_record) {
  std::size_t refusals = 0;
  std::size_t stop = 1;
  for (;; ++stop) {
    disk_ = freshDisk();
    const Result<ItemInTrash> moved = disk_->mover().moveToTrash(film());
    ASSERT_TRUE(moved);
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, [&] { exchangeInTrash(); },
        [&]() -> std::string {
          const Outcome back = disk_->mover().putBack(moved.value(), film());
          if (back) return "";
          return back.error().kind == SystemError::Kind::stale ? "stale" : told(back);
        });
    ASSERT_EQ(run.end, End::finished) << run.told;
    if (run.told.empty()) {
      EXPECT_EQ(contentOf(film()), "first") << stop;
      EXPECT_THAT(disk_->files(), IsEmpty()) << stop;
    } else {
      ++refusals;
      EXPECT_EQ(run.told, "stale") << stop;
      EXPECT_FALSE(isThere(film())) << stop;
      EXPECT_EQ(contentOf(disk_->at("restored")), "first") << stop;
      EXPECT_EQ(contentOf(inTrash()), "the second") << stop;
      EXPECT_EQ(recordedPath(inTrash()), disk_->at("elsewhere/film")) << stop;
    }
    if (!run.wasInterrupted) break;
  }
  EXPECT_GT(refusals, 20U);
  std::printf("the name used again at each of %zu places, refused at %zu\n", stop - 1, refusals);
}

// On a file system without moves that never replace: once the item has a second name, an item with
// the first name in the Trash is checked before that name is removed.
TEST_F(OtherActor, a_reused_name_keeps_its_item_if_that_removes_a_second_name) {
  const SystemCallTrace::Refusals noFlag = {{SYS_renameat2, EINVAL}};
  const auto moveAway = [&] {
    const Result<ItemInTrash> moved = disk_->mover().moveToTrash(film());
    EXPECT_EQ(told(moved), "");
    return moved ? moved.value() : ItemInTrash();
  };
  ItemInTrash item = moveAway();
  const auto putBack = [&] { return told(disk_->mover().putBack(item, film())); };
  std::size_t stop = 1;
  for (;; ++stop) {
    disk_ = freshDisk();
    item = moveAway();
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, [&] { exchangeInTrash(); }, putBack, noFlag);
    ASSERT_EQ(run.end, End::finished) << run.told;
    const auto linked = std::find(run.calls.begin(), run.calls.end(), SYS_linkat);
    const auto removed = std::find(linked, run.calls.end(), SYS_unlinkat);
    if (removed != run.calls.end()) {
      const auto look = std::find(std::reverse_iterator(removed), run.calls.rend(), SYS_statx);
      // Two stops per call: the last safe one is before the check.
      if (stop >= 2 * static_cast<std::size_t>(run.calls.rend() - look)) break;
    }
    ASSERT_TRUE(run.wasInterrupted);
    EXPECT_EQ(contentOf(inTrash()), "the second") << stop;
    EXPECT_EQ(recordedPath(inTrash()), disk_->at("elsewhere/film")) << stop;
    EXPECT_EQ(contentOf(disk_->at("restored")), "first") << stop;
    EXPECT_TRUE(!isThere(film()) || contentOf(film()) == "first") << stop;
  }
  EXPECT_GT(stop, 20U);
}

// A program saves a file over the item that has just been put back: the saved file stays.
TEST_F(OtherActor, a_file_saved_over_the_returned_item_is_kept) {
  std::size_t saved = 0;
  for (std::size_t stop = 1;; ++stop) {
    disk_ = freshDisk();
    const Result<ItemInTrash> moved = disk_->mover().moveToTrash(film());
    ASSERT_TRUE(moved);
    bool isSaved = false;
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop,
        [&] {
          isSaved = isThere(film());
          if (isSaved) fs::rename(disk_->at("elsewhere/film"), film());
        },
        [&] { return told(disk_->mover().putBack(moved.value(), film())); });
    ASSERT_EQ(run.end, End::finished) << run.told;
    EXPECT_EQ(run.told, "") << stop;
    EXPECT_EQ(contentOf(film()), isSaved ? "the second" : "first") << stop;
    saved += isSaved ? 1 : 0;
    if (!run.wasInterrupted) break;
  }
  EXPECT_GT(saved, 5U);
}

// Between two checks of the disk, it cannot be known whether an item was exchanged before or after
// it moved. In that case the reported item is the one that was checked, which is not in the Trash.
TEST_F(OtherActor, an_item_exchanged_during_the_move_is_never_put_back_as_the_other) {
  for (std::size_t stop = 1;; ++stop) {
    disk_ = freshDisk();
    const auto exchange = [&] {
      if (isThere(film())) {
        fs::rename(film(), disk_->at("restored"));
        fs::rename(disk_->at("elsewhere/film"), film());
      } else {
        exchangeInTrash();
      }
    };
    const std::string film = this->film();
    const TracedRun run = SystemCallTrace::interruptedAt(stop, exchange, [&]() -> std::string {
      const Result<ItemInTrash> moved = disk_->mover().moveToTrash(film);
      if (!moved) return told(moved);
      // The known bytes, for the test to compare.
      return "in Trash " + moved.value().identity.item + "\n" + moved.value().identity.record;
    });
    ASSERT_EQ(run.end, End::finished) << run.told;
    ASSERT_TRUE(run.told.starts_with("in Trash ")) << stop << ": " << run.told;
    const std::string known = run.told.substr(9);
    const std::size_t end = known.find('\n');
    const ItemInTrash item{
        .path = inTrash(),
        .identity = {.item = known.substr(0, end), .record = known.substr(end + 1)}};
    const std::string there = contentOf(inTrash());
    const bool isBack = disk_->mover().putBack(item, film).ok();
    if (isBack) {
      EXPECT_EQ(contentOf(film), there) << stop;
    } else {
      EXPECT_EQ(contentOf(inTrash()), "the second") << stop;
      EXPECT_FALSE(isThere(film)) << stop;
    }
    if (!run.wasInterrupted) break;
  }
}

}  // namespace
}  // namespace tessaly
