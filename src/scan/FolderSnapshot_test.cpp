#include "scan/FolderSnapshot.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace tessaly {
namespace {

TEST(FolderSnapshot, equality_and_hash_cover_the_path_and_the_sizes) {
  const FolderSnapshot snapshot{"/x", {{"/x/a", 5}, {"/x/b", 9}}};
  EXPECT_EQ(snapshot, (FolderSnapshot{"/x", {{"/x/b", 9}, {"/x/a", 5}}}));
  const std::unordered_set<FolderSnapshot> snapshots{snapshot,
                                                     {"/x", {{"/x/b", 9}, {"/x/a", 5}}},
                                                     {"/y", {{"/x/a", 5}, {"/x/b", 9}}},
                                                     {"/x", {{"/x/a", 9}, {"/x/b", 5}}},
                                                     {"/x", {{"/x/a", 5}}},
                                                     {"/x", {}}};
  EXPECT_EQ(snapshots.size(), 5U);
  const std::hash<FolderSnapshot> hash;
  EXPECT_NE(hash(snapshot), hash({"/y", {{"/x/a", 5}, {"/x/b", 9}}}));
  EXPECT_NE(hash(snapshot), hash({"/x", {{"/x/a", 9}, {"/x/b", 5}}}));
  EXPECT_NE(hash(snapshot), hash({"/x", {{"/x/a", 5}, {"/x/c", 9}}}));
}

TEST(FolderSnapshot, the_hash_does_not_depend_on_the_order_in_the_map) {
  FolderSnapshot forward{"/x", {}};
  FolderSnapshot backward{"/x", {}};
  for (int i = 0; i < 100; ++i) forward.sizes["/x/" + std::to_string(i)] = i;
  backward.sizes.reserve(1000);
  for (int i = 99; i >= 0; --i) backward.sizes["/x/" + std::to_string(i)] = i;
  ASSERT_NE(forward.sizes.begin()->first, backward.sizes.begin()->first);
  EXPECT_EQ(forward, backward);
  EXPECT_EQ(std::hash<FolderSnapshot>{}(forward), std::hash<FolderSnapshot>{}(backward));
}

}  // namespace
}  // namespace tessaly
