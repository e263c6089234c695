#include "platform/tools/SearchBounds.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace tessaly::tools {
namespace {

class SearchBoundsTest : public testing::Test {
 protected:
  SearchBoundsTest() { places_.skipPaths = {"/home/x/.local/share/Trash"}; }

  SearchBounds boundsOf(const std::string& scope, bool leavesOutCritical = true) const {
    return {scope, places_, home_, leavesOutCritical};
  }

  // Whether a walk from `scope` enters all folders above `path` and `path` itself.
  bool enters(const std::string& scope, const std::string& path,
              bool leavesOutCritical = true) const {
    const SearchBounds bounds = boundsOf(scope, leavesOutCritical);
    if (!bounds.entersScope()) return false;
    std::uint32_t depth = 0;
    for (std::size_t start = scope == "/" ? 1 : scope.size() + 1; start < path.size();) {
      const std::size_t end = std::min(path.find('/', start), path.size());
      if (bounds.leavesOut(path.substr(start, end - start), ++depth,
                           [&] { return path.substr(0, end); })) {
        return false;
      }
      start = end + 1;
    }
    return true;
  }

  Places places_ = Places::forLinux();
  std::string home_ = "/home/x";
};

TEST_F(SearchBoundsTest, folders_that_no_walk_enters_are_left_out) {
  EXPECT_FALSE(enters("/home/x", "/home/x/a/.Trash"));
  EXPECT_FALSE(enters("/home/x", "/home/x/.local/share/Trash"));
  EXPECT_FALSE(enters("/home/x", "/home/x/.local/share/Trash", false));
  EXPECT_TRUE(enters("/home/x", "/home/x/other/share/Trash"));
  EXPECT_TRUE(enters("/home/x", "/home/x/xTrash"));
  for (const char* const path : {"/proc", "/dev", "/tmp", "/mnt"}) {
    EXPECT_FALSE(enters("/", path, false)) << path;
  }
  EXPECT_TRUE(enters("/home/x", "/home/x/tmp"));
  EXPECT_TRUE(enters("/", "/home/x/tmp/dev"));
  EXPECT_TRUE(enters("/tmp/project", "/tmp/project/dev"));
}

TEST_F(SearchBoundsTest, folders_of_the_system_are_left_out_if_wanted) {
  for (const char* const path : {"/usr/share", "/etc", "/boot/grub", "/var/lib/dpkg", "/lib"}) {
    EXPECT_FALSE(enters("/", path)) << path;
    EXPECT_TRUE(enters("/", path, false)) << path;
  }
  for (const char* const path : {"/home/x/usr", "/opt/tool", "/var/cache", "/srv", "/usr2"}) {
    EXPECT_TRUE(enters("/", path)) << path;
  }
}

TEST_F(SearchBoundsTest, a_free_folder_in_one_of_the_system_is_reached) {
  EXPECT_TRUE(enters("/", "/usr/local/lib/deep"));
  EXPECT_FALSE(enters("/", "/usr/lib"));
  EXPECT_TRUE(boundsOf("/").isCritical("/usr/file"));
  EXPECT_FALSE(boundsOf("/").isCritical("/usr/local/file"));
  EXPECT_TRUE(enters("/usr/local", "/usr/local/lib/usr"));
}

TEST_F(SearchBoundsTest, a_home_in_a_folder_of_the_system_is_searched) {
  home_ = "/var/lib/service";
  EXPECT_TRUE(enters("/", "/var/lib/service/data/deep"));
  EXPECT_FALSE(enters("/", "/var/lib/other"));
  EXPECT_TRUE(enters("/var/lib/service", "/var/lib/service/etc"));
  EXPECT_FALSE(boundsOf("/var/lib/service").isCritical("/var/lib/service/file"));
}

TEST_F(SearchBoundsTest, a_system_on_which_the_home_frees_nothing_keeps_its_own_folders_out) {
  home_ = "/var/lib/service";
  places_.critical.freesHome = false;
  EXPECT_FALSE(enters("/", "/var/lib/service"));
  EXPECT_FALSE(boundsOf("/var/lib/service").entersScope());
}

TEST_F(SearchBoundsTest, a_scope_in_a_folder_of_the_system_is_not_entered) {
  EXPECT_FALSE(boundsOf("/usr/share").entersScope());
  EXPECT_FALSE(boundsOf("/etc").entersScope());
  EXPECT_TRUE(boundsOf("/usr/share", false).entersScope());
  EXPECT_TRUE(boundsOf("/usr").entersScope());
  EXPECT_TRUE(boundsOf("/").entersScope());
  EXPECT_TRUE(boundsOf("/home/x").entersScope());
}

TEST_F(SearchBoundsTest, a_user_without_a_home_makes_nothing_free) {
  home_ = "/";
  EXPECT_FALSE(enters("/", "/etc"));
  EXPECT_TRUE(enters("/", "/home/y"));
}

}  // namespace
}  // namespace tessaly::tools
