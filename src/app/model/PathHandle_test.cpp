#include "app/model/PathHandle.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace tessaly {
namespace {

TEST(PathHandle, carries_the_bytes_of_a_path_through_a_variant) {
  const QVariant passed = QVariant::fromValue(PathHandle("/caf\xE9\n"));
  const auto handle = passed.value<PathHandle>();
  ASSERT_TRUE(handle.isValid());
  EXPECT_EQ(handle.path(), "/caf\xE9\n");
}

TEST(PathHandle, is_not_valid_without_a_path) {
  EXPECT_FALSE(PathHandle().isValid());
}

TEST(PathHandle, equals_a_handle_of_the_same_bytes_alone) {
  EXPECT_EQ(PathHandle("/a\xFF"), PathHandle("/a\xFF"));
  EXPECT_NE(PathHandle("/a\xFF"), PathHandle("/a\xFE"));
}

}  // namespace
}  // namespace tessaly
