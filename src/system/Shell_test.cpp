#include "system/Shell.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessaly {
namespace {

constexpr std::int64_t kibibyte = 1024;

TEST(ShellDu, the_number_before_the_path_is_read) {
  EXPECT_EQ(Shell::parseDu("1234\t/a/b\n"), 1263616);
}

TEST(ShellDu, blanks_in_the_path_do_not_affect_the_number) {
  EXPECT_EQ(Shell::parseDu("1234\t/a b  c\td\n"), 1263616);
}

TEST(ShellDu, white_space_at_the_beginning_is_ignored) {
  EXPECT_EQ(Shell::parseDu(" \t 7\t/a\n"), 7 * kibibyte);
}

TEST(ShellDu, a_text_without_words_is_0) {
  EXPECT_EQ(Shell::parseDu(""), 0);
  EXPECT_EQ(Shell::parseDu(" \t "), 0);
}

TEST(ShellDu, the_number_may_have_a_sign) {
  EXPECT_EQ(Shell::parseDu("+5\t/a"), 5 * kibibyte);
  EXPECT_EQ(Shell::parseDu("-5\t/a"), -5 * kibibyte);
}

TEST(ShellDu, a_count_that_is_not_a_whole_number_is_0) {
  for (const char* text :
       {"12x\t/a", "x12\t/a", "+-5\t/a", "--5\t/a", "+\t/a", "1.5\t/a", "0x10\t/a", "1,234\t/a",
        "du: cannot access '/a'", "1234\n", "\n5\t/a"}) {
    EXPECT_EQ(Shell::parseDu(text), 0) << text;
  }
}

TEST(ShellDu, a_count_that_does_not_fit_is_0) {
  EXPECT_EQ(Shell::parseDu("9223372036854775808\t/a"), 0);
  EXPECT_EQ(Shell::parseDu("9007199254740992\t/a"), 0);
  EXPECT_EQ(Shell::parseDu("9007199254740991\t/a"), 9223372036854774784);
  EXPECT_EQ(Shell::parseDu("-9007199254740992\t/a"), INT64_MIN);
  EXPECT_EQ(Shell::parseDu("-9007199254740993\t/a"), 0);
}

TEST(ShellDu, du_is_asked_for_the_total_of_the_unchanged_path) {
  std::string tool;
  std::vector<std::string> args;
  double seconds = 0;
  const auto run = [&](const std::string& path, const std::vector<std::string>& given,
                       double timeout) {
    tool = path;
    args = given;
    seconds = timeout;
    return std::string("1234\t/a b");
  };
  EXPECT_EQ(Shell::duBytes("/a b", run), 1263616);
  EXPECT_EQ(tool, "/usr/bin/du");
  EXPECT_EQ(args, (std::vector<std::string>{"-sk", "-d", "0", "/a b"}));
  EXPECT_EQ(seconds, 30);
}

TEST(ShellDu, the_size_is_0_if_du_fails) {
  using Args = std::vector<std::string>;
  const auto late = [](const std::string& path, const Args&, double) -> std::string {
    throw ToolError("Marrow", 1, "timed out: " + path);
  };
  const auto broken = [](const std::string&, const Args&, double) -> std::string { throw 1; };
  EXPECT_EQ(Shell::duBytes("/a", late), 0);
  EXPECT_EQ(Shell::duBytes("/a", broken), 0);
}

}  // namespace
}  // namespace tessaly
