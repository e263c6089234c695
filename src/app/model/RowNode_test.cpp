#include "app/model/RowNode.h"

#include <gtest/gtest.h>
#include <string>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class RowNodeTest : public SessionFixture {
 protected:
  DiskNode at(const std::string& path) {
    return *RowNode::of(session().navigation(), path, 7).node();
  }
};

TEST_F(RowNodeTest, a_path_in_the_tree_gives_the_node_of_the_tree) {
  scanTo(folder("/r", 9, {folder("/r/caf\xe9", 5, {file("/r/caf\xe9/a", 5)})}));
  EXPECT_EQ(at("/r/caf\xe9"), session().navigation().current()->children()[0]);
  EXPECT_EQ(at("/r"), *session().navigation().current());
  const DiskNode root = at("/r");
  session().open(at("/r/caf\xe9"));
  EXPECT_EQ(at("/r"), root);
}

TEST_F(RowNodeTest, another_path_gives_a_file_with_the_size_of_the_row) {
  EXPECT_EQ(at("/r/caf\xe9"), file("/r/caf\xe9", 7));
  scanTo(folder("/r", 9, {file("/r/a", 5)}));
  EXPECT_EQ(at("/r/caf\xe9"), file("/r/caf\xe9", 7));
}

// A remainder has a path like that of a file, and this is the row of the file.
TEST_F(RowNodeTest, the_path_of_a_remainder_gives_a_file) {
  scanTo(folder("/r", 9, {DiskNode({.name = "+ 6 more", .path = "/r/__rest__", .size = 3})}));
  EXPECT_EQ(at("/r/__rest__"), file("/r/__rest__", 7));
}

TEST_F(RowNodeTest, a_listed_file_has_the_kind_that_its_name_gives) {
  const DiskNode node =
      *RowNode::ofFile({.name = "caf\xe9.iso", .path = "/r/caf\xe9.iso", .size = 7}).node();
  EXPECT_EQ(node.name(), "caf\xe9.iso");
  EXPECT_EQ(node.path(), "/r/caf\xe9.iso");
  EXPECT_EQ(node.size(), 7);
  EXPECT_EQ(node.kind(), FileKind::disk);
  EXPECT_FALSE(node.isDir());
  EXPECT_FALSE(node.mtime());
}

}  // namespace
}  // namespace tessaly
