#include "platform/WalkedPath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using testing::ElementsAre;

using Item = DirectoryWalk::Item;
using Type = DirectoryWalk::Type;

Item folder(std::string_view name, std::uint32_t depth) {
  return {.name = name, .type = Type::directory, .depth = depth};
}

Item file(std::string_view name, std::uint32_t depth) {
  return {.name = name, .type = Type::file, .depth = depth};
}

std::vector<std::string> pathsOf(const std::string& root, const std::vector<Item>& items) {
  std::vector<std::string> paths;
  WalkedPath path(root);
  for (const Item& item : items) {
    path.moveTo(item);
    paths.push_back(path.text());
  }
  return paths;
}

std::vector<std::string> belowDotFolders(const std::string& root, const std::vector<Item>& items) {
  std::vector<std::string> names;
  WalkedPath path(root);
  for (const Item& item : items) {
    path.moveTo(item);
    if (path.isBelowDotFolder()) names.emplace_back(item.name);
  }
  return names;
}

TEST(WalkedPath, the_path_of_an_item_is_made_of_the_folders_around_it) {
  EXPECT_THAT(pathsOf("/h", {folder("a", 1), folder("b", 2), file("c", 3), file("d", 2),
                             file("e", 1), folder("f", 1), file("g", 2)}),
              ElementsAre("/h/a", "/h/a/b", "/h/a/b/c", "/h/a/d", "/h/e", "/h/f", "/h/f/g"));
}

TEST(WalkedPath, a_folder_without_items_is_around_none) {
  EXPECT_THAT(pathsOf("/h", {folder("a", 1), folder("b", 1), folder("c", 2), file("d", 2)}),
              ElementsAre("/h/a", "/h/b", "/h/b/c", "/h/b/d"));
}

TEST(WalkedPath, the_root_may_be_that_of_the_disk) {
  EXPECT_THAT(pathsOf("/", {folder("usr", 1), file("lib", 2), file("etc", 1)}),
              ElementsAre("/usr", "/usr/lib", "/etc"));
}

TEST(WalkedPath, everything_in_a_folder_whose_name_begins_with_a_dot_is_below_it) {
  EXPECT_THAT(
      belowDotFolders("/h/.config", {folder("a", 1), file(".b", 2), folder(".c", 2), file("d", 3),
                                     folder("e", 3), file("f", 4), file("g", 2), file("h", 1)}),
      ElementsAre("d", "e", "f"));
}

TEST(WalkedPath, the_folder_of_an_item_is_its_path_without_the_name) {
  WalkedPath path("/");
  path.moveTo(folder("a", 1));
  EXPECT_EQ(path.folder(), "/");
  path.moveTo(file("b", 2));
  EXPECT_EQ(path.folder(), "/a");
  path.moveTo(file("c", 1));
  EXPECT_EQ(path.folder(), "/");
  WalkedPath below("/x/y");
  below.moveTo(file("c", 1));
  EXPECT_EQ(below.folder(), "/x/y");
}

}  // namespace
}  // namespace tessaly
