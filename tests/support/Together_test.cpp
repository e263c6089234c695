// Runs tests/together on a fake test program, a script whose tests behave as they are named.
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::Not;

// Lists the tests in `list`, and appends a line to `processes` with the tests that it runs.
constexpr const char* program = R"sh(#!/bin/bash
cd "$(dirname "$0")" || exit
if [ "$1" = --gtest_list_tests ]; then
  echo Suite.
  for test in $(<list); do
    [ "$2" = '--gtest_filter=*' ] || [ "$2" = "--gtest_filter=Suite.$test" ] || continue
    echo "  $test  # GetParam() = 1"
  done
  exit 0
fi
filter=$(sed -n 's/^--gtest_filter=//p' "${1#--gtest_flagfile=}")
echo "$filter" >>processes
outcome=0
for test in ${filter//:/ }; do
  echo "[ RUN      ] $test"
  case $test in
    *.fails*) echo "It is wrong"; echo "[  FAILED  ] $test, where GetParam() = 1 (0 ms)"; outcome=1 ;;
    *.crashes*) echo "It crashes"; kill -SEGV $$ ;;
    *.ends*) exit 0 ;;
    *.is_skipped*) printf '/src/A_test.cpp:7: Skipped\nnot today\n\n[  SKIPPED ] %s (0 ms)\n' "$test" ;;
    *.leaks*) echo "[       OK ] $test (0 ms)"; outcome=23 ;;
    *) echo -n "unfinished "; echo "[       OK ] $test (0 ms)" ;;
  esac
done
[ $outcome -ne 23 ] || echo "It has leaked"
exit $outcome
)sh";

class Together : public testing::Test {
 protected:
  // Whether tests/together fails with these tests, of which `alone` needs a process of its own and
  // `left` is left out. Stores its output in `told_`.
  bool fails(const std::string& tests, const std::string& alone = "", const std::string& left = "",
             const std::string& options = "") {
    namespace fs = std::filesystem;
    putFile(tree_.at("list"), tests);
    putFile(tree_.at("program"), program);
    fs::permissions(tree_.at("program"), fs::perms::owner_all);
    putFile(tree_.at("test-programs.txt"),
            "room\t" + tree_.at("program") + "\t" + alone + "\t" + left + "\n");
    const std::string command = std::string(TESSALY_TOGETHER) + " " + options + " '" +
                                tree_.path() + "' 1 >'" + tree_.at("said") + "' 2>&1";
    const int status = std::system(command.c_str());
    told_ = contentOf(tree_.at("said"));
    return !WIFEXITED(status) || WEXITSTATUS(status) != 0;
  }

  std::string log(const std::string& which = "") {
    return contentOf(tree_.at("Testing/Temporary/LastTest" + which + ".log"));
  }
  std::string processes() { return contentOf(tree_.at("processes")); }

  TempTree tree_;
  std::string told_;
};

TEST_F(Together, passing_tests_share_one_process) {
  EXPECT_FALSE(fails("one two three"));
  EXPECT_EQ(processes(), "Suite.one:Suite.two:Suite.three\n");
  EXPECT_THAT(log(), HasSubstr("3/3 Testing: room:Suite.three\n"));
  EXPECT_THAT(told_, HasSubstr("3 tests, 0 failed, 0 disabled"));
  EXPECT_EQ(log("sFailed"), "");
}

TEST_F(Together, a_test_that_needs_a_process_of_its_own_gets_one) {
  EXPECT_FALSE(fails("one two three", "Suite.two"));
  EXPECT_EQ(processes(), "Suite.two\nSuite.one:Suite.three\n");
}

TEST_F(Together, a_test_is_left_out_by_name) {
  EXPECT_FALSE(fails("one two three", "", "Suite.two"));
  EXPECT_EQ(processes(), "Suite.one:Suite.three\n");
}

TEST_F(Together, a_failing_test_is_reported_by_name) {
  EXPECT_TRUE(fails("one fails three"));
  EXPECT_EQ(processes(), "Suite.one:Suite.fails:Suite.three\n");
  EXPECT_EQ(log("sFailed"), "0:room:Suite.fails\n");
  EXPECT_THAT(told_, HasSubstr("FAILED: room:Suite.fails\n"));
  EXPECT_THAT(told_, HasSubstr("It is wrong\n"));
  EXPECT_THAT(told_, Not(HasSubstr("Suite.one")));
}

TEST_F(Together, tests_behind_one_that_ends_the_process_run_in_a_new_one) {
  EXPECT_TRUE(fails("one crashes three ends five"));
  EXPECT_EQ(processes(),
            "Suite.one:Suite.crashes:Suite.three:Suite.ends:Suite.five\n"
            "Suite.three:Suite.ends:Suite.five\n"
            "Suite.five\n");
  EXPECT_EQ(log("sFailed"), "0:room:Suite.crashes\n0:room:Suite.ends\n");
  EXPECT_THAT(told_, HasSubstr("It crashes\n\nThe process ends by signal 11 in this test.\n"));
  EXPECT_THAT(told_, HasSubstr("The process ends with 0 in this test.\n"));
  EXPECT_THAT(log(), HasSubstr("5/5 Testing: room:Suite.five\n"));
}

TEST_F(Together, if_a_process_fails_at_its_end_its_tests_run_again_alone) {
  EXPECT_TRUE(fails("one leaks three"));
  EXPECT_EQ(processes(),
            "Suite.one:Suite.leaks:Suite.three\n"
            "Suite.three\nSuite.leaks\nSuite.one\n");
  EXPECT_EQ(log("sFailed"), "0:room:the end of Suite.one and others\n");
  EXPECT_THAT(told_, HasSubstr("It was room:Suite.leaks\n"));
  EXPECT_THAT(told_, HasSubstr("It has leaked\nThe process ends with 23.\n"));
  EXPECT_THAT(told_, Not(HasSubstr("It was room:Suite.one\n")));
}

TEST_F(Together, skipped_and_disabled_tests_are_logged_for_tests_skips) {
  EXPECT_FALSE(fails("one is_skipped DISABLED_three"));
  EXPECT_EQ(processes(), "Suite.one:Suite.is_skipped\n");
  const std::string said = tree_.at("said");
  putFile(tree_.at("CMakeCache.txt"), "");
  const std::string command =
      std::string(TESSALY_SKIPS) + " '" + tree_.path() + "' >'" + said + "'";
  EXPECT_NE(std::system(command.c_str()), 0);
  EXPECT_THAT(contentOf(said), HasSubstr("skipped: room:Suite.is_skipped: MISTAKE, it does not say "
                                         "what it needs: not today\n"));
  EXPECT_THAT(contentOf(said), HasSubstr("disabled: room:Suite.DISABLED_three\n"));
}

TEST_F(Together, results_replace_those_of_the_run_before) {
  EXPECT_TRUE(fails("one fails DISABLED_three"));
  EXPECT_FALSE(fails("four"));
  EXPECT_THAT(log(), Not(HasSubstr("Suite.one")));
  EXPECT_EQ(log("sFailed"), "");
  EXPECT_EQ(log("sDisabled"), "");
}

TEST_F(Together, results_can_be_appended_to_those_of_another_run) {
  EXPECT_TRUE(fails("one fails DISABLED_three"));
  EXPECT_TRUE(fails("four fails DISABLED_five", "", "", "--append"));
  EXPECT_THAT(log(), HasSubstr("1/2 Testing: room:Suite.one\n"));
  EXPECT_THAT(log(), HasSubstr("1/2 Testing: room:Suite.four\n"));
  EXPECT_EQ(log("sFailed"), "0:room:Suite.fails\n0:room:Suite.fails\n");
  EXPECT_EQ(log("sDisabled"), "0:room:Suite.DISABLED_three\n0:room:Suite.DISABLED_five\n");
}

TEST_F(Together, a_program_without_enabled_tests_fails) {
  EXPECT_TRUE(fails(""));
  EXPECT_TRUE(fails("DISABLED_one"));
}

}  // namespace
}  // namespace tessaly
