// Quitting during each kind of background work: the work is cancelled, and none of its results
// reaches the session. Archives are in ScanSessionZip_test.

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "session/SessionFixture_test.h"
#include "support/SessionRecord.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

class QuittingInTheMiddle : public SessionFixture {
 protected:
  QuittingInTheMiddle() {
    analysis_.deadLinks = [this](const PostScanAnalysis::FinishedScan&,
                                 const PostScanAnalysis::IsCancelled& isCancelled) {
      if (duringAnalysis_) std::exchange(duringAnalysis_, {})(isCancelled);
      return std::vector<DeadLink>{{.path = "/r/link " + std::to_string(++passes_)}};
    };
    snapshot_ = [this](const std::string& path, const FolderWatch::IsCancelled& isCancelled) {
      if (duringLook_) std::exchange(duringLook_, {})(isCancelled);
      return FolderSnapshot{path, {{path + "/a", ++sizeSeen_ * 10 * 1048576}}};
    };
    restart();
    walks().at(0).result = folder("/r", 5, {file("/r/a", 5)});
    session().scan("/r");
    dispatch().drainAll();
    dispatch().advance(std::chrono::hours(1));
    dispatch().drainAll();
  }

  // Ends the session, and expects that this cancels the work.
  void quit(const std::function<bool()>& isCancelled) {
    EXPECT_FALSE(isCancelled());
    session().end();
    EXPECT_TRUE(isCancelled());
    hasQuit_ = true;
  }

  // Runs everything that is left, and expects that nothing changes.
  void expectNothingMore() {
    const SessionRecord record(session(), settings_);
    dispatch().drainAll();
    ASSERT_TRUE(hasQuit_);
    EXPECT_THAT(record.changed(), IsEmpty());
    EXPECT_THAT(record.announced(), IsEmpty());
  }

  void quitInTheNextWalk() {
    WalkScript& script = walks().at(walks().ran());
    script.result = folder("/next", 7, {file("/next/b", 7)});
    script.during = [this](const DiskScanner::Callbacks& callbacks) {
      quit(callbacks.isCancelled);
      if (callbacks.progress) callbacks.progress("late");
    };
  }

  std::function<void(const Job::IsCancelled&)> duringAnalysis_;
  std::function<void(const Job::IsCancelled&)> duringLook_;
  int passes_ = 0;  // of the analysis
  bool hasQuit_ = false;
  std::int64_t sizeSeen_ = 0;
};

TEST_F(QuittingInTheMiddle, quitting_during_a_walk_leaves_the_session_unchanged) {
  quitInTheNextWalk();
  session().scan("/next");
  expectNothingMore();
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/r"});
}

TEST_F(QuittingInTheMiddle,
       quitting_during_the_expansion_of_a_package_leaves_the_session_unchanged) {
  quitInTheNextWalk();
  session().expandPackage(folder("/next", 7));
  expectNothingMore();
}

TEST_F(QuittingInTheMiddle, quitting_during_a_comparison_leaves_the_session_unchanged) {
  quitInTheNextWalk();
  folderPanel_.answer = "/next";
  session().compareWithFolder();
  expectNothingMore();
}

TEST_F(QuittingInTheMiddle,
       quitting_during_the_first_look_of_a_watch_leaves_the_session_unchanged) {
  duringLook_ = [this](const Job::IsCancelled& isCancelled) { quit(isCancelled); };
  session().startWatch();
  expectNothingMore();
}

TEST_F(QuittingInTheMiddle, quitting_during_a_later_look_of_a_watch_leaves_the_session_unchanged) {
  session().startWatch();
  dispatch().drainAll();
  duringLook_ = [this](const Job::IsCancelled& isCancelled) { quit(isCancelled); };
  session().watch().pollWatch();
  expectNothingMore();
}

TEST_F(QuittingInTheMiddle, quitting_during_an_analysis_publishes_nothing) {
  duringAnalysis_ = [this](const Job::IsCancelled& isCancelled) { quit(isCancelled); };
  walks().at(1).result = folder("/r", 5, {file("/r/a", 5)});
  session().scan("/r");
  runWalks();
  runMain();
  expectNothingMore();
}

TEST_F(QuittingInTheMiddle, quitting_while_the_trash_is_emptied_makes_no_callback) {
  emptied_ = "0";
  bool hasEnded = false;
  session().emptyTrash([&] { hasEnded = true; });
  session().end();
  hasQuit_ = true;
  expectNothingMore();
  EXPECT_EQ(emptyings_, 1);
  EXPECT_FALSE(hasEnded);
}

// Only quitting cancels these two.
using OvertakenByAScan = QuittingInTheMiddle;

TEST_F(OvertakenByAScan, an_expansion_continues_during_a_scan_and_is_shown) {
  walks().at(1).result = folder("/r/package.app", 5, {file("/r/package.app/a", 5)});
  walks().at(1).during = [this](const DiskScanner::Callbacks& callbacks) {
    session().scan("/other");
    session().run().cancel();
    EXPECT_FALSE(callbacks.isCancelled());
  };
  session().expandPackage(folder("/r/package.app", 5));
  dispatch().drainAll();
  EXPECT_EQ(stackPaths(), (std::vector<std::string>{"/r", "/r/package.app"}));
}

TEST_F(OvertakenByAScan, an_analysis_continues_during_a_scan_and_publishes) {
  duringAnalysis_ = [this](const Job::IsCancelled& isCancelled) {
    session().scan("/other");
    session().run().cancel();
    EXPECT_FALSE(isCancelled());
  };
  walks().at(1).result = folder("/r", 5, {file("/r/a", 5)});
  session().scan("/r");
  dispatch().drainAll();
  ASSERT_EQ(session().findings().deadLinks().size(), 1U);
  EXPECT_EQ(session().findings().deadLinks().front().path, "/r/link 2");
}

}  // namespace
}  // namespace tessaly
