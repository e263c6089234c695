#include "platform/StagedFile.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class Staged : public ::testing::Test {
 protected:
  StagedFile written(const std::string& content) {
    Result<StagedFile> file = StagedFile::beside(target_);
    EXPECT_TRUE(file.ok());
    putFile(file.value().path(), content);
    return std::move(file).value();
  }
  std::optional<FileIdentity> seen() const { return FileIdentity::of(target_).value(); }
  // The path and the content of the file after it was placed.
  std::pair<std::string, std::string> placed(StagedFile file,
                                             const std::optional<FileIdentity>& replaced) {
    const Result<StagedFile::Placed> place = file.place(replaced);
    if (!place) return {"(" + place.error().description() + ")", ""};
    EXPECT_EQ(place.value().identity, FileIdentity::of(place.value().path).value());
    return {place.value().path, contentOf(place.value().path)};
  }
  std::vector<std::string> left() const { return entriesOf(tree_.at("kept")); }

  TempTree tree_{"kept/\n"};
  std::string target_ = tree_.at("kept/out.zip");
};

TEST_F(Staged, a_staged_file_is_written_in_a_private_folder_beside_its_target) {
  const StagedFile file = written("new");
  ASSERT_EQ(left().size(), 1U);
  EXPECT_THAT(left()[0], StartsWith(".tessaly-"));
  EXPECT_EQ(permissionsOf(tree_.at("kept/" + left()[0])), 0700U);
  EXPECT_EQ(fs::path(file.path()).parent_path(), tree_.at("kept/" + left()[0]));
  EXPECT_EQ(fs::path(file.path()).extension(), ".zip");
}

TEST_F(Staged, a_placed_file_is_at_its_target_and_the_private_folder_is_removed) {
  EXPECT_EQ(placed(written("new"), std::nullopt), std::pair(target_, std::string("new")));
  EXPECT_THAT(left(), ElementsAre("out.zip"));
}

TEST_F(Staged, all_files_in_the_private_folder_are_removed_with_the_staged_file) {
  {
    const StagedFile file = written("new");
    putFile(file.path() + ".temporary", "x");
  }
  EXPECT_THAT(left(), IsEmpty());
}

TEST_F(Staged, the_examined_file_is_replaced) {
  putFile(target_, "old");
  const auto old = seen();
  EXPECT_EQ(placed(written("new"), old), std::pair(target_, std::string("new")));
  EXPECT_THAT(left(), ElementsAre("out.zip"));
}

TEST_F(Staged, a_link_is_replaced_and_its_target_is_kept) {
  putFile(tree_.at("settings"), "kept");
  fs::create_symlink("../settings", target_);
  EXPECT_EQ(placed(written("new"), seen()), std::pair(target_, std::string("new")));
  EXPECT_FALSE(fs::is_symlink(target_));
  EXPECT_EQ(contentOf(tree_.at("settings")), "kept");
}

TEST_F(Staged, the_file_is_placed_at_its_target_if_the_examined_one_was_removed) {
  putFile(target_, "old");
  const auto old = seen();
  fs::remove(target_);
  EXPECT_EQ(placed(written("new"), old), std::pair(target_, std::string("new")));
}

TEST_F(Staged, the_file_gets_another_name_if_a_new_one_has_appeared_at_the_target) {
  StagedFile file = written("new");
  putFile(target_, "of another");
  putFile(tree_.at("kept/out 2.zip"), "of a third");
  EXPECT_EQ(placed(std::move(file), std::nullopt),
            std::pair(tree_.at("kept/out 3.zip"), std::string("new")));
  EXPECT_EQ(contentOf(target_), "of another");
  EXPECT_THAT(left(), ElementsAre("out 2.zip", "out 3.zip", "out.zip"));
}

TEST_F(Staged, the_file_gets_another_name_if_the_examined_one_was_replaced) {
  putFile(target_, "old");
  const auto old = seen();
  StagedFile file = written("new");
  putFile(tree_.at("kept/newer"), "newer");
  fs::rename(tree_.at("kept/newer"), target_);
  EXPECT_EQ(placed(std::move(file), old),
            std::pair(tree_.at("kept/out 2.zip"), std::string("new")));
  EXPECT_EQ(contentOf(target_), "newer");
  EXPECT_THAT(left(), ElementsAre("out 2.zip", "out.zip"));
}

TEST_F(Staged, the_file_gets_another_name_if_the_examined_one_was_written_to) {
  putFile(target_, "old");
  const auto old = seen();
  putFile(target_, "written to");
  EXPECT_EQ(placed(written("new"), old).first, tree_.at("kept/out 2.zip"));
  EXPECT_EQ(contentOf(target_), "written to");
}

TEST_F(Staged, a_folder_at_the_target_is_not_replaced) {
  fs::create_directories(target_ + "/inside");
  EXPECT_EQ(placed(written("new"), seen()).first, tree_.at("kept/out 2.zip"));
  EXPECT_TRUE(fs::exists(target_ + "/inside"));
}

TEST_F(Staged, two_files_for_one_target_are_both_kept) {
  StagedFile first = written("first");
  StagedFile second = written("second");
  EXPECT_EQ(placed(std::move(second), std::nullopt).first, target_);
  EXPECT_EQ(placed(std::move(first), std::nullopt).first, tree_.at("kept/out 2.zip"));
  EXPECT_EQ(contentOf(target_), "second");
  EXPECT_EQ(contentOf(tree_.at("kept/out 2.zip")), "first");
}

TEST_F(Staged, a_staged_file_that_was_not_written_is_not_placed) {
  putFile(target_, "old");
  Result<StagedFile> file = StagedFile::beside(target_);
  ASSERT_TRUE(file);
  EXPECT_EQ(file.value().place(seen()).error().code, ENOENT);
  fs::create_directory(file.value().path());
  EXPECT_FALSE(file.value().place(seen()));
  EXPECT_EQ(contentOf(target_), "old");
}

TEST_F(Staged, a_link_to_the_folder_of_the_target_is_followed) {
  fs::create_directory_symlink("kept", tree_.at("way"));
  target_ = tree_.at("way/out.zip");
  EXPECT_EQ(placed(written("new"), std::nullopt), std::pair(target_, std::string("new")));
  EXPECT_THAT(left(), ElementsAre("out.zip"));
}

TEST_F(Staged, a_target_without_an_existing_folder_or_a_name_is_refused) {
  EXPECT_EQ(StagedFile::beside(tree_.at("none/out.zip")).error().code, ENOENT);
  EXPECT_EQ(StagedFile::beside(tree_.at("kept/..")).error().code, EINVAL);
  EXPECT_EQ(StagedFile::beside("out.zip").error().code, EINVAL);
}

}  // namespace
}  // namespace tessaly
