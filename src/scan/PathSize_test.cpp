#include "scan/PathSize.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace tessaly {
namespace {

TEST(PathSize, equality_and_hash_cover_all_three_fields) {
  const PathSize item{"a", "/x/a", 5};
  EXPECT_EQ(item, (PathSize{"a", "/x/a", 5}));
  const std::unordered_set<PathSize> items{
      item, {"a", "/x/a", 5}, {"b", "/x/a", 5}, {"a", "/y/a", 5}, {"a", "/x/a", 6}};
  EXPECT_EQ(items.size(), 4U);
}

}  // namespace
}  // namespace tessaly
