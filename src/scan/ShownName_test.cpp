#include "scan/ShownName.h"

#include <gtest/gtest.h>
#include <string>

#include "scan/DiskNodeJson.h"

namespace tessaly {
namespace {

DiskNode folder(const std::string& name, const std::string& path) {
  return DiskNode({name, path, 10, true, FileKind::folder, {}});
}

TEST(ShownName, the_top_folder_of_the_disk_has_the_name_of_the_system_in_use) {
  const DiskNode top = folder("Macintosh HD", "/");
  EXPECT_EQ(shownName(top, Wording::forMacos()), "Macintosh HD");
  EXPECT_EQ(shownName(top, Wording::forLinux()), "System Disk");
}

TEST(ShownName, any_other_item_is_shown_by_its_own_name) {
  EXPECT_EQ(shownName(folder("Macintosh HD", "/mnt/Macintosh HD"), Wording::forLinux()),
            "Macintosh HD");
  EXPECT_EQ(shownName(folder("caf\xe9", "/home/caf\xe9"), Wording::forLinux()), "caf\xe9");
}

TEST(ShownName, a_saved_tree_keeps_the_name_of_the_node) {
  EXPECT_NE(DiskNodeJson::encode(folder("Macintosh HD", "/")).find("\"Macintosh HD\""),
            std::string::npos);
}

}  // namespace
}  // namespace tessaly
