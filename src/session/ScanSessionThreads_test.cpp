// The session with real threads and a real folder.

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include <QObject>

#include "platform/ThreadedDispatch.h"
#include "session/SessionFixture_test.h"
#include "support/Eventually.h"
#include "support/MainLoop.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using Callbacks = DiskScanner::Callbacks;
using Options = DiskScanner::Options;

class ScanSessionThreads : public ::testing::Test {
 protected:
  std::unique_ptr<ScanSession> makeSession(SessionServices::Walk walk = {}) {
    ScanSession::Services services = machine_.services("/", dispatch_, machine_.folderPanel);
    services.walk = std::move(walk);
    return std::make_unique<ScanSession>(std::move(services));
  }

  void runUntil(const ScanSession& session, ScanStatus status) {
    mainLoop_.runUntil([&] { return session.run().status() == status; });
  }

  MainLoop mainLoop_;
  FakeMachine machine_;
  ThreadedDispatch dispatch_{[this](Dispatch::Work work) { mainLoop_.post(std::move(work)); }};
};

TEST_F(ScanSessionThreads, a_real_folder_is_scanned_on_real_threads) {
  const TempTree tree(
      "music/\n"
      "  song 400K\n"
      "note 4K\n");
  const auto session = makeSession();
  session->scan(tree.path());
  runUntil(*session, ScanStatus::complete);
  ASSERT_EQ(session->navigation().stack().size(), 1u);
  EXPECT_EQ(session->navigation().current()->path(), tree.path());
  EXPECT_EQ(session->navigation().current()->children().size(), 1u);
  EXPECT_EQ(session->navigation().current()->children().front().name(), "music");
  ASSERT_TRUE(session->result().scanStats());
  EXPECT_EQ(session->result().scanStats()->nodes, 3);
  EXPECT_EQ(session->run().scanPercent(), 1);
}

TEST_F(ScanSessionThreads, a_missing_folder_fails_on_real_threads) {
  const TempTree tree;
  const auto session = makeSession();
  session->scan(tree.at("gone"));
  runUntil(*session, ScanStatus::error);
  EXPECT_EQ(session->run().errorMessage(), "Nothing readable at " + tree.at("gone") +
                                               ". Check its permissions or pick another folder.");
}

TEST_F(ScanSessionThreads, a_replaced_scan_ends_on_real_threads) {
  // The first walk runs until it is cancelled.
  std::atomic<int> stopped = 0;
  const auto session =
      makeSession([&](const std::string& root, const Callbacks& callbacks, const Options&) {
        if (root == "/first") {
          eventually(
              [&] {
                callbacks.progress("first");
                return callbacks.isCancelled();
              },
              "the end of the first walk");
          ++stopped;
        }
        callbacks.progress("second");
        return folder(root, 1);
      });
  bool hasShownFirst = false;
  QObject::connect(&session->navigation(), &Navigation::stackChanged,
                   [&] { hasShownFirst |= session->navigation().current()->path() == "/first"; });
  session->scan("/first");
  mainLoop_.runUntil([&] { return session->run().progress() == "first"; });
  session->scan("/second");
  runUntil(*session, ScanStatus::complete);
  EXPECT_EQ(session->navigation().current()->path(), "/second");
  eventually([&] { return stopped > 0; }, "the first walk");
  mainLoop_.runPosted();
  EXPECT_EQ(session->navigation().current()->path(), "/second");
  EXPECT_FALSE(hasShownFirst);
}

TEST_F(ScanSessionThreads, the_session_may_end_while_its_walk_runs_on_a_real_thread) {
  std::atomic<bool> hasStopped = false;
  auto session = makeSession([&](const std::string&, const Callbacks& callbacks, const Options&) {
    eventually(
        [&] {
          callbacks.progress("on and on");
          callbacks.percent(0.5);
          return callbacks.isCancelled();
        },
        "the end of the walk");
    callbacks.progress("Cancelled");
    hasStopped = true;
    return DiskNode();
  });
  session->scan("/r");
  mainLoop_.runUntil([&] { return session->run().progress() == "on and on"; });
  session.reset();
  eventually([&] { return hasStopped.load(); }, "the walk");
  mainLoop_.runPosted();
}

}  // namespace
}  // namespace tessaly
