#include "app/model/NodeHandle.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace tessaly {
namespace {

TEST(NodeHandle, a_node_handle_keeps_the_bytes_of_a_path_in_a_variant) {
  const DiskNode node({.name = "caf\xE9", .path = "/caf\xE9", .size = 1, .mtime = {}});
  const QVariant passed = QVariant::fromValue(NodeHandle(node));
  const auto handle = passed.value<NodeHandle>();
  ASSERT_TRUE(handle.isValid());
  EXPECT_EQ(handle.node()->path(), "/caf\xE9");
}

TEST(NodeHandle, a_node_handle_without_a_node_is_not_valid) {
  EXPECT_FALSE(NodeHandle().isValid());
  EXPECT_FALSE(NodeHandle(std::nullopt).isValid());
}

TEST(NodeHandle, node_handles_of_equal_nodes_are_equal) {
  const DiskNode::Fields fields{.name = "a", .path = "/a", .size = 1, .mtime = {}};
  EXPECT_EQ(NodeHandle(DiskNode(fields)), NodeHandle(DiskNode(fields)));
  EXPECT_NE(NodeHandle(DiskNode(fields)), NodeHandle());
}

}  // namespace
}  // namespace tessaly
