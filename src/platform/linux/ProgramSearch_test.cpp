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

TEST_F(ProgramSearchTest, the_first_folder_that_has_the_program_is_used) {
  EXPECT_EQ(find("both"), tree_.at("first/both"));
}

TEST_F(ProgramSearchTest, folders_and_files_without_execute_permission_are_passed_over) {
  EXPECT_EQ(find("note"), tree_.at("second/note"));
  EXPECT_EQ(find("kate"), tree_.at("second/kate"));
}

TEST_F(ProgramSearchTest, links_are_followed_and_their_own_path_is_returned) {
  EXPECT_EQ(find("linked"), tree_.at("second/linked"));
  EXPECT_EQ(find("broken"), std::nullopt);
}

TEST_F(ProgramSearchTest, a_missing_program_and_an_empty_name_are_not_found) {
  EXPECT_EQ(find("missing"), std::nullopt);
  EXPECT_EQ(find(""), std::nullopt);
}

TEST_F(ProgramSearchTest, an_absolute_path_is_used_as_it_is) {
  EXPECT_EQ(find(tree_.at("first/both")), tree_.at("first/both"));
  EXPECT_EQ(find(tree_.at("first/note")), std::nullopt);
}

TEST_F(ProgramSearchTest, relative_folders_and_paths_are_left_out) {
  char before[4096];
  ASSERT_NE(getcwd(before, sizeof before), nullptr);
  ASSERT_EQ(chdir(tree_.at("second").c_str()), 0);
  EXPECT_EQ(ProgramSearch::find("kate", ":.:../second:"), std::nullopt);
  EXPECT_EQ(find("./kate"), std::nullopt);
  EXPECT_EQ(ProgramSearch::find("kate", ".::" + tree_.at("second")), tree_.at("second/kate"));
  ASSERT_EQ(chdir(before), 0);
}

TEST_F(ProgramSearchTest, the_standard_folders_are_searched_if_the_path_is_empty) {
  const std::optional<std::string> shell = ProgramSearch::find("sh", "");
  ASSERT_TRUE(shell);
  EXPECT_TRUE(shell->ends_with("/bin/sh"));
}

}  // namespace
}  // namespace tessaly
