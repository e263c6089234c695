#include "app/sidebar/SidebarState.h"

#include <gtest/gtest.h>
#include <memory>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class SidebarStateTest : public SessionFixture {
 protected:
  bool mayRead_ = false;
  int probes_ = 0;
  AccessController access_{settings_, [this] {
                             ++probes_;
                             return mayRead_;
                           }};
  std::unique_ptr<SidebarState> state_ = std::make_unique<SidebarState>(session(), access_);
};

TEST_F(SidebarStateTest, there_are_few_texts_before_a_scan) {
  EXPECT_EQ(state_->mapBadge(), QString());
  EXPECT_EQ(state_->trashBadge(), QString());
  EXPECT_FALSE(state_->isScanning());
  EXPECT_TRUE(state_->showsMap());
  EXPECT_EQ(state_->totalBytes(), 0);
  state_->emptyTrash();
  EXPECT_FALSE(state_->isEmptying());
}

TEST_F(SidebarStateTest, the_usage_of_the_disk_is_shown) {
  const QSignalSpy disks(state_.get(), &SidebarState::diskChanged);
  const QSignalSpy names(state_.get(), &SidebarState::volumeNameChanged);
  EXPECT_EQ(state_->volumeName(), QStringLiteral("System Disk"));
  volume_ =
      DiskUsage{.total = 4LL << 30U, .used = 3LL << 30U, .free = 1LL << 30U, .usedPercent = 75};
  df_ =
      "Filesystem 1K-blocks Used Available Use% Mounted on\n"
      "/dev/sdb1 200 50 150 25% /media/st\xef"
      "ck\n";
  scanTo(
      folder("/media/st\xef"
             "ck",
             1,
             {file("/media/st\xef"
                   "ck/f",
                   1)}));
  EXPECT_EQ(state_->volumeName(), QStringLiteral("st\uFFFDck"));
  EXPECT_EQ(state_->totalText(), QStringLiteral("4.0 GB"));
  EXPECT_EQ(state_->usedPercent(), 75);
  EXPECT_EQ(state_->usedBytes(), qint64{3} << 30U);
  EXPECT_EQ(state_->totalBytes(), qint64{4} << 30U);
  EXPECT_EQ(state_->freeBytes(), qint64{1} << 30U);
  EXPECT_EQ(disks.count(), 1);
  EXPECT_GE(names.count(), 1);
}

TEST_F(SidebarStateTest, the_file_system_of_the_disk_is_shown_if_known) {
  volume_ = DiskUsage{.total = 4LL << 30U, .fileSystem = "btrfs"};
  session().machine().refreshDisk();
  EXPECT_EQ(state_->totalText(), QStringLiteral("4.0 GB BTRFS"));
}

TEST_F(SidebarStateTest, scanning_the_whole_disk_raises_the_gate_without_access) {
  for (const bool byPath : {false, true}) {
    access_.setShowGate(false);
    const int before = probes_;
    if (byPath) {
      state_->scanPath(PathHandle("/"));
    } else {
      state_->scanFullMac();
    }
    EXPECT_EQ(probes_, before + 1) << "the access is probed again";
    EXPECT_TRUE(access_.showGate());
    EXPECT_EQ(session().run().status(), ScanStatus::idle);
    EXPECT_EQ(dispatch_.waiting(Queue::userInitiated), 0U);
  }
}

TEST_F(SidebarStateTest, scanning_the_whole_disk_starts_once_access_is_granted) {
  ASSERT_TRUE(access_.showGate());
  mayRead_ = true;
  state_->scanFullMac();
  EXPECT_FALSE(access_.showGate());
  EXPECT_EQ(session().run().scanRoot(), "/");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  session().run().cancel();
  state_->scanPath(PathHandle("/"));
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(SidebarStateTest, scanning_another_folder_starts_at_once) {
  access_.setShowGate(false);
  const int before = probes_;
  state_->scanPath(
      PathHandle("/media/st\xef"
                 "ck"));
  EXPECT_EQ(session().run().scanRoot(),
            "/media/st\xef"
            "ck");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(probes_, before);
  EXPECT_FALSE(access_.showGate());
}

TEST_F(SidebarStateTest, progress_is_shown_in_whole_percent) {
  const QSignalSpy scans(state_.get(), &SidebarState::scanningChanged);
  QSignalSpy percents(state_.get(), &SidebarState::percentTextChanged);
  walks_.at(0).during = [](const DiskScanner::Callbacks& callbacks) { callbacks.percent(0.469); };
  walks_.at(0).result = folder("/a", 1, {file("/a/f", 1)});
  session().scan("/a");
  EXPECT_TRUE(state_->isScanning());
  EXPECT_EQ(state_->percentText(), QStringLiteral("0%"));
  runWalks();
  dispatch_.step(Queue::main);
  EXPECT_EQ(state_->percentText(), QStringLiteral("46%"));
  EXPECT_GE(percents.count(), 1);
  dispatch_.drainAll();
  EXPECT_FALSE(state_->isScanning());
  EXPECT_EQ(scans.count(), 2);
}

TEST_F(SidebarStateTest, the_front_pane_is_shown_and_changed) {
  const QSignalSpy changes(state_.get(), &SidebarState::paneChanged);
  EXPECT_TRUE(state_->showsMap());
  state_->showMonitor();
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  EXPECT_TRUE(state_->showsMonitor());
  EXPECT_FALSE(state_->showsMap());
  state_->showApps();
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
  EXPECT_TRUE(state_->showsApps());
  state_->showMap();
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  EXPECT_EQ(changes.count(), 3);
}

TEST_F(SidebarStateTest, the_badge_of_the_map_is_the_size_of_the_folder_on_screen) {
  EXPECT_EQ(state_->mapBadge(), QString());
  const QSignalSpy changes(state_.get(), &SidebarState::mapBadgeChanged);
  scanTo(folder("/a", 3 << 20U, {folder("/a/b", 1 << 20U, {file("/a/b/f", 1 << 20U)})}));
  EXPECT_EQ(state_->mapBadge(), QStringLiteral("3.0 MB"));
  session().open(session().navigation().current()->children().front());
  EXPECT_EQ(state_->mapBadge(), QStringLiteral("1.0 MB"));
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(SidebarStateTest, items_in_the_trash_are_counted_from_one) {
  const QSignalSpy changes(state_.get(), &SidebarState::trashBadgeChanged);
  for (const auto& [printed, badge] :
       {std::pair("1", "1"), {"1234", "1234"}, {"0", ""}, {"-1", ""}}) {
    trash_ = printed;
    session().machine().refreshDisk();
    EXPECT_EQ(state_->trashBadge().toStdString(), badge);
  }
  EXPECT_EQ(changes.count(), 4);
}

TEST_F(SidebarStateTest, emptying_the_trash_runs_once_however_often_it_is_requested) {
  trash_ = "3";
  emptied_ = "0";
  session().machine().refreshDisk();
  const QSignalSpy changes(state_.get(), &SidebarState::emptyingChanged);
  state_->emptyTrash();
  EXPECT_TRUE(state_->isEmptying());
  state_->emptyTrash();
  EXPECT_EQ(dispatch_.waiting(Queue::userInitiated), 1U);
  dispatch_.drain(Queue::userInitiated);
  EXPECT_TRUE(state_->isEmptying());
  state_->emptyTrash();
  EXPECT_EQ(dispatch_.waiting(Queue::userInitiated), 0U);
  runMain();
  EXPECT_FALSE(state_->isEmptying());
  EXPECT_EQ(emptyings_, 1);
  EXPECT_EQ(state_->trashBadge(), QString());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(SidebarStateTest, emptying_has_ended_when_the_new_count_arrives) {
  trash_ = "3";
  emptied_ = "0";
  session().machine().refreshDisk();
  state_->emptyTrash();
  bool wasEmptying = true;
  QObject::connect(state_.get(), &SidebarState::trashBadgeChanged, state_.get(),
                   [&] { wasEmptying = state_->isEmptying(); });
  dispatch_.drainAll();
  EXPECT_FALSE(wasEmptying);
}

TEST_F(SidebarStateTest, emptying_can_be_tried_again_after_a_failure) {
  trash_ = "3";
  session().machine().refreshDisk();
  for (int tries = 1; tries <= 2; ++tries) {
    state_->emptyTrash();
    dispatch_.drainAll();
    EXPECT_FALSE(state_->isEmptying());
    EXPECT_EQ(state_->trashBadge(), QStringLiteral("3"));
    EXPECT_EQ(emptyings_, tries);
  }
}

TEST_F(SidebarStateTest, the_trash_is_not_emptied_while_a_batch_moves_to_it) {
  trash_ = "3";
  emptied_ = "0";
  session().machine().refreshDisk();
  machine_.trash.put("/data/film");
  session().moveBatch({{.location = {.original = "/data/film", .place = "/data/film"}}}, {});
  state_->emptyTrash();
  EXPECT_FALSE(state_->isEmptying());
  dispatch_.drainAll();
  EXPECT_EQ(emptyings_, 0);
  state_->emptyTrash();
  dispatch_.drainAll();
  EXPECT_EQ(emptyings_, 1);
}

TEST_F(SidebarStateTest, emptying_an_empty_trash_does_nothing) {
  emptied_ = "0";
  trash_ = "0";
  session().machine().refreshDisk();
  state_->emptyTrash();
  EXPECT_FALSE(state_->isEmptying());
  dispatch_.drainAll();
  EXPECT_EQ(emptyings_, 0);
}

TEST_F(SidebarStateTest, the_state_may_be_destroyed_while_the_trash_is_being_emptied) {
  trash_ = "3";
  emptied_ = "0";
  session().machine().refreshDisk();
  state_->emptyTrash();
  state_.reset();
  dispatch_.drainAll();
  EXPECT_EQ(session().machine().trashCount(), 0);
}

TEST_F(SidebarStateTest, folders_are_pinned_and_excludes_removed_by_their_bytes) {
  const PathHandle folder("/caf\xe9");
  state_->togglePin(folder);
  EXPECT_EQ(session().choices().pins(), std::vector<std::string>{"/caf\xe9"});
  state_->togglePin(folder);
  EXPECT_TRUE(session().choices().pins().empty());
  session().choices().setExcludes({"/caf\xe8", "/caf\xe9"});
  state_->removeExclude(folder);
  EXPECT_EQ(session().choices().excludes(), std::vector<std::string>{"/caf\xe8"});
}

TEST_F(SidebarStateTest, skipping_and_highlighting_a_filter_are_independent) {
  state_->toggleFilter(QStringLiteral("xcode"));
  state_->toggleSkip(QStringLiteral("build"));
  EXPECT_TRUE(session().choices().filters()[1].enabled);
  EXPECT_FALSE(session().choices().filters()[1].skipScan);
  EXPECT_FALSE(session().choices().filters()[2].enabled);
  EXPECT_TRUE(session().choices().filters()[2].skipScan);
}

}  // namespace
}  // namespace tessaly
