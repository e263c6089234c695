#include "scan/Remainder.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "scan/DiskNodeJson.h"

namespace tessaly {
namespace {

DiskNode named(const std::string& name, const std::string& path) {
  return DiskNode({name, path, 10, false, FileKind::other, {}});
}

TEST(Remainder, a_node_whose_path_but_not_name_ends_in_rest_is_a_remainder) {
  EXPECT_TRUE(isRemainder(named("+ 6 more", "/home/h/__rest__")));
  EXPECT_TRUE(isRemainder(named("+ 6 more", "/__rest__")));
}

TEST(Remainder, a_file_named_like_a_remainder_is_not_one) {
  EXPECT_FALSE(isRemainder(named("__rest__", "/home/h/__rest__")));
  EXPECT_FALSE(isRemainder(named("+ 6 more", "/home/h/+ 6 more")));
  EXPECT_FALSE(isRemainder(named("+ notes", "/home/h/+ notes")));
  EXPECT_FALSE(isRemainder(named("a__rest__", "/home/h/a__rest__")));
  EXPECT_FALSE(isRemainder(named("film", "/home/__rest__/film")));
}

TEST(Remainder, the_root_of_a_disk_and_a_default_node_are_no_remainders) {
  EXPECT_FALSE(isRemainder(DiskNode()));
  EXPECT_FALSE(isRemainder(DiskNode({"Macintosh HD", "/", 10, true, FileKind::folder, {}})));
}

TEST(Remainder, a_remainder_is_recognised_in_a_saved_tree) {
  const DiskNode tree({"h", "/home/h", 40, true, FileKind::folder, {}},
                      {named("__rest__", "/home/h/__rest__"), named("+ 6 more", "/home/h/+ 6 more"),
                       named("+ 6 more", "/home/h/__rest__")});
  const std::optional<DiskNode> restored = DiskNodeJson::decode(DiskNodeJson::encode(tree));
  ASSERT_TRUE(restored.has_value());
  EXPECT_FALSE(isRemainder(*restored));
  EXPECT_FALSE(isRemainder(restored->children()[0]));
  EXPECT_FALSE(isRemainder(restored->children()[1]));
  EXPECT_TRUE(isRemainder(restored->children()[2]));
}

}  // namespace
}  // namespace tessaly
