// The watch with real folders, and with real threads.
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <QSignalSpy>

#include "platform/ThreadedDispatch.h"
#include "session/SessionFixture_test.h"
#include "support/Eventually.h"
#include "support/MainLoop.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using Deltas = std::vector<ScanDelta>;

constexpr std::int64_t KiB = 1024;
constexpr std::int64_t MiB = 1024 * KiB;

class WatchingRealFolders : public ::testing::Test {
 protected:
  void watch(const TempTree& tree) {
    session_->scan(tree.path());
    dispatch_.drainAll();
    ASSERT_EQ(session_->run().status(), ScanStatus::complete);
    session_->startWatch();
    dispatch_.drainAll();
  }

  std::string toastOfNextTick() {
    dispatch_.advance(20s);
    dispatch_.drainAll();
    return session_->messages().toast().value_or("(none)");
  }

  FakeMachine machine_;
  HandSteppedDispatch& dispatch_ = machine_.dispatch;
  std::unique_ptr<ScanSession> session_ = std::make_unique<ScanSession>(machine_.services("/"));
};

TEST_F(WatchingRealFolders, growth_by_a_mebibyte_of_blocks_is_reported) {
  TempTree tree("folder/\n  film 512K\nnote 512K");
  watch(tree);
  EXPECT_EQ(toastOfNextTick(), "(none)");
  tree.plant("folder", "new 1M");
  EXPECT_EQ(toastOfNextTick(), "folder grew by 1.0 MB");
  EXPECT_EQ(session_->watch().watchGrew(),
            (Deltas{{"folder", tree.at("folder"), 512 * KiB, 1 * MiB + 512 * KiB}}));
}

TEST_F(WatchingRealFolders, growth_by_one_block_less_is_not_reported) {
  TempTree tree("folder/\n  film 512K\nnote 512K");
  watch(tree);
  tree.plant("folder", "new 1044480");
  ASSERT_EQ(tree.allocated("folder/new"), MiB - 4 * KiB);
  EXPECT_EQ(toastOfNextTick(), "(none)");
  tree.plant("folder", "block 4K");
  EXPECT_EQ(toastOfNextTick(), "folder grew by 1.0 MB");
}

TEST_F(WatchingRealFolders, growth_inside_a_package_is_not_noticed) {
  TempTree tree("Tool.app/\n  binary 512K\nnote 512K");
  watch(tree);
  tree.plant("Tool.app", "more 2M");
  EXPECT_EQ(toastOfNextTick(), "(none)");
}

TEST_F(WatchingRealFolders, a_deleted_folder_reports_no_growth) {
  TempTree tree("folder/\n  film 2M");
  watch(tree);
  ASSERT_TRUE(removeTree(tree.at("folder")));
  EXPECT_EQ(toastOfNextTick(), "(none)");
  EXPECT_TRUE(session_->watch().watching());
  EXPECT_EQ(session_->run().errorMessage(), "");
}

class WatchingThreads : public ::testing::Test {
 protected:
  std::unique_ptr<ScanSession> makeSession(SessionServices::Snapshot snapshot = {}) {
    ScanSession::Services services = machine_.services("/", dispatch_, machine_.folderPanel);
    services.snapshot = std::move(snapshot);
    return std::make_unique<ScanSession>(std::move(services));
  }

  void scan(ScanSession& session, const std::string& path) {
    session.scan(path);
    mainLoop_.runUntil([&] { return session.run().status() == ScanStatus::complete; });
  }

  MainLoop mainLoop_;
  FakeMachine machine_;
  ThreadedDispatch dispatch_{[this](Dispatch::Work work) { mainLoop_.post(std::move(work)); }};
};

TEST_F(WatchingThreads, a_watch_on_real_threads_reports_growth) {
  TempTree tree("folder/\n  film 512K");
  const auto session = makeSession();
  scan(*session, tree.path());
  session->startWatch();
  const std::string name = tree.path().substr(tree.path().rfind('/') + 1);
  mainLoop_.runUntil([&] { return session->messages().toast() == "Watching " + name; });
  tree.plant("folder", "new 2M");
  session->watch().pollWatch();
  mainLoop_.runUntil([&] { return !session->watch().watchGrew().empty(); });
  EXPECT_EQ(session->messages().toast(), "folder grew by 2.0 MB");
}

TEST_F(WatchingThreads, stopping_the_watch_or_the_session_ends_a_look_on_its_thread) {
  const TempTree tree("film 512K");
  std::atomic<int> ended = 0;
  auto session = makeSession(
      [&](const std::string& path, const FolderWatch::IsCancelled& isCancelled) -> FolderSnapshot {
        eventually(isCancelled, "the end of the look");
        ++ended;
        return {path, {}};
      });
  scan(*session, tree.path());
  session->startWatch();
  session->watch().stopWatch();
  session->startWatch();
  session.reset();
  eventually([&] { return ended == 2; }, "both looks");
  mainLoop_.runPosted();
}

}  // namespace
}  // namespace tessaly
