#include "platform/linux/trash/VolumeTrash.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

const std::string user = std::to_string(geteuid());

// The paths that are found in `top`, with `path` as its path.
std::vector<std::string> foundIn(const std::string& top, const std::string& path) {
  const FileDescriptor folder(::open(top.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  std::vector<std::string> paths;
  for (const UserTrashFolder& trash : VolumeTrash::find(folder, path, geteuid())) {
    EXPECT_TRUE(trash.folder);
    paths.push_back(trash.path);
  }
  return paths;
}

TEST(VolumeTrashFolders, the_folder_in_the_shared_one_is_found_first_and_then_the_one_beside_it) {
  const TempTree tree(".Trash/ mode=01777\n  " + user + "/\n.Trash-" + user + "/\n");
  EXPECT_THAT(foundIn(tree.path(), "/media/disk"),
              ElementsAre("/media/disk/.Trash/" + user, "/media/disk/.Trash-" + user));
}

TEST(VolumeTrashFolders, paths_at_the_root_begin_with_one_slash) {
  const TempTree tree(".Trash/ mode=01777\n  " + user + "/\n.Trash-" + user + "/\n");
  EXPECT_THAT(foundIn(tree.path(), "/"), ElementsAre("/.Trash/" + user, "/.Trash-" + user));
}

TEST(VolumeTrashFolders,
     the_shared_name_and_a_name_with_the_number_of_a_user_are_names_of_a_trash) {
  for (const char* name : {".Trash", ".Trash-0", ".Trash-1000"})
    EXPECT_TRUE(VolumeTrash::isName(name)) << name;
}

TEST(VolumeTrashFolders, a_name_that_only_begins_like_that_of_a_trash_is_not_one) {
  for (const char* name : {"", "Trash", ".trash", ".Trashes", ".Trash-", ".Trash-a", ".Trash-10a",
                           ".Trash--1", ".Trash_1000", ".Trash 1000", ".Trash1000"})
    EXPECT_FALSE(VolumeTrash::isName(name)) << name;
}

}  // namespace
}  // namespace tessaly
