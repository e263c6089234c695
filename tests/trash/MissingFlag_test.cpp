// File systems that know no move that leaves alone what stands at its end.
#include <cerrno>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sys/syscall.h>

#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class MissingFlag : public testing::TestWithParam<const char*> {
 protected:
  using Body = std::function<std::string(TrashOnDisk&)>;

  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  // Runs the body on a disk that was made ready for it, with the move refused as such a file system
  // does. What it told is in `told_`, what is there then in `disk_`.
  void run(const std::function<void(TrashOnDisk&)>& makeReady, const Body& body) {
    for (std::size_t call = 1;; ++call) {
      disk_ = std::make_unique<TrashOnDisk>(items);
      makeReady(*disk_);
      const TracedRun traced =
          SystemCallTrace::failingAt(call, EINVAL, [&] { return body(*disk_); });
      ASSERT_NE(traced.failedCall, -1) << "nothing was moved: " << traced.told;
      told_ = traced.told;
      if (traced.failedCall == SYS_renameat2) return;
    }
  }

  std::string item() const { return disk_->tree.at(GetParam()); }
  std::string inTrash() const {
    return disk_->homeTrash() + "/files/" + fs::path(GetParam()).filename().string();
  }

  static constexpr const char* items = "film 4K\nfolder/\n  film 4K\nlink -> nowhere\nempty/\n";
  std::unique_ptr<TrashOnDisk> disk_;
  std::string told_;
};
INSTANTIATE_TEST_SUITE_P(Items, MissingFlag, testing::Values("film", "folder", "link", "empty"));

void leaveReady(TrashOnDisk&) {}

TEST_P(MissingFlag, items_move_all_the_same) {
  run(leaveReady,
      [](TrashOnDisk& disk) { return told(disk.mover().moveToTrash(disk.tree.at(GetParam()))); });
  EXPECT_EQ(told_, "");
  EXPECT_FALSE(isThere(item()));
  EXPECT_TRUE(isThere(inTrash()));
  EXPECT_EQ(recordedPath(inTrash()), item());
}

TEST_P(MissingFlag, items_come_back_all_the_same) {
  run(
      [](TrashOnDisk& disk) {
        EXPECT_EQ(told(disk.mover().moveToTrash(disk.tree.at(GetParam()))), "");
      },
      [&](TrashOnDisk& disk) {
        return told(disk.mover().putBack(disk.homeTrash() + "/files/" + GetParam(),
                                         disk.tree.at(GetParam())));
      });
  EXPECT_EQ(told_, "");
  EXPECT_TRUE(isThere(item()));
  EXPECT_TRUE(disk_->files().empty());
  EXPECT_TRUE(disk_->infos().empty());
}

TEST_P(MissingFlag, nothing_is_replaced) {
  run(
      [](TrashOnDisk& disk) {
        EXPECT_EQ(told(disk.mover().moveToTrash(disk.tree.at(GetParam()))), "");
        fs::create_directory(disk.tree.at(GetParam()));
      },
      [&](TrashOnDisk& disk) -> std::string {
        const Outcome back = disk.mover().putBack(disk.homeTrash() + "/files/" + GetParam(),
                                                  disk.tree.at(GetParam()));
        if (back) return "came back";
        return back.error().kind == SystemError::Kind::alreadyExists ? "" : told(back);
      });
  EXPECT_EQ(told_, "");
  EXPECT_TRUE(fs::is_empty(item()));
  EXPECT_TRUE(isThere(inTrash()));
  EXPECT_EQ(recordedPath(inTrash()), item());
}

}  // namespace
}  // namespace tessaly
