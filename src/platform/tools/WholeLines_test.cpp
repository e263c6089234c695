#include "platform/tools/WholeLines.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace tessaly::tools {
namespace {

TEST(WholeLines, each_line_is_printed_with_a_line_feed) {
  std::ostringstream out;
  WholeLines lines(out);
  EXPECT_TRUE(lines.print("a"));
  EXPECT_TRUE(lines.print(""));
  EXPECT_TRUE(lines.print("b c"));
  EXPECT_EQ(out.str(), "a\n\nb c\n");
}

TEST(WholeLines, the_output_ends_with_a_whole_line_below_the_limit) {
  std::ostringstream out;
  WholeLines lines(out);
  const std::string line(99, 'x');
  while (lines.print(line)) {
  }
  EXPECT_EQ(out.str().size(), 61400U);
  EXPECT_LT(out.str().size(), WholeLines::limit);
  EXPECT_TRUE(out.str().ends_with("x\n"));
}

TEST(WholeLines, the_output_never_reaches_the_limit) {
  std::ostringstream out;
  EXPECT_FALSE(WholeLines(out).print(std::string(WholeLines::limit - 1, 'x')));
  EXPECT_EQ(out.str(), "");
  EXPECT_TRUE(WholeLines(out).print(std::string(WholeLines::limit - 2, 'x')));
  EXPECT_EQ(out.str().size(), WholeLines::limit - 1);
}

TEST(WholeLines, no_line_is_printed_after_the_first_that_did_not_fit) {
  std::ostringstream out;
  WholeLines lines(out);
  EXPECT_TRUE(lines.print("a"));
  EXPECT_FALSE(lines.print(std::string(WholeLines::limit, 'x')));
  EXPECT_FALSE(lines.print("b"));
  EXPECT_EQ(out.str(), "a\n");
}

}  // namespace
}  // namespace tessaly::tools
