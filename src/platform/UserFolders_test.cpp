#include "platform/UserFolders.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UserFolders, folders_of_the_list_are_below_the_home_or_absolute) {
  EXPECT_THAT(UserFolders::parse("# written by the desktop\n"
                                 "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                                 "XDG_PICTURES_DIR=\"$HOME/Bilder/\"\n"
                                 "  XDG_VIDEOS_DIR = \"/data/Filme\"  \r\n"
                                 "XDG_MUSIC_DIR=\"$HOME/a \\\"b\\\\c\"",
                                 "/home/ada"),
              ElementsAre("/home/ada/Schreibtisch", "/home/ada/Bilder", "/data/Filme",
                          "/home/ada/a \"b\\c"));
  EXPECT_THAT(UserFolders::parse("XDG_MUSIC_DIR=\"$HOME/Musik\"", "/"), ElementsAre("/Musik"));
}

TEST(UserFolders, a_folder_that_holds_the_home_is_no_folder_of_its_own) {
  EXPECT_THAT(UserFolders::parse("XDG_MUSIC_DIR=\"$HOME/\"\n"
                                 "XDG_VIDEOS_DIR=\"$HOME\"\n"
                                 "XDG_PICTURES_DIR=\"/\"\n"
                                 "XDG_DESKTOP_DIR=\"/home\"\n",
                                 "/home/ada"),
              IsEmpty());
}

TEST(UserFolders, other_lines_are_ignored) {
  EXPECT_THAT(UserFolders::parse("\n=\nXDG_MUSIC_DIR\nXDG_MUSIC_DIR=\nXDG_MUSIC_DIR=\"\n"
                                 "XDG_MUSIC_DIR=\"$HOME/Musik\\\nXDG_MUSIC_DIR=\"Musik\"\n"
                                 "XDG_MUSIC_DIR=\"$HOMES/Musik\"\nMUSIC_DIR=\"/m\"\n"
                                 "XDG_MUSIC=\"/m\"\nXDG_MUSIC_DIR=/m\n",
                                 "/home/ada"),
              IsEmpty());
}

TEST(UserFolders, a_folder_behind_a_link_has_both_paths) {
  const TempTree tree(R"(
    home/
      .config/
        user-dirs.dirs
      Bilder -> ../photos
      Musik/
    photos/
  )");
  std::ofstream(tree.at("home/.config/user-dirs.dirs"))
      << "XDG_PICTURES_DIR=\"$HOME/Bilder\"\nXDG_MUSIC_DIR=\"$HOME/Musik\"\n";
  EXPECT_THAT(UserFolders::ofUser(tree.at("home"), tree.at("home/.config")),
              ElementsAre(tree.at("home/Bilder"), tree.at("photos"), tree.at("home/Musik")));
}

TEST(UserFolders, without_a_list_there_are_no_folders) {
  const TempTree tree("home/");
  EXPECT_THAT(UserFolders::ofUser(tree.at("home"), tree.at("home/.config")), IsEmpty());
}

}  // namespace
}  // namespace tessaly
