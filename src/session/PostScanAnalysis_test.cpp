// The pass over a finished scan: what runs when, and what reaches the session.

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using PostScanAnalysis::FinishedScan;
using PostScanAnalysis::idleScope;
using PostScanAnalysis::IsCancelled;
using PostScanAnalysis::Publish;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(IdleScope, a_scan_inside_the_home_looks_at_all_of_the_home) {
  EXPECT_EQ(idleScope("/home/user/code", "/home/user"), "/home/user");
  EXPECT_EQ(idleScope("/home/user", "/home/user"), "/home/user");
}

TEST(IdleScope, a_scan_elsewhere_looks_only_there) {
  EXPECT_EQ(idleScope("/Volumes/Data", "/home/user"), "/Volumes/Data");
  EXPECT_EQ(idleScope("/home", "/home/user"), "/home");
}

TEST(IdleScope, begins_with_is_meant_of_the_text) {
  EXPECT_EQ(idleScope("/home/user2", "/home/user"), "/home/user");
}

class Analysis : public SessionFixture {
 protected:
  // Two stages that write down when they run and when they publish. A session takes its stages when
  // it is made.
  Analysis() {
    analysis_ = {stage("first"), stage("second")};
    restart();
  }

  PostScanAnalysis::Stage stage(const std::string& name) {
    return [this, name](const FinishedScan& scan, const IsCancelled& isCancelled) -> Publish {
      log_.push_back(name + " looks at " + scan.root);
      if (during_) std::exchange(during_, {})(isCancelled);
      return [this, name, root = scan.root](Findings& findings, FieldChanges&) {
        EXPECT_EQ(&findings, &session().findings());
        log_.push_back(name + " publishes " + root);
      };
    };
  }

  std::vector<std::string> taken() { return std::exchange(log_, {}); }

  std::vector<std::string> log_;
  std::function<void(const IsCancelled&)> during_;  // what happens meanwhile, once
};

TEST_F(Analysis, runs_stage_after_stage_and_publishes_together_at_the_end) {
  walks().at(0).result = folder("/data", 1);
  session().scan("/data");
  runWalks();
  runMain();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_THAT(taken(), IsEmpty());
  dispatch().drain(Queue::utility);
  EXPECT_THAT(taken(), ElementsAre("first looks at /data", "second looks at /data"));
  runMain();
  EXPECT_THAT(taken(), ElementsAre("first publishes /data", "second publishes /data"));
}

TEST_F(Analysis, gets_the_tree_the_root_and_where_to_look_for_idle_files) {
  std::vector<FinishedScan> seen;
  analysis_ = {[&](const FinishedScan& scan, const IsCancelled&) {
    seen.push_back(scan);
    return Publish();
  }};
  restart();
  const DiskNode tree = folder("/home/user/code", 3, {file("/home/user/code/main.cpp", 3)});
  scanTo(tree);
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen.front().tree, tree);
  EXPECT_EQ(seen.front().root, "/home/user/code");
  EXPECT_EQ(seen.front().idleScope, "/home/user");
}

TEST_F(Analysis, of_an_older_scan_that_ends_later_overwrites_the_newer_one) {
  walks().at(0).result = folder("/old", 1);
  walks().at(1).result = folder("/new", 1);
  during_ = [this](const IsCancelled&) {
    session().scan("/new");
    runWalks();
    runMain();
    dispatch().drain(Queue::utility);
    runMain();
  };
  session().scan("/old");
  dispatch().drainAll();
  EXPECT_THAT(taken(),
              ElementsAre("first looks at /old", "first looks at /new", "second looks at /new",
                          "first publishes /new", "second publishes /new", "second looks at /old",
                          "first publishes /old", "second publishes /old"));
  EXPECT_EQ(session().navigation().current()->path(), "/new");
}

TEST_F(Analysis, does_not_run_for_a_tree_that_was_brought_back) {
  scanTo(folder("/data", 1));
  taken();
  restart();
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(Analysis, does_not_run_for_a_scan_that_found_nothing_or_was_cancelled) {
  walks().at(0).result = folder("/empty", 0);
  session().scan("/empty");
  dispatch().drainAll();
  walks().at(1).result = folder("/data", 1);
  session().scan("/data");
  runWalks();
  session().run().cancel();
  dispatch().drainAll();
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(Analysis, stops_after_the_stage_in_which_the_session_ends) {
  walks().at(0).result = folder("/data", 1);
  session().scan("/data");
  runWalks();
  runMain();
  during_ = [this](const IsCancelled&) { endSession(); };
  dispatch().drainAll();
  EXPECT_THAT(taken(), ElementsAre("first looks at /data"));
}

TEST_F(Analysis, publishes_to_nobody_once_the_session_has_ended) {
  walks().at(0).result = folder("/data", 1);
  session().scan("/data");
  runWalks();
  runMain();
  dispatch().drain(Queue::utility);
  taken();
  endSession();
  dispatch().drainAll();
  EXPECT_THAT(taken(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
