#include "platform/tools/Tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace tessaly::tools {
namespace {

using testing::HasSubstr;

class ThreeItems : public TrashCan {
 public:
  Result<std::int64_t> count() override { return std::int64_t{3}; }
  EmptiedTrash empty() override { return {}; }
};

class ToolsTest : public testing::Test {
 protected:
  ThreeItems trash_;
  std::ostringstream out_;
  std::ostringstream err_;

  int run(const std::vector<std::string>& args) {
    return tools::run(args, {.out = out_, .err = err_}, Services{.trash = trash_});
  }
};

TEST_F(ToolsTest, the_named_tool_runs_with_its_arguments) {
  EXPECT_EQ(run({"osascript", "-e", "tell application \"Finder\" to count items of trash"}), 0);
  EXPECT_EQ(out_.str(), "3\n");
  EXPECT_EQ(run({"osascript"}), 2);
}

TEST_F(ToolsTest, the_option_help_lists_the_tools) {
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_THAT(out_.str(), HasSubstr("osascript"));
  EXPECT_EQ(err_.str(), "");
}

TEST_F(ToolsTest, a_missing_name_is_refused) {
  EXPECT_EQ(run({}), 2);
  EXPECT_THAT(err_.str(), HasSubstr("--help"));
  EXPECT_EQ(out_.str(), "");
}

TEST_F(ToolsTest, an_unknown_name_is_refused_and_printed) {
  EXPECT_EQ(run({"mkfs", "/"}), 2);
  EXPECT_THAT(err_.str(), HasSubstr("\"mkfs\""));
  EXPECT_EQ(out_.str(), "");
}

}  // namespace
}  // namespace tessaly::tools
