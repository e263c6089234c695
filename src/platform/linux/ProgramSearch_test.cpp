#include "platform/ProgramSearch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

class ProgramSearchTest : public testing::Test {
 protected:
  TempTree tree_ = TempTree(R"(
    first/
      note mode=0644
      kate/
      broken -> nowhere
      both mode=0755
    second/
      note mode=0755
      kate mode=0755
      both mode=0755
      linked -> kate
  )");

  std::optional<std::string> find(const std::string& name) const {
    return ProgramSearch::find(name, tree_.at("first") + ":" + tree_.at("second"));
  }
};

TEST_F(ProgramSearchTest, takes_the_first_folder_that_has_it) {
  EXPECT_EQ(find("both"), tree_.at("first/both"));
}

TEST_F(ProgramSearchTest, passes_over_what_may_not_be_run_and_over_folders) {
  EXPECT_EQ(find("note"), tree_.at("second/note"));
  EXPECT_EQ(find("kate"), tree_.at("second/kate"));
}

TEST_F(ProgramSearchTest, follows_links_and_gives_their_own_path) {
  EXPECT_EQ(find("linked"), tree_.at("second/linked"));
  EXPECT_EQ(find("broken"), std::nullopt);
}

TEST_F(ProgramSearchTest, finds_nothing_of_what_is_not_there_or_has_no_name) {
  EXPECT_EQ(find("missing"), std::nullopt);
  EXPECT_EQ(find(""), std::nullopt);
}

TEST_F(ProgramSearchTest, takes_an_absolute_path_for_itself) {
  EXPECT_EQ(find(tree_.at("first/both")), tree_.at("first/both"));
  EXPECT_EQ(find(tree_.at("first/note")), std::nullopt);
}

TEST_F(ProgramSearchTest, leaves_out_what_is_relative) {
  char before[4096];
  ASSERT_NE(getcwd(before, sizeof before), nullptr);
  ASSERT_EQ(chdir(tree_.at("second").c_str()), 0);
  EXPECT_EQ(ProgramSearch::find("kate", ":.:../second:"), std::nullopt);
  EXPECT_EQ(find("./kate"), std::nullopt);
  EXPECT_EQ(ProgramSearch::find("kate", ".::" + tree_.at("second")), tree_.at("second/kate"));
  ASSERT_EQ(chdir(before), 0);
}

TEST_F(ProgramSearchTest, looks_where_every_system_has_its_programs_without_a_path) {
  const std::optional<std::string> shell = ProgramSearch::find("sh", "");
  ASSERT_TRUE(shell);
  EXPECT_TRUE(shell->ends_with("/bin/sh"));
}

}  // namespace
}  // namespace tessaly
