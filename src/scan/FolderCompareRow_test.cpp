#include "scan/FolderCompareRow.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace tessaly {
namespace {

TEST(FolderCompareRow, equality_and_hash_cover_all_three_fields) {
  const FolderCompareRow row{"a/b", 5, 9};
  EXPECT_EQ(row, (FolderCompareRow{"a/b", 5, 9}));
  const std::unordered_set<FolderCompareRow> rows{row,           {"a/b", 5, 9}, {"a/c", 5, 9},
                                                  {"a/b", 6, 9}, {"a/b", 5, 8}, {"a/b", 9, 5}};
  EXPECT_EQ(rows.size(), 5U);
  const std::hash<FolderCompareRow> hash;
  EXPECT_EQ(hash(row), hash({"a/b", 5, 9}));
  EXPECT_NE(hash(row), hash({"a/c", 5, 9}));
  EXPECT_NE(hash(row), hash({"a/b", 6, 9}));
  EXPECT_NE(hash(row), hash({"a/b", 5, 8}));
}

}  // namespace
}  // namespace tessaly
