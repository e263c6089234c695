// The Trash with each system call failing in turn, and with the program killed before and after
// each: exactly one complete copy of the item is left in a known place.
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sys/syscall.h>

#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using End = TracedRun::End;

// Where the only copy of the item is: "original", "trash", or a text that says what is wrong.
std::string placeOf(const TrashOnDisk& disk) {
  std::vector<std::string> copies;
  const auto note = [&](const std::string& path) {
    const bool isWhole = contentOf(path + "/first") == "1" &&
                         contentOf(path + "/deeper/second") == "2" && entriesOf(path).size() == 2;
    copies.push_back(isWhole ? path : "damaged");
  };
  if (isThere(disk.at("a/item"))) note(disk.at("a/item"));
  for (const std::string& name : disk.files()) {
    if (name == "kept") continue;
    const std::string path = disk.homeTrash() + "/files/" + name;
    if (recordedPath(path) != disk.at("a/item")) return "an item without its record";
    note(path);
  }
  if (copies.size() != 1) return std::to_string(copies.size()) + " copies";
  if (copies.front() == "damaged") return "a damaged copy";
  return copies.front() == disk.at("a/item") ? "original" : "trash";
}

bool hasInfoOfItem(const TrashOnDisk& disk) {
  for (const std::string& name : disk.infos()) {
    if (name.starts_with("item")) return true;
  }
  return false;
}

struct Scenario {
  const char* name;
  bool isPutBack;
  bool isFirst;  // there is no Trash yet, or the folder above the original is missing

  friend void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }
};

class TrashFaults : public testing::TestWithParam<Scenario> {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  // A disk, and the item to put back from its Trash, if any.
  struct Disk : TrashOnDisk {
    ItemInTrash item;
  };

  static std::unique_ptr<Disk> diskForRun() {
    auto disk = std::make_unique<Disk>();
    if (GetParam().isPutBack || !GetParam().isFirst) {
      disk->put(disk->at("kept"), "x");
      EXPECT_EQ(told(disk->mover().moveToTrash(disk->at("kept"))), "");
    }
    disk->put(disk->at("a/item/first"), "1");
    disk->put(disk->at("a/item/deeper/second"), "2");
    if (GetParam().isPutBack) {
      const Result<ItemInTrash> moved = disk->mover().moveToTrash(disk->at("a/item"));
      EXPECT_EQ(told(moved), "");
      if (moved) disk->item = moved.value();
      if (GetParam().isFirst) fs::remove(disk->at("a"));
    }
    return disk;
  }

  static std::string act(Disk& disk) {
    if (!GetParam().isPutBack) return told(disk.mover().moveToTrash(disk.at("a/item")));
    return told(disk.mover().putBack(disk.item, disk.at("a/item")));
  }

  static const char* before() { return GetParam().isPutBack ? "trash" : "original"; }
  static const char* after() { return GetParam().isPutBack ? "original" : "trash"; }
};
INSTANTIATE_TEST_SUITE_P(Moves, TrashFaults,
                         testing::Values(Scenario{"first_to_trash", false, true},
                                         Scenario{"to_trash", false, false},
                                         Scenario{"put_back", true, false},
                                         Scenario{"put_back_to_missing_folder", true, true}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(TrashFaults, one_copy_is_left_wherever_the_program_is_killed) {
  std::set<std::string> found;
  std::size_t stop = 1;
  for (;; ++stop) {
    const auto disk = diskForRun();
    const TracedRun run = SystemCallTrace::killedAt(stop, [&] { return act(*disk); });
    const std::string place = placeOf(*disk);
    found.insert(place);
    EXPECT_TRUE(place == before() || place == after()) << "stop " << stop << ": " << place;
    if (run.end == End::killed) {
      // It can be moved or put back again.
      if (place == before()) {
        EXPECT_EQ(act(*disk), "") << stop;
      }
      EXPECT_EQ(placeOf(*disk), after()) << stop;
      continue;
    }
    EXPECT_EQ(run.end, End::finished) << run.told;
    EXPECT_EQ(run.told, "");
    EXPECT_EQ(place, after());
    break;
  }
  EXPECT_EQ(found, (std::set<std::string>{before(), after()}));
  std::printf("killed at each of %zu places\n", stop - 1);
}

TEST_P(TrashFaults, the_reported_result_is_true_whichever_call_fails) {
  for (const int code : {EIO, EACCES, EPERM, EINTR, EINVAL, ENOENT, EEXIST, EXDEV, ENOSPC, EROFS,
                         EMFILE, ENOSYS, ELOOP, ESTALE}) {
    std::size_t refusals = 0;
    std::size_t call = 1;
    for (;; ++call) {
      const auto disk = diskForRun();
      const TracedRun run = SystemCallTrace::failingAt(call, code, [&] { return act(*disk); });
      const std::string where = "call " + std::to_string(call) + ", number " +
                                std::to_string(run.failedCall) + ", errno " + std::to_string(code);
      ASSERT_EQ(run.end, End::finished) << where << ": " << run.told;
      if (run.told.empty()) {
        EXPECT_EQ(placeOf(*disk), after()) << where;
      } else {
        ++refusals;
        EXPECT_EQ(placeOf(*disk), before()) << where << ": " << run.told;
        EXPECT_EQ(hasInfoOfItem(*disk), GetParam().isPutBack) << where;
      }
      if (run.failedCall == -1) break;
    }
    EXPECT_GT(call, 10U);
    if (code == EIO) {
      EXPECT_GT(refusals, 3U);
    }
    std::printf("errno %d: %zu calls failed, %zu moves refused\n", code, call - 1, refusals);
  }
}

}  // namespace
}  // namespace tessaly
