// How tests/skips reads the log of a run.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::Not;

// Every machine has the first need; a file in the build folder says whether the second one is met.
constexpr Need had = Need::countedReads;
constexpr Need ofPlainBuilds = Need::plainBuild;

class Skips : public testing::Test {
 protected:
  Skips() {
    tree_.plant("Testing/\n  Temporary/\n");
    putFile(tree_.at("CMakeCache.txt"), "TESSALY_SANITIZE:STRING=address,undefined\n");
  }

  // The output of ctest and the test framework.
  void run(const std::string& name, const std::string& output) {
    log_ += "7/9 Testing: " + name + "\n7/9 Test: " + name + "\nOutput:\n----\n" + output +
            "<end of output>\nTest time =   0.00 sec\n";
  }
  void skip(const std::string& name, const std::string& reason) {
    run(name, "[ RUN      ] " + name + "\n/src/A_test.cpp:7: Skipped\n" + reason +
                  "\n\n[  SKIPPED ] " + name + " (0 ms)\n");
  }

  // Whether tests/skips fails; its output is in `told_`.
  bool fails() {
    putFile(tree_.at("Testing/Temporary/LastTest.log"), log_);
    const std::string said = tree_.at("said");
    const int status = std::system(
        (std::string(TESSALY_SKIPS) + " '" + tree_.path() + "' >'" + said + "'").c_str());
    told_ = contentOf(said);
    return !WIFEXITED(status) || WEXITSTATUS(status) != 0;
  }

  TempTree tree_;
  std::string log_;
  std::string told_;
};

TEST_F(Skips, nothing_is_reported_if_all_tests_ran) {
  run("room:A.runs", "[       OK ] A.runs (1 ms)\n");
  EXPECT_FALSE(fails());
  EXPECT_THAT(told_, HasSubstr(" 0 tests skipped, 0 by mistake"));
}

TEST_F(Skips, skips_are_reported_with_their_reasons_if_the_machine_lacks_something) {
  run("room:A.runs", "[       OK ] A.runs (1 ms)\n");
  skip("room:A.is_skipped", needs(ofPlainBuilds, "no room"));
  skip("room:A.is_skipped_too", "not here, " + needs(ofPlainBuilds, "no room: at all"));
  // ctest lists them among the disabled tests.
  putFile(tree_.at("Testing/Temporary/LastTestsDisabled.log"),
          "8:room:A.is_skipped\n9:room:A.is_skipped_too\n");
  EXPECT_FALSE(fails());
  EXPECT_THAT(told_, HasSubstr("room:A.is_skipped: needs plain-build: no room\n"));
  EXPECT_THAT(told_, HasSubstr("room:A.is_skipped_too: not here, needs plain-build: no room: at"));
  EXPECT_THAT(told_, HasSubstr(" 2 tests skipped, 0 by mistake"));
  EXPECT_THAT(told_, Not(HasSubstr("A.runs")));
}

TEST_F(Skips, a_skip_for_a_sanitizer_is_a_mistake_in_a_build_without_one) {
  skip("room:A.is_skipped", needs(ofPlainBuilds, "no room"));
  putFile(tree_.at("CMakeCache.txt"), "TESSALY_SANITIZE:STRING=\n");
  EXPECT_TRUE(fails());
  EXPECT_THAT(told_, HasSubstr("A.is_skipped: MISTAKE"));
}

TEST_F(Skips, a_skip_is_a_mistake_if_the_machine_meets_the_need) {
  skip("room:A.is_skipped", needs(ofPlainBuilds, "no room"));
  skip("room:A.forgets_to_run", needs(had, "nothing is told"));
  EXPECT_TRUE(fails());
  EXPECT_THAT(told_, HasSubstr("A.forgets_to_run: MISTAKE"));
  EXPECT_THAT(told_, HasSubstr(" 2 tests skipped, 1 by mistake"));
}

TEST_F(Skips, a_skip_without_a_known_need_is_a_mistake) {
  for (const char* reason : {"", "not today", "needs a rest: now", "needs magic: none"}) {
    log_.clear();
    skip("room:A.is_skipped", reason);
    EXPECT_TRUE(fails()) << reason;
    EXPECT_THAT(told_, HasSubstr("A.is_skipped: MISTAKE")) << reason;
  }
}

TEST_F(Skips, a_disabled_test_is_a_mistake) {
  run("room:A.runs", "[       OK ] A.runs (1 ms)\n");
  putFile(tree_.at("Testing/Temporary/LastTestsDisabled.log"), "8:room:A.is_disabled\n");
  EXPECT_TRUE(fails());
  EXPECT_THAT(told_, HasSubstr("disabled: room:A.is_disabled"));
}

TEST_F(Skips, skips_are_unknown_if_nothing_ran) {
  const std::string command = std::string(TESSALY_SKIPS) + " '" + tree_.path() + "' >/dev/null";
  EXPECT_NE(std::system(command.c_str()), 0);
}

// The script checks each need; the last one is that of builds.
TEST_F(Skips, the_script_checks_every_need) {
  const std::string script = contentOf(TESSALY_SKIPS);
  for (int number = 0; number <= static_cast<int>(Need::plainBuild); ++number) {
    const std::string name = nameOf(static_cast<Need>(number));
    EXPECT_THAT(script, HasSubstr("\n    " + name + ")")) << number;
  }
}

}  // namespace
}  // namespace tessaly
