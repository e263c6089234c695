#include "platform/tools/BestPaths.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessaly::tools {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(BestPaths, the_lowest_rank_comes_first_and_equal_ones_by_the_bytes_of_their_paths) {
  BestPaths best(1000);
  best.add({.rank = 2, .path = "/a"});
  best.add({.rank = 1, .path = "/c"});
  best.add({.rank = 1, .path = "/b\xff"});
  best.add({.rank = 1, .path = "/b"});
  best.add({.rank = -5, .path = "/z"});
  EXPECT_THAT(best.sorted(), ElementsAre("/z", "/b", "/b\xff", "/c", "/a"));
  EXPECT_FALSE(best.isCut());
  EXPECT_THAT(BestPaths(10).sorted(), IsEmpty());
}

TEST(BestPaths, a_path_that_is_added_twice_is_kept_once) {
  BestPaths best(1000);
  best.add({.rank = 2, .path = "/a"});
  best.add({.rank = 1, .path = "/a"});
  best.add({.rank = 2, .path = "/b"});
  EXPECT_THAT(best.sorted(), ElementsAre("/a", "/b"));
}

TEST(BestPaths, of_the_paths_of_one_file_the_best_is_kept) {
  BestPaths best(1000);
  best.add({.rank = 1, .path = "/b", .inode = BestPaths::Inode{1, 7}});
  best.add({.rank = 1, .path = "/a", .inode = BestPaths::Inode{1, 7}});
  best.add({.rank = 1, .path = "/c", .inode = BestPaths::Inode{2, 7}});
  best.add({.rank = 1, .path = "/d", .inode = BestPaths::Inode{1, 8}});
  EXPECT_THAT(best.sorted(), ElementsAre("/a", "/c", "/d"));
}

TEST(BestPaths, of_many_paths_the_best_are_kept_in_whatever_order_they_come) {
  constexpr int count = 5000;
  for (const int step : {1, count - 1, 1237}) {
    BestPaths best(600);
    for (int i = 0; i < count; ++i) {
      const int number = static_cast<int>((static_cast<std::int64_t>(i) * step) % count);
      best.add({.rank = number / 7, .path = "/file" + std::to_string(100000 + number)});
    }
    const std::vector<std::string> paths = best.sorted();
    EXPECT_TRUE(best.isCut());
    ASSERT_EQ(paths.size(), 50U);  // of 12 bytes each
    for (std::size_t i = 0; i < paths.size(); ++i) {
      EXPECT_EQ(paths[i], "/file" + std::to_string(100000 + i));
    }
  }
}

// They would fill the answer otherwise, and displace other files.
TEST(BestPaths, the_many_paths_of_one_file_displace_no_other_file) {
  BestPaths best(600);
  for (int i = 0; i < 1000; ++i) {
    best.add({.rank = -9,
              .path = "/copy" + std::to_string(100000 + i),
              .inode = BestPaths::Inode{1, 7}});
  }
  best.add({.rank = -1, .path = "/other"});
  EXPECT_THAT(best.sorted(), ElementsAre("/copy100000", "/other"));
}

TEST(BestPaths, a_path_that_is_worse_than_those_kept_is_known_before_it_is_added) {
  BestPaths best(20);
  EXPECT_TRUE(best.mayKeep(1000, "/x"));
  for (int i = 0; i < 100; ++i) best.add({.rank = i, .path = "/file" + std::to_string(i)});
  EXPECT_FALSE(best.mayKeep(50, "/x"));
  EXPECT_TRUE(best.mayKeep(-1, "/x"));
}

}  // namespace
}  // namespace tessaly::tools
