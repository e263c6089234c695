#include "scan/ScanDelta.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace tessaly {
namespace {

TEST(ScanDelta, equality_and_hash_cover_all_four_fields) {
  const ScanDelta delta{"a", "/x/a", 5, 9};
  EXPECT_EQ(delta, (ScanDelta{"a", "/x/a", 5, 9}));
  const std::unordered_set<ScanDelta> deltas{delta,
                                             {"a", "/x/a", 5, 9},
                                             {"b", "/x/a", 5, 9},
                                             {"a", "/y/a", 5, 9},
                                             {"a", "/x/a", 6, 9},
                                             {"a", "/x/a", 5, 8}};
  EXPECT_EQ(deltas.size(), 5U);
  const std::hash<ScanDelta> hash;
  EXPECT_EQ(hash(delta), hash({"a", "/x/a", 5, 9}));
  EXPECT_NE(hash(delta), hash({"b", "/x/a", 5, 9}));
  EXPECT_NE(hash(delta), hash({"a", "/y/a", 5, 9}));
  EXPECT_NE(hash(delta), hash({"a", "/x/a", 6, 9}));
  EXPECT_NE(hash(delta), hash({"a", "/x/a", 5, 8}));
}

}  // namespace
}  // namespace tessaly
