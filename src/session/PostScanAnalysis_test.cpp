// The analysis of a finished scan: when the engines run, and which lists the session gets.

#include <cstddef>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/SessionFixture_test.h"
#include "support/SessionRecord.h"

namespace tessaly {
namespace {

using PostScanAnalysis::FinishedScan;
using PostScanAnalysis::idleScope;
using PostScanAnalysis::IsCancelled;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> allEnginesOfData = {"duplicates /data", "deadLinks /data",
                                                   "cloudItems /data", "cloneGroups /data",
                                                   "safeItems /data"};

TEST(IdleScope, the_idle_scope_of_a_scan_inside_the_home_is_the_home) {
  EXPECT_EQ(idleScope("/home/user/code", "/home/user"), "/home/user");
  EXPECT_EQ(idleScope("/home/user", "/home/user"), "/home/user");
}

TEST(IdleScope, the_idle_scope_of_another_scan_is_its_root) {
  EXPECT_EQ(idleScope("/Volumes/Data", "/home/user"), "/Volumes/Data");
  EXPECT_EQ(idleScope("/home", "/home/user"), "/home");
}

TEST(IdleScope, the_idle_scope_compares_the_paths_as_text) {
  EXPECT_EQ(idleScope("/home/user2", "/home/user"), "/home/user");
}

class Analysis : public SessionFixture {
 protected:
  // Five engines that record when they run. Each finds one item, with the root of the scan as its
  // path or id. A session gets its engines at construction.
  Analysis() {
    using std::string;
    analysis_.duplicates = engine<DuplicateGroup>(
        "duplicates", [](const string& root) { return DuplicateGroup{.digest = root}; });
    analysis_.deadLinks =
        engine<DeadLink>("deadLinks", [](const string& root) { return DeadLink{.path = root}; });
    analysis_.cloudItems =
        engine<CloudItem>("cloudItems", [](const string& root) { return CloudItem{.path = root}; });
    analysis_.cloneGroups = engine<ShareGroup>(
        "cloneGroups", [](const string& root) { return ShareGroup{.id = root}; });
    analysis_.safeItems =
        engine<SafeItem>("safeItems", [](const string& root) { return SafeItem{.path = root}; });
    restart();
  }

  template <class Row>
  PostScanAnalysis::Engine<Row> engine(const std::string& name,
                                       std::function<Row(const std::string&)> row) {
    return [this, name, row](const FinishedScan& scan, const IsCancelled& isCancelled) {
      log_.push_back(name + " " + scan.root);
      if (during_) std::exchange(during_, {})(isCancelled);
      return std::vector<Row>{row(scan.root)};
    };
  }

  // Finishes the walk of /data; its analysis waits on a worker queue.
  void finishWalk() {
    walks().at(0).result = folder("/data", 1);
    session().scan("/data");
    runWalks();
    runMain();
  }

  std::vector<std::string> taken() { return std::exchange(log_, {}); }

  // The roots in the findings, in the order of the lists.
  std::vector<std::string> found() {
    const Findings& findings = session().findings();
    std::vector<std::string> roots;
    for (const auto& group : findings.duplicates()) roots.push_back(group.digest);
    for (const auto& link : findings.deadLinks()) roots.push_back(link.path);
    for (const auto& item : findings.cloudItems()) roots.push_back(item.path);
    for (const auto& group : findings.cloneGroups()) roots.push_back(group.id);
    for (const auto& item : findings.safeItems()) roots.push_back(item.path);
    return roots;
  }

  // Each of the five lists has the item of the scan of `root`.
  void expectAllListsOf(const std::string& root) {
    EXPECT_THAT(found(), AllOf(SizeIs(5), Each(root)));
  }

  // Records each signal of the findings, with the number of items that are stored by then.
  void logSignals() {
    const auto log = [this](const char* name, void (Findings::*signal)()) {
      QObject::connect(&session().findings(), signal, &context_, [this, name] {
        log_.push_back(name + std::string(" changed, items: ") + std::to_string(found().size()));
      });
    };
    log("duplicates", &Findings::duplicatesChanged);
    log("deadLinks", &Findings::deadLinksChanged);
    log("cloudItems", &Findings::cloudItemsChanged);
    log("cloneGroups", &Findings::cloneGroupsChanged);
    log("safeItems", &Findings::safeItemsChanged);
  }

  std::vector<std::string> log_;
  std::function<void(const IsCancelled&)> during_;  // called once, while an engine runs
  QObject context_;
};

TEST_F(Analysis, engines_run_in_order_and_publish_together_at_the_end) {
  finishWalk();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_THAT(taken(), IsEmpty());
  dispatch().drain(Queue::utility);
  EXPECT_THAT(taken(), ElementsAreArray(allEnginesOfData));
  EXPECT_THAT(found(), IsEmpty());
  runMain();
  expectAllListsOf("/data");
}

TEST_F(Analysis, all_lists_are_stored_before_the_first_signal) {
  finishWalk();
  dispatch().drain(Queue::utility);
  taken();
  logSignals();
  runMain();
  EXPECT_THAT(taken(), ElementsAre("duplicates changed, items: 5", "deadLinks changed, items: 5",
                                   "cloudItems changed, items: 5", "cloneGroups changed, items: 5",
                                   "safeItems changed, items: 5"));
}

TEST_F(Analysis, a_list_without_an_engine_is_empty) {
  analysis_ = {.cloudItems = analysis_.cloudItems};
  restart();
  logSignals();
  scanTo(folder("/data", 1));
  EXPECT_THAT(taken(), ElementsAre("cloudItems /data", "cloudItems changed, items: 1"));
  EXPECT_TRUE(session().findings().duplicates().empty());
  EXPECT_EQ(session().findings().cloudItems().size(), 1U);
}

TEST_F(Analysis, equal_lists_are_not_announced_again) {
  scanTo(folder("/data", 1));
  taken();
  logSignals();
  scanTo(folder("/data", 1));
  EXPECT_THAT(taken(), ElementsAreArray(allEnginesOfData));
}

TEST_F(Analysis, a_list_is_emptied_when_nothing_is_found_any_more) {
  std::vector<DeadLink> links = {{.path = "/data/broken"}};
  analysis_.deadLinks = [&](const FinishedScan&, const IsCancelled&) { return links; };
  restart();
  scanTo(folder("/data", 1));
  ASSERT_EQ(session().findings().deadLinks(), links);
  links.clear();
  scanTo(folder("/data", 1));
  EXPECT_TRUE(session().findings().deadLinks().empty());
}

TEST_F(Analysis, the_lists_stay_while_a_new_scan_runs) {
  scanTo(folder("/data", 1));
  session().scan("/other");
  runWalks();
  expectAllListsOf("/data");
}

TEST_F(Analysis, engines_get_the_tree_the_root_and_the_idle_scope) {
  std::vector<FinishedScan> seen;
  analysis_.safeItems = [&](const FinishedScan& scan, const IsCancelled&) {
    seen.push_back(scan);
    return std::vector<SafeItem>();
  };
  restart();
  const DiskNode tree = folder("/home/user/code", 3, {file("/home/user/code/main.cpp", 3)});
  scanTo(tree);
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen.front().tree, tree);
  EXPECT_EQ(seen.front().root, "/home/user/code");
  EXPECT_EQ(seen.front().idleScope, "/home/user");
}

TEST_F(Analysis, an_older_scan_whose_analysis_ends_later_overwrites_the_lists_of_a_newer_one) {
  walks().at(0).result = folder("/old", 1);
  walks().at(1).result = folder("/new", 1);
  during_ = [this](const IsCancelled&) {
    session().scan("/new");
    runWalks();
    runMain();
    dispatch().drain(Queue::utility);
    runMain();
    expectAllListsOf("/new");
  };
  session().scan("/old");
  dispatch().drainAll();
  expectAllListsOf("/old");
  EXPECT_EQ(session().navigation().current()->path(), "/new");
}

TEST_F(Analysis, a_restored_tree_is_not_analysed) {
  scanTo(folder("/data", 1));
  taken();
  restart();
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_THAT(taken(), IsEmpty());
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(Analysis, an_empty_or_cancelled_scan_is_not_analysed) {
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

TEST_F(Analysis, no_engine_starts_after_the_session_has_ended) {
  finishWalk();
  during_ = [this](const IsCancelled&) { endSession(); };
  dispatch().drainAll();
  EXPECT_THAT(taken(), ElementsAre("duplicates /data"));
}

TEST_F(Analysis, the_analysis_publishes_nothing_after_quitting) {
  finishWalk();
  dispatch().drain(Queue::utility);
  taken();
  logSignals();
  session().end();
  dispatch().drainAll();
  EXPECT_THAT(taken(), IsEmpty());
  EXPECT_THAT(found(), IsEmpty());
}

// An engine for duplicates that the test lets report.
class DuplicateProgressOfASession : public SessionFixture {
 protected:
  DuplicateProgressOfASession() {
    analysis_.duplicates = [this](const FinishedScan& scan, const IsCancelled&) {
      if (during_) std::exchange(during_, {})(scan);
      return std::vector<DuplicateGroup>();
    };
    restart();
    QObject::connect(&session().findings(), &Findings::duplicateProgressChanged, &context_,
                     [this] { shown_.push_back(session().findings().duplicateProgress()); });
  }

  // Starts a scan of `root`, whose analysis waits on a worker queue.
  void finishWalkOf(const std::string& root) {
    walks().at(walks().ran()).result = folder(root, 1);
    session().scan(root);
    runWalks();
    runMain();
  }

  static DuplicateProgress readFiles(std::size_t files) {
    return {.files = files, .fileCount = 4, .bytes = 10 * static_cast<int>(files), .byteCount = 40};
  }

  std::function<void(const FinishedScan&)> during_;  // called once, while an engine runs
  std::vector<std::optional<DuplicateProgress>> shown_;
  QObject context_;
};

TEST_F(DuplicateProgressOfASession, the_progress_is_shown_until_the_analysis_ends) {
  finishWalkOf("/data");
  EXPECT_EQ(session().findings().duplicateProgress(), std::nullopt);
  during_ = [this](const FinishedScan& scan) {
    scan.duplicates.progress(readFiles(1));
    EXPECT_EQ(session().findings().duplicateProgress(), std::nullopt);
    runMain();
    EXPECT_EQ(session().findings().duplicateProgress(), readFiles(1));
    scan.duplicates.progress(readFiles(2));
    runMain();
  };
  dispatch().drain(Queue::utility);
  runMain();
  EXPECT_THAT(shown_, ElementsAre(readFiles(1), readFiles(2), std::nullopt));
}

TEST_F(DuplicateProgressOfASession, one_update_waits_however_much_is_reported) {
  finishWalkOf("/data");
  during_ = [this](const FinishedScan& scan) {
    for (int k = 0; k < 1000; ++k) scan.duplicates.progress(readFiles(1));
    scan.duplicates.progress(readFiles(3));
    EXPECT_EQ(dispatch().waiting(Queue::main), 1U);
  };
  dispatch().drain(Queue::utility);
  runMain();
  EXPECT_THAT(shown_, ElementsAre(readFiles(3), std::nullopt));
}

TEST_F(DuplicateProgressOfASession, the_progress_changes_no_list) {
  finishWalkOf("/data");
  during_ = [this](const FinishedScan& scan) {
    const SessionRecord record(session(), settings_);
    scan.duplicates.progress(readFiles(1));
    runMain();
    EXPECT_THAT(record.announced(), ElementsAre("duplicateProgress"));
  };
  dispatch().drain(Queue::utility);
}

TEST_F(DuplicateProgressOfASession, of_two_analyses_the_one_that_was_started_last_is_shown) {
  finishWalkOf("/old");
  during_ = [this](const FinishedScan& older) {
    older.duplicates.progress(readFiles(1));
    runMain();
    finishWalkOf("/new");
    during_ = [this, &older](const FinishedScan& newer) {
      newer.duplicates.progress(readFiles(2));
      runMain();
      older.duplicates.progress(readFiles(3));
      runMain();
      EXPECT_EQ(session().findings().duplicateProgress(), readFiles(2));
    };
    dispatch().drain(Queue::utility);
    runMain();
    EXPECT_EQ(session().findings().duplicateProgress(), readFiles(3));
  };
  dispatch().drain(Queue::utility);
  runMain();
  EXPECT_THAT(shown_, ElementsAre(readFiles(1), readFiles(2), readFiles(3), std::nullopt));
}

TEST_F(DuplicateProgressOfASession, no_progress_is_shown_after_quitting) {
  finishWalkOf("/data");
  during_ = [this](const FinishedScan& scan) {
    scan.duplicates.progress(readFiles(1));
    session().end();
  };
  dispatch().drainAll();
  EXPECT_THAT(shown_, IsEmpty());
}

TEST_F(DuplicateProgressOfASession, the_compared_files_are_stored_with_the_lists) {
  int listings = 0;
  QObject::connect(&session().findings(), &Findings::copiesListed, &context_,
                   [&listings] { ++listings; });
  const FileIdentity first{.kind = FileIdentity::Kind::file, .inode = 7};
  finishWalkOf("/data");
  during_ = [&](const FinishedScan& scan) {
    scan.duplicates.compared("/data/a", first);
    runMain();
    EXPECT_THAT(session().findings().copies(), IsEmpty());
  };
  dispatch().drainAll();
  EXPECT_THAT(session().findings().copies(), ElementsAre(testing::Pair("/data/a", first)));
  finishWalkOf("/data");
  dispatch().drainAll();
  EXPECT_THAT(session().findings().copies(), IsEmpty());
  EXPECT_EQ(listings, 2);
}

}  // namespace
}  // namespace tessaly
