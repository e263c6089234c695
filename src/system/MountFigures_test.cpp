#include "system/MountFigures.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "platform/PlatformServices.h"
#include "support/FakeVolumes.h"
#include "support/HandSteppedDispatch.h"
#include "support/PrivateMounts.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Queue = Dispatch::Queue;
using namespace std::chrono_literals;
using Volumes = std::vector<VolumeMount>;

constexpr VolumeFigures figures{.total = 1000, .used = 600, .free = 300};  // 67 %

class MountFiguresTest : public testing::Test {
 protected:
  void askDisk() {
    figures_->askDisk([this](const DiskUsage& disk) { disks_.push_back(disk); });
  }
  void askVolumes() {
    figures_->askVolumes([this](const Volumes& volumes) { volumes_.push_back(volumes); });
  }
  void askTrashCount() {
    figures_->askTrashCount([this](std::int64_t count) { counts_.push_back(count); });
  }

  // The paths of the last list of volumes.
  std::vector<std::string> listed() const {
    std::vector<std::string> paths;
    for (const VolumeMount& volume : volumes_.back()) paths.push_back(volume.path);
    return paths;
  }

  // Reads the list of mounts; the next questions are in the queue afterwards.
  void readList() {
    ASSERT_TRUE(dispatch_.step(Queue::utility));
    ASSERT_TRUE(dispatch_.step(Queue::main));
  }

  void runOutOfPatience() {
    dispatch_.advance(MountFigures::volumePatience);
    dispatch_.drain(Queue::main);
  }

  std::unique_ptr<MountFigures> freshFigures() {
    return std::make_unique<MountFigures>(
        MountFigures::Services{
            .dispatch = dispatch_, .volumes = machine_, .volumeUsage = [this] { return usage_; }},
        Places::forLinux());
  }

  HandSteppedDispatch dispatch_;
  std::shared_ptr<FakeVolumes> machine_ = std::make_shared<FakeVolumes>();
  std::optional<DiskUsage> usage_;
  std::unique_ptr<MountFigures> figures_ = freshFigures();
  std::vector<DiskUsage> disks_;
  std::vector<Volumes> volumes_;
  std::vector<std::int64_t> counts_;
};

TEST_F(MountFiguresTest, a_question_is_not_processed_on_the_thread_that_asks_it) {
  machine_->mount("/", figures);
  askDisk();
  askVolumes();
  askTrashCount();
  EXPECT_EQ(machine_->lists, 0);
  EXPECT_THAT(machine_->asked, IsEmpty());
  dispatch_.drain(Queue::main);
  EXPECT_EQ(machine_->lists, 0);
  dispatch_.drainAll();
  EXPECT_EQ(disks_.size(), 1U);
  EXPECT_EQ(volumes_.size(), 1U);
  EXPECT_EQ(counts_.size(), 1U);
}

TEST_F(MountFiguresTest, volumes_are_listed_with_their_figures_in_the_order_of_the_mounts) {
  machine_->mount("/", figures);
  machine_->mount("/boot", figures);
  machine_->mount("/media/me/My Disk", VolumeFigures{.total = 200, .used = 50, .free = 150});
  machine_->mount("/home", VolumeFigures{.total = 100, .used = 0, .free = 100});
  askVolumes();
  dispatch_.drainAll();
  EXPECT_THAT(volumes_, ElementsAre(Volumes{{"System Disk", "/", 1000, 67},
                                            {"My Disk", "/media/me/My Disk", 200, 25},
                                            {"home", "/home", 100, 0}}));
  EXPECT_THAT(machine_->asked, ElementsAre("/", "/media/me/My Disk", "/home"));
}

TEST_F(MountFiguresTest, a_name_that_is_not_utf8_does_not_affect_other_volumes) {
  machine_->mount("/", figures);
  machine_->mount("/media/caf\xe9", figures);
  machine_->mount("/mnt/b", figures);
  askVolumes();
  dispatch_.drainAll();
  EXPECT_THAT(listed(), ElementsAre("/", "/media/caf\xe9", "/mnt/b"));
  EXPECT_EQ(volumes_[0][1].name, "caf\xe9");
}

TEST_F(MountFiguresTest, volumes_without_a_size_or_with_an_error_are_not_listed) {
  machine_->mount("/", figures);
  machine_->mount("/mnt/none", VolumeFigures{});
  machine_->mount("/mnt/refused", std::nullopt);
  askVolumes();
  dispatch_.drainAll();
  EXPECT_THAT(listed(), ElementsAre("/"));
}

TEST_F(MountFiguresTest, no_volumes_are_listed_without_a_list_of_mounts) {
  machine_->mount("/", figures);
  machine_->hasList = false;
  askVolumes();
  dispatch_.drainAll();
  EXPECT_THAT(volumes_, ElementsAre(IsEmpty()));
}

TEST_F(MountFiguresTest, a_volume_that_does_not_respond_is_listed_without_its_figures) {
  machine_->mount("/mnt/dead", figures);
  machine_->mount("/mnt/live", figures);
  askVolumes();
  readList();
  const auto hanging = dispatch_.take(Queue::utility);
  dispatch_.drainAll();
  EXPECT_THAT(volumes_, IsEmpty());
  runOutOfPatience();
  EXPECT_THAT(volumes_,
              ElementsAre(Volumes{{"dead", "/mnt/dead", 0, 0}, {"live", "/mnt/live", 1000, 67}}));
  hanging();
  dispatch_.drainAll();
  EXPECT_EQ(volumes_.size(), 1U);
}

// The same time as the tools have on the other system.
TEST_F(MountFiguresTest, a_volume_has_six_seconds_to_respond) {
  machine_->mount("/mnt/dead", figures);
  askVolumes();
  readList();
  const auto hanging = dispatch_.take(Queue::utility);
  dispatch_.advance(5999ms);
  dispatch_.drainAll();
  EXPECT_THAT(volumes_, IsEmpty());
  dispatch_.advance(1ms);
  dispatch_.drainAll();
  EXPECT_EQ(volumes_.size(), 1U);
}

TEST_F(MountFiguresTest, a_trash_has_six_seconds_to_respond) {
  machine_->homeTrash = {{9, 1, 2}};
  machine_->mount("/mnt/dead", figures, {{8, 1, 5}});
  askTrashCount();
  readList();
  const auto home = dispatch_.take(Queue::utility);
  const auto hanging = dispatch_.take(Queue::utility);
  home();
  dispatch_.advance(5999ms);
  dispatch_.drainAll();
  EXPECT_THAT(counts_, IsEmpty());
  dispatch_.advance(1ms);
  dispatch_.drainAll();
  EXPECT_THAT(counts_, ElementsAre(2));
}

TEST_F(MountFiguresTest, the_disk_has_five_seconds_to_respond) {
  usage_ = DiskUsage{.total = 100, .used = 60, .free = 40, .usedPercent = 60};
  for (const auto& [late, answers] : {std::pair(4999ms, 1), std::pair(5000ms, 0)}) {
    disks_.clear();
    figures_ = freshFigures();
    askDisk();
    const auto question = dispatch_.take(Queue::utility);
    dispatch_.advance(late);
    dispatch_.drain(Queue::main);
    question();
    dispatch_.drainAll();
    EXPECT_EQ(static_cast<int>(disks_.size()), answers);
  }
}

TEST_F(MountFiguresTest, a_volume_that_does_not_respond_is_waited_for_only_once) {
  machine_->mount("/mnt/dead", figures);
  machine_->mount("/mnt/live", figures);
  askVolumes();
  readList();
  const auto hanging = dispatch_.take(Queue::utility);
  runOutOfPatience();
  dispatch_.drainAll();
  askVolumes();
  dispatch_.drainAll();
  EXPECT_EQ(volumes_.size(), 2U);
  EXPECT_THAT(listed(), ElementsAre("/mnt/dead", "/mnt/live"));
  askTrashCount();
  dispatch_.drainAll();
  EXPECT_EQ(counts_.size(), 1U);
  EXPECT_THAT(machine_->asked, ElementsAre("/mnt/live", "/mnt/live"));
}

TEST_F(MountFiguresTest, disk_and_trash_are_reported_while_a_volume_does_not_respond) {
  machine_->mount("/mnt/dead", figures, {{8, 1, 5}});
  machine_->homeTrash = {{9, 1, 2}};
  usage_ = DiskUsage{.total = 100, .used = 60, .free = 40, .usedPercent = 60};
  askVolumes();
  readList();
  const auto hanging = dispatch_.take(Queue::utility);
  askDisk();
  askTrashCount();
  dispatch_.drainAll();
  EXPECT_THAT(disks_, ElementsAre(*usage_));
  runOutOfPatience();
  dispatch_.drainAll();
  EXPECT_THAT(counts_, ElementsAre(2));
}

TEST_F(MountFiguresTest, the_disk_usage_falls_back_to_the_mount_at_the_root) {
  machine_->mount("/", figures);
  askDisk();
  dispatch_.drainAll();
  EXPECT_THAT(disks_,
              ElementsAre(DiskUsage{.total = 1000, .used = 600, .free = 300, .usedPercent = 67}));
  machine_->mounted.clear();
  askDisk();
  dispatch_.drainAll();
  EXPECT_EQ(disks_.back(), DiskUsage());
}

TEST_F(MountFiguresTest, the_disk_has_the_type_of_the_file_system_at_its_mount_point) {
  machine_->mount("/", figures, {}, "btrfs");
  machine_->mount("/home", figures, {}, "xfs");
  usage_ = DiskUsage{.total = 100, .used = 60, .free = 40, .usedPercent = 60};
  askDisk();
  dispatch_.drainAll();
  EXPECT_EQ(disks_.back().total, 100);
  EXPECT_EQ(disks_.back().fileSystem, "btrfs");
  usage_ = std::nullopt;
  askDisk();
  dispatch_.drainAll();
  EXPECT_EQ(disks_.back().total, 1000);
  EXPECT_EQ(disks_.back().fileSystem, "btrfs");
}

TEST_F(MountFiguresTest, the_disk_has_no_type_without_a_list_of_mounts) {
  machine_->hasList = false;
  usage_ = DiskUsage{.total = 100, .used = 60, .free = 40, .usedPercent = 60};
  askDisk();
  dispatch_.drainAll();
  EXPECT_THAT(disks_, ElementsAre(*usage_));
}

TEST_F(MountFiguresTest, a_disk_that_does_not_respond_is_not_reported) {
  usage_ = DiskUsage{.total = 100, .used = 60, .free = 40, .usedPercent = 60};
  askDisk();
  const auto hanging = dispatch_.take(Queue::utility);
  dispatch_.advance(MountFigures::diskPatience);
  dispatch_.drainAll();
  EXPECT_THAT(disks_, IsEmpty());
  hanging();
  dispatch_.drainAll();
  EXPECT_THAT(disks_, IsEmpty());
  askDisk();
  dispatch_.drainAll();
  EXPECT_THAT(disks_, ElementsAre(*usage_));
}

TEST_F(MountFiguresTest, each_trash_counts_once_however_many_mounts_show_it) {
  machine_->mount("/", figures, {{8, 1, 3}});
  machine_->mount("/mnt/a", figures, {{8, 2, 10}, {8, 3, 100}});
  machine_->mount("/mnt/again", figures, {{8, 2, 10}, {7, 3, 1000}});
  machine_->homeTrash = {{8, 1, 3}};
  askTrashCount();
  dispatch_.drainAll();
  EXPECT_THAT(counts_, ElementsAre(1113));
}

TEST_F(MountFiguresTest, a_trash_that_cannot_be_counted_does_not_affect_others) {
  machine_->mount("/", figures, {{8, 1, 3}});
  machine_->homeTrash.reset();
  askTrashCount();
  dispatch_.drainAll();
  EXPECT_THAT(counts_, ElementsAre(3));
}

TEST_F(MountFiguresTest, the_trash_of_the_home_counts_without_a_list_of_mounts) {
  machine_->homeTrash = {{8, 1, 3}};
  machine_->hasList = false;
  askTrashCount();
  dispatch_.drainAll();
  EXPECT_THAT(counts_, ElementsAre(3));
}

TEST_F(MountFiguresTest, no_count_is_reported_if_no_trash_responds) {
  machine_->mount("/", figures, {{8, 1, 3}});
  askTrashCount();
  readList();
  const auto home = dispatch_.take(Queue::utility);
  const auto root = dispatch_.take(Queue::utility);
  runOutOfPatience();
  dispatch_.drainAll();
  EXPECT_THAT(counts_, IsEmpty());
}

TEST_F(MountFiguresTest, calls_during_a_query_share_the_next_one) {
  machine_->mount("/", figures);
  for (int i = 0; i < 4; ++i) askVolumes();
  readList();
  machine_->mount("/mnt/new", figures);
  askVolumes();
  dispatch_.drainAll();
  EXPECT_EQ(machine_->lists, 2);
  ASSERT_EQ(volumes_.size(), 5U);
  EXPECT_EQ(volumes_[0].size(), 1U);
  for (int i = 1; i < 5; ++i) EXPECT_EQ(volumes_[static_cast<std::size_t>(i)].size(), 2U) << i;
}

TEST_F(MountFiguresTest, answers_come_in_the_order_of_the_calls) {
  machine_->mount("/mnt/dead", figures);
  askVolumes();
  readList();
  const auto hanging = dispatch_.take(Queue::utility);
  askVolumes();
  machine_->mount("/mnt/live", figures);
  EXPECT_THAT(volumes_, IsEmpty());
  runOutOfPatience();
  dispatch_.drainAll();
  ASSERT_EQ(volumes_.size(), 2U);
  EXPECT_EQ(volumes_[0].size(), 1U);
  EXPECT_THAT(listed(), ElementsAre("/mnt/dead", "/mnt/live"));
}

TEST_F(MountFiguresTest, the_object_may_be_destroyed_in_an_answer) {
  machine_->mount("/", figures);
  figures_->askDisk([this](const DiskUsage&) { figures_.reset(); });
  askVolumes();
  askDisk();
  dispatch_.drainAll();
  EXPECT_EQ(figures_, nullptr);
  EXPECT_THAT(disks_, IsEmpty());
}

TEST_F(MountFiguresTest, a_hanging_question_keeps_the_mounted_volumes_alive) {
  machine_->mount("/mnt/dead", figures);
  askVolumes();
  readList();
  const std::weak_ptr<FakeVolumes> machine = machine_;
  {
    const auto hanging = dispatch_.take(Queue::utility);
    figures_.reset();
    machine_.reset();
    dispatch_.drainAll();
    ASSERT_FALSE(machine.expired());
    hanging();
  }
  dispatch_.drainAll();
  EXPECT_TRUE(machine.expired());
  EXPECT_THAT(volumes_, IsEmpty());
}

TEST(MountFiguresOfMachine, a_disk_with_a_name_that_is_not_utf8_does_not_empty_the_list) {
  const std::string told = inPrivateMounts([]() -> std::string {
    const char* const disk = "/media/caf\xe9";
    if (mount("tmpfs", "/media", "tmpfs", 0, nullptr) != 0 || mkdir(disk, 0755) != 0 ||
        mount("tmpfs", disk, "tmpfs", 0, "size=8M") != 0) {
      return refusal();
    }
    HandSteppedDispatch dispatch;
    MountFigures machine({.dispatch = dispatch, .volumes = platformServices().makeMountedVolumes()},
                         Places::forLinux());
    std::map<std::string, std::int64_t> totals;
    machine.askVolumes([&](const Volumes& volumes) {
      for (const VolumeMount& volume : volumes) totals[volume.path] = volume.total;
    });
    dispatch.drainAll();
    if (!totals.contains("/")) return "no start-up volume";
    return totals[disk] == 8 << 20 ? "" : "another size of the disk";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace tessaly
