#include "app/model/NodeHandle.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace tessaly {
namespace {

TEST(NodeHandle, carries_the_bytes_of_a_path_through_a_variant) {
  const DiskNode node({.name = "caf\xE9", .path = "/caf\xE9", .size = 1, .mtime = {}});
  const QVariant passed = QVariant::fromValue(NodeHandle(node));
  const auto handle = passed.value<NodeHandle>();
  ASSERT_TRUE(handle.isValid());
  EXPECT_EQ(handle.node()->path(), "/caf\xE9");
}

TEST(NodeHandle, is_not_valid_without_a_node) {
  EXPECT_FALSE(NodeHandle().isValid());
  EXPECT_FALSE(NodeHandle(std::nullopt).isValid());
}

TEST(NodeHandle, equals_a_handle_of_an_equal_node) {
  const DiskNode::Fields fields{.name = "a", .path = "/a", .size = 1, .mtime = {}};
  EXPECT_EQ(NodeHandle(DiskNode(fields)), NodeHandle(DiskNode(fields)));
  EXPECT_NE(NodeHandle(DiskNode(fields)), NodeHandle());
}

}  // namespace
}  // namespace tessaly
