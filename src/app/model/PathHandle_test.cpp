#include "app/model/PathHandle.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace tessaly {
namespace {

TEST(PathHandle, a_path_handle_keeps_the_bytes_of_a_path_in_a_variant) {
  const QVariant passed = QVariant::fromValue(PathHandle("/caf\xE9\n"));
  const auto handle = passed.value<PathHandle>();
  ASSERT_TRUE(handle.isValid());
  EXPECT_EQ(handle.path(), "/caf\xE9\n");
}

TEST(PathHandle, a_path_handle_without_a_path_is_not_valid) {
  EXPECT_FALSE(PathHandle().isValid());
}

TEST(PathHandle, path_handles_are_equal_only_if_their_bytes_are) {
  EXPECT_EQ(PathHandle("/a\xFF"), PathHandle("/a\xFF"));
  EXPECT_NE(PathHandle("/a\xFF"), PathHandle("/a\xFE"));
}

}  // namespace
}  // namespace tessaly
