#include "platform/ApplicationSupport.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/HomeDirectory.h"
#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(BaseDirectory, the_base_directory_is_that_of_the_variable_if_it_is_absolute) {
  EXPECT_EQ(baseDirectoryFrom("/data/\xff", "/home/u", ".config"), "/data/\xff");
  EXPECT_EQ(baseDirectoryFrom("/data//", "/home/u", ".config"), "/data");
  EXPECT_EQ(baseDirectoryFrom("/", "/home/u", ".config"), "/");
}

TEST(BaseDirectory, the_base_directory_is_below_the_home_otherwise) {
  for (const char* variable : {static_cast<const char*>(nullptr), "", "data", "./data", "~/data"}) {
    EXPECT_EQ(baseDirectoryFrom(variable, "/home/u", ".local/share"), "/home/u/.local/share");
  }
  EXPECT_EQ(baseDirectoryFrom(nullptr, "/", ".config"), "/.config");
}

TEST(BaseDirectory, each_purpose_has_its_own_variable) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              ::setenv("XDG_DATA_HOME", "/of/data", 1);
              ::setenv("XDG_CONFIG_HOME", "/of/settings", 1);
              return applicationSupportDirectory() + " " + settingsDirectory();
            }),
            "/of/data /of/settings");
  EXPECT_EQ(inForkedChild([]() -> std::string {
              ::unsetenv("XDG_DATA_HOME");
              ::setenv("XDG_CONFIG_HOME", "relative", 1);
              return applicationSupportDirectory() + " " + settingsDirectory();
            }),
            homeDirectory() + "/.local/share " + homeDirectory() + "/.config");
}

TEST(MakeFolders, missing_folders_are_made_for_the_user_alone) {
  const TempTree tree("there/ mode=0755\n");
  EXPECT_TRUE(makeFolders(tree.at("there/a/b\xff/c")));
  EXPECT_TRUE(std::filesystem::is_directory(tree.at("there/a/b\xff/c")));
  EXPECT_EQ(permissionsOf(tree.at("there")), 0755U);
  for (const char* made : {"there/a", "there/a/b\xff", "there/a/b\xff/c"}) {
    EXPECT_EQ(permissionsOf(tree.at(made)), 0700U) << made;
  }
}

TEST(MakeFolders, existing_folders_are_kept_as_they_are) {
  const TempTree tree("there/ mode=0755\nlink -> there\n");
  for (const std::string& path : {tree.at("there"), tree.at("there/"), tree.at("link"),
                                  tree.at("link/new"), std::string("/")}) {
    EXPECT_TRUE(makeFolders(path)) << path;
  }
  EXPECT_EQ(permissionsOf(tree.at("there")), 0755U);
  EXPECT_TRUE(std::filesystem::is_directory(tree.at("there/new")));
}

TEST(MakeFolders, a_file_or_a_dangling_link_in_the_path_is_reported_as_an_error) {
  const TempTree tree("file\nnowhere -> none\n");
  for (const char* path : {"file", "file/a", "nowhere/a", "nowhere"}) {
    const Outcome outcome = makeFolders(tree.at(path));
    ASSERT_FALSE(outcome) << path;
    EXPECT_EQ(outcome.error().kind, SystemError::Kind::notADirectory) << path;
  }
  EXPECT_EQ(makeFolders("").error().kind, SystemError::Kind::notFound);
  EXPECT_EQ(makeFolders(tree.at(std::string(256, 'n'))).error().kind,
            SystemError::Kind::nameTooLong);
}

TEST(MakeFolders, a_folder_without_write_permission_is_reported_as_not_permitted) {
  const TempTree tree("locked/ mode=0555\n");
  ::chmod(tree.path().c_str(), 0755);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const Outcome outcome = makeFolders(tree.at("locked/a/b"));
              if (outcome) return "made";
              return outcome.error().kind == SystemError::Kind::notPermitted
                         ? ""
                         : outcome.error().description();
            }),
            "");
}

}  // namespace
}  // namespace tessaly
