#include "platform/tools/WholeLines.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace tessaly::tools {
namespace {

TEST(WholeLines, are_printed_with_a_line_feed_each) {
  std::ostringstream out;
  WholeLines lines(out);
  EXPECT_TRUE(lines.print("a"));
  EXPECT_TRUE(lines.print(""));
  EXPECT_TRUE(lines.print("b c"));
  EXPECT_EQ(out.str(), "a\n\nb c\n");
}

TEST(WholeLines, end_below_the_limit) {
  std::ostringstream out;
  WholeLines lines(out);
  const std::string line(99, 'x');
  while (lines.print(line)) {
  }
  EXPECT_EQ(out.str().size(), 61400U);
  EXPECT_LT(out.str().size(), WholeLines::limit);
  EXPECT_TRUE(out.str().ends_with("x\n"));
}

TEST(WholeLines, never_reach_the_limit) {
  std::ostringstream out;
  EXPECT_FALSE(WholeLines(out).print(std::string(WholeLines::limit - 1, 'x')));
  EXPECT_EQ(out.str(), "");
  EXPECT_TRUE(WholeLines(out).print(std::string(WholeLines::limit - 2, 'x')));
  EXPECT_EQ(out.str().size(), WholeLines::limit - 1);
}

TEST(WholeLines, end_with_the_first_that_has_no_room) {
  std::ostringstream out;
  WholeLines lines(out);
  EXPECT_TRUE(lines.print("a"));
  EXPECT_FALSE(lines.print(std::string(WholeLines::limit, 'x')));
  EXPECT_FALSE(lines.print("b"));
  EXPECT_EQ(out.str(), "a\n");
}

}  // namespace
}  // namespace tessaly::tools
