// What tests/skips makes of the log of a run.
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

// A machine surely has the one, and whether the other is had a file in the build's folder says.
constexpr Need had = Need::countedReads;
constexpr Need ofPlainBuilds = Need::plainBuild;

class Skips : public testing::Test {
 protected:
  Skips() {
    tree_.plant("Testing/\n  Temporary/\n");
    putFile(tree_.at("CMakeCache.txt"), "TESSALY_SANITIZE:STRING=address,undefined\n");
  }

  // As ctest and the test framework write it.
  void run(const std::string& name, const std::string& output) {
    log_ += "7/9 Testing: " + name + "\n7/9 Test: " + name + "\nOutput:\n----\n" + output +
            "<end of output>\nTest time =   0.00 sec\n";
  }
  void skip(const std::string& name, const std::string& reason) {
    run(name, "[ RUN      ] " + name + "\n/src/A_test.cpp:7: Skipped\n" + reason +
                  "\n\n[  SKIPPED ] " + name + " (0 ms)\n");
  }

  // Whether it fails; what it says is in `told_`.
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

TEST_F(Skips, are_none_where_all_tests_ran) {
  run("room:A.runs", "[       OK ] A.runs (1 ms)\n");
  EXPECT_FALSE(fails());
  EXPECT_THAT(told_, HasSubstr(" 0 tests skipped, 0 by mistake"));
}

TEST_F(Skips, are_told_with_their_reasons_where_the_machine_lacks_something) {
  run("room:A.runs", "[       OK ] A.runs (1 ms)\n");
  skip("room:A.is_skipped", needs(ofPlainBuilds, "no room"));
  skip("room:A.is_skipped_too", "not here, " + needs(ofPlainBuilds, "no room: at all"));
  // ctest counts them among the disabled.
  putFile(tree_.at("Testing/Temporary/LastTestsDisabled.log"),
          "8:room:A.is_skipped\n9:room:A.is_skipped_too\n");
  EXPECT_FALSE(fails());
  EXPECT_THAT(told_, HasSubstr("room:A.is_skipped: needs plain-build: no room\n"));
  EXPECT_THAT(told_, HasSubstr("room:A.is_skipped_too: not here, needs plain-build: no room: at"));
  EXPECT_THAT(told_, HasSubstr(" 2 tests skipped, 0 by mistake"));
  EXPECT_THAT(told_, Not(HasSubstr("A.runs")));
}

TEST_F(Skips, for_a_sanitizer_are_mistakes_in_a_build_without_one) {
  skip("room:A.is_skipped", needs(ofPlainBuilds, "no room"));
  putFile(tree_.at("CMakeCache.txt"), "TESSALY_SANITIZE:STRING=\n");
  EXPECT_TRUE(fails());
  EXPECT_THAT(told_, HasSubstr("A.is_skipped: MISTAKE"));
}

TEST_F(Skips, are_mistakes_where_the_machine_has_what_is_needed) {
  skip("room:A.is_skipped", needs(ofPlainBuilds, "no room"));
  skip("room:A.forgets_to_run", needs(had, "nothing is told"));
  EXPECT_TRUE(fails());
  EXPECT_THAT(told_, HasSubstr("A.forgets_to_run: MISTAKE"));
  EXPECT_THAT(told_, HasSubstr(" 2 tests skipped, 1 by mistake"));
}

TEST_F(Skips, are_mistakes_without_a_need_that_is_known) {
  for (const char* reason : {"", "not today", "needs a rest: now", "needs magic: none"}) {
    log_.clear();
    skip("room:A.is_skipped", reason);
    EXPECT_TRUE(fails()) << reason;
    EXPECT_THAT(told_, HasSubstr("A.is_skipped: MISTAKE")) << reason;
  }
}

TEST_F(Skips, of_tests_that_are_disabled_are_mistakes) {
  run("room:A.runs", "[       OK ] A.runs (1 ms)\n");
  putFile(tree_.at("Testing/Temporary/LastTestsDisabled.log"), "8:room:A.is_disabled\n");
  EXPECT_TRUE(fails());
  EXPECT_THAT(told_, HasSubstr("disabled: room:A.is_disabled"));
}

TEST_F(Skips, are_not_known_where_nothing_ran) {
  const std::string command = std::string(TESSALY_SKIPS) + " '" + tree_.path() + "' >/dev/null";
  EXPECT_NE(std::system(command.c_str()), 0);
}

// Each need has a look in the script; the last of them is the one for builds.
TEST_F(Skips, are_looked_into_for_every_need) {
  const std::string script = contentOf(TESSALY_SKIPS);
  for (int number = 0; number <= static_cast<int>(Need::plainBuild); ++number) {
    const std::string name = nameOf(static_cast<Need>(number));
    EXPECT_THAT(script, HasSubstr("\n    " + name + ")")) << number;
  }
}

}  // namespace
}  // namespace tessaly
