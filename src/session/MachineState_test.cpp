// Figures of the machine that arrive later than they are asked for, or never.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include <QObject>
#include <QSignalSpy>

#include "session/ScanSession.h"
#include "session/SessionFixture_test.h"
#include "session/StatusBar.h"
#include "support/FakeMachine.h"
#include "support/FakeVolumes.h"
#include "support/HeldFigures.h"
#include "system/MountFigures.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const DiskUsage usage{.total = 100, .used = 95, .free = 5, .usedPercent = 95};
const std::vector<VolumeMount> stick = {{"stick", "/media/stick", 200, 25}};

DiskNode tree() {
  DiskNode::Fields fields;
  fields.name = "music";
  fields.path = "/media/stick/music";
  fields.size = 1;
  fields.isDir = true;
  return DiskNode(fields);
}

class LateFigures : public testing::Test {
 protected:
  LateFigures() {
    ScanSession::Services services = machine_.services("/home/user");
    services.walk = [](const auto&, const auto&, const auto&) { return tree(); };
    services.figures = &figures_;
    session_ = std::make_unique<ScanSession>(services);
  }

  void scan() {
    session_->scan("/media/stick/music");
    machine_.dispatch.drainAll();
  }

  FakeMachine machine_;
  HeldFigures figures_;
  std::unique_ptr<ScanSession> session_;
};

TEST_F(LateFigures, the_session_starts_without_figures_and_takes_late_ones) {
  EXPECT_EQ(session_->machine().disk(), DiskUsage());
  EXPECT_THAT(session_->machine().volumes(), IsEmpty());
  const QSignalSpy disk(&session_->machine(), &MachineState::diskChanged);
  const QSignalSpy volumes(&session_->machine(), &MachineState::volumesChanged);
  HeldFigures::answer(figures_.disk, usage);
  HeldFigures::answer(figures_.volumes, stick);
  EXPECT_EQ(session_->machine().disk(), usage);
  EXPECT_EQ(session_->machine().volumes(), stick);
  EXPECT_EQ(disk.count(), 1);
  EXPECT_EQ(volumes.count(), 1);
}

TEST_F(LateFigures, the_start_asks_for_disk_and_volumes_only) {
  EXPECT_THAT(figures_.disk, SizeIs(1));
  EXPECT_THAT(figures_.volumes, SizeIs(1));
  EXPECT_THAT(figures_.trashCount, IsEmpty());
  HeldFigures::answer(figures_.disk, usage);
  EXPECT_THAT(machine_.icon.badges, IsEmpty());
  EXPECT_THAT(machine_.notifications.posted, IsEmpty());
}

using FiguresAtOnce = SessionFixture;

TEST_F(FiguresAtOnce, known_figures_are_announced_with_the_step_that_asked_for_them) {
  volume_ = usage;
  const QSignalSpy disk(&session().machine(), &MachineState::diskChanged);
  FieldChanges changes;
  session().machine().refreshDisk(changes);
  EXPECT_EQ(session().machine().disk(), usage);
  EXPECT_EQ(disk.count(), 0);
  changes.announce();
  EXPECT_EQ(disk.count(), 1);
}

TEST_F(LateFigures, a_scan_completes_before_late_figures) {
  HeldFigures::answer(figures_.volumes, stick);
  scan();
  EXPECT_EQ(session_->run().status(), ScanStatus::complete);
  EXPECT_THAT(session_->navigation().stack(), SizeIs(1));
  EXPECT_EQ(machine_.icon.attentionRequests, 1);
  EXPECT_THAT(figures_.volumes, SizeIs(1));
  // The old figures stay meanwhile.
  EXPECT_EQ(session_->machine().volumes(), stick);
  EXPECT_EQ(session_->machine().currentVolumeName(session_->navigation().current()), "stick");
  HeldFigures::answer(figures_.volumes, {});
  EXPECT_THAT(session_->machine().volumes(), IsEmpty());
}

TEST_F(LateFigures, badge_and_warning_follow_a_late_answer) {
  session_->machine().refreshDisk();
  EXPECT_THAT(machine_.icon.badges, IsEmpty());
  EXPECT_THAT(machine_.notifications.posted, IsEmpty());
  HeldFigures::answer(figures_.disk, usage);
  EXPECT_THAT(machine_.icon.badges, ElementsAre("95%"));
  EXPECT_THAT(machine_.notifications.posted, SizeIs(1));
}

TEST_F(LateFigures, a_figure_without_an_answer_keeps_its_value) {
  session_->machine().refreshDisk();
  HeldFigures::answer(figures_.disk, usage);
  HeldFigures::answer<std::int64_t>(figures_.trashCount, 3);
  session_->machine().refreshDisk();
  scan();
  EXPECT_EQ(session_->machine().disk(), usage);
  EXPECT_EQ(session_->machine().trashCount(), 3);
}

TEST_F(LateFigures, a_missing_answer_does_not_delay_the_others) {
  session_->machine().refreshDisk();
  HeldFigures::answer<std::int64_t>(figures_.trashCount, 3);
  EXPECT_EQ(session_->machine().trashCount(), 3);
  EXPECT_EQ(session_->machine().disk(), DiskUsage());
}

TEST_F(LateFigures, an_answer_after_the_end_of_the_session_is_dropped) {
  session_->machine().refreshDisk();
  session_.reset();
  HeldFigures::answer(figures_.disk, usage);
  HeldFigures::answer(figures_.volumes, stick);
  HeldFigures::answer<std::int64_t>(figures_.trashCount, 3);
  EXPECT_THAT(machine_.icon.badges, IsEmpty());
  EXPECT_THAT(machine_.notifications.posted, IsEmpty());
}

TEST_F(LateFigures, a_receiver_of_an_answer_may_end_the_session) {
  QObject::connect(&session_->machine(), &MachineState::diskChanged, [this] { session_.reset(); });
  HeldFigures::answer(figures_.disk, usage);
  EXPECT_EQ(session_, nullptr);
}

TEST_F(LateFigures, the_status_bar_shows_late_figures) {
  StatusBar bar(*session_, machine_.loginItem, machine_.statusBar,
                {.showMainWindow = [] {}, .activate = [] {}, .quit = [] {}});
  EXPECT_EQ(machine_.statusBar.label.text, "0%");
  HeldFigures::answer(figures_.disk, usage);
  EXPECT_EQ(machine_.statusBar.label.text, "95%");
}

// The same with mounts, one of which hangs.
TEST(DeadVolume, a_hanging_volume_is_listed_and_never_blocks_the_session) {
  FakeMachine machine;
  const auto volumes = std::make_shared<FakeVolumes>();
  volumes->mount("/mnt/dead", VolumeFigures{.total = 100, .used = 50, .free = 50});
  volumes->mount("/", VolumeFigures{.total = 100, .used = 60, .free = 40});
  MountFigures figures(
      {.dispatch = machine.dispatch, .volumes = volumes, .volumeUsage = [] { return usage; }},
      Places::forLinux());
  ScanSession::Services services = machine.services("/home/user");
  services.walk = [](const auto&, const auto&, const auto&) { return tree(); };
  services.figures = &figures;
  HandSteppedDispatch& dispatch = machine.dispatch;
  using Queue = Dispatch::Queue;

  ScanSession session(services);
  EXPECT_EQ(dispatch.waiting(Queue::utility), 2U);  // the disk usage and the list of mounts
  EXPECT_TRUE(dispatch.step(Queue::utility) && dispatch.step(Queue::utility));
  dispatch.drain(Queue::main);
  EXPECT_EQ(session.machine().disk(), usage);
  const Dispatch::Work hanging = dispatch.take(Queue::utility);

  session.scan("/media/stick/music");
  session.machine().refreshDisk();
  dispatch.drainAll();
  EXPECT_EQ(session.run().status(), ScanStatus::complete);
  EXPECT_THAT(session.machine().volumes(), IsEmpty());
  dispatch.advance(MountFigures::volumePatience);
  dispatch.drainAll();
  EXPECT_THAT(session.machine().volumes(), ElementsAre(VolumeMount{"dead", "/mnt/dead", 0, 0},
                                                       VolumeMount{"System Disk", "/", 100, 60}));
  EXPECT_THAT(volumes->asked, testing::Each("/"));

  hanging();
  session.scan("/media/stick/music");
  dispatch.drainAll();
  EXPECT_EQ(session.machine().volumes()[0], (VolumeMount{"dead", "/mnt/dead", 100, 50}));
}

}  // namespace
}  // namespace tessaly
