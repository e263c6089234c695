#include "platform/linux/ExtentMap.h"

#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/OpenPath.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

constexpr std::uint32_t shared = FIEMAP_EXTENT_SHARED;

fiemap_extent extent(std::uint64_t logical, std::uint64_t physical, std::uint64_t length,
                     std::uint32_t flags = shared) {
  fiemap_extent made{};
  made.fe_logical = logical;
  made.fe_physical = physical;
  made.fe_length = length;
  made.fe_flags = flags;
  return made;
}

using Extents = std::vector<fiemap_extent>;

// A file system that answers with `most` extents at a time.
ReadExtents answers(Extents extents, std::size_t most = 32) {
  return [extents = std::move(extents), most](std::uint64_t start) {
    Extents next;
    for (const fiemap_extent& one : extents) {
      if (one.fe_logical >= start && next.size() < most) next.push_back(one);
    }
    return std::optional(next);
  };
}

std::uint64_t idOf(const ReadExtents& read, std::uint64_t fileSystem = 1) {
  return cloneIdFrom(fileSystem, read, [] { return false; });
}

std::uint64_t idOf(const Extents& extents) {
  return idOf(answers(extents));
}

// Extents with holes between them.
Extents many(std::size_t count, std::uint32_t flags = shared) {
  Extents all;
  for (std::size_t i = 0; i < count; ++i) all.push_back(extent(i * 100, 7000 + i * 70, 50, flags));
  return all;
}

TEST(ExtentMap, files_with_the_same_extents_have_the_same_id) {
  EXPECT_NE(idOf(many(3)), 0U);
  EXPECT_EQ(idOf(many(3)), idOf(many(3)));
}

TEST(ExtentMap, any_difference_of_a_list_changes_the_id) {
  const std::uint64_t id = idOf(many(100));
  for (const std::size_t place : {0, 1, 31, 32, 63, 64, 99}) {
    Extents other = many(100);
    other[place].fe_physical += 1;
    EXPECT_NE(idOf(other), id) << "place of " << place;
    other = many(100);
    other[place].fe_length -= 1;
    EXPECT_NE(idOf(other), id) << "length of " << place;
    other = many(100);
    other[place].fe_logical += 1;
    EXPECT_NE(idOf(other), id) << "offset of " << place;
    other = many(100);
    other.erase(other.begin() + static_cast<std::ptrdiff_t>(place));
    EXPECT_NE(idOf(other), id) << "without " << place;
  }
}

TEST(ExtentMap, extents_in_another_order_on_the_disk_have_another_id) {
  Extents other = many(3);
  std::swap(other[0].fe_physical, other[1].fe_physical);
  EXPECT_NE(idOf(other), idOf(many(3)));
}

TEST(ExtentMap, files_of_different_file_systems_have_different_ids) {
  EXPECT_NE(idOf(answers(many(3)), 1), idOf(answers(many(3)), 2));
  EXPECT_NE(idOf(answers(many(3)), 0), 0U);
}

TEST(ExtentMap, a_file_without_extents_has_no_id) {
  EXPECT_EQ(idOf(Extents()), 0U);
}

TEST(ExtentMap, one_extent_that_is_not_shared_leaves_no_id) {
  for (const std::size_t place : {0, 1, 32, 99}) {
    Extents extents = many(100);
    extents[place].fe_flags = 0;
    EXPECT_EQ(idOf(extents), 0U) << place;
  }
}

TEST(ExtentMap, an_extent_without_a_known_place_leaves_no_id) {
  for (const std::uint32_t flag :
       {FIEMAP_EXTENT_UNKNOWN, FIEMAP_EXTENT_DELALLOC, FIEMAP_EXTENT_NOT_ALIGNED,
        FIEMAP_EXTENT_DATA_INLINE, FIEMAP_EXTENT_DATA_TAIL}) {
    Extents extents = many(40);
    extents[35].fe_flags |= flag;
    EXPECT_EQ(idOf(extents), 0U) << flag;
  }
}

TEST(ExtentMap, compressed_and_unwritten_extents_have_an_id) {
  for (const std::uint32_t flag : {FIEMAP_EXTENT_ENCODED, FIEMAP_EXTENT_UNWRITTEN}) {
    EXPECT_NE(idOf(many(40, shared | flag)), 0U) << flag;
  }
}

TEST(ExtentMap, the_id_does_not_depend_on_how_a_piece_is_split) {
  const std::uint64_t id = idOf({extent(0, 5000, 300), extent(400, 9000, 100)});
  EXPECT_EQ(idOf({extent(0, 5000, 100), extent(100, 5100, 200), extent(400, 9000, 50),
                  extent(450, 9050, 50)}),
            id);
  // These only continue each other in the file, or on the disk.
  EXPECT_NE(idOf({extent(0, 5000, 100), extent(100, 5101, 200), extent(400, 9000, 100)}), id);
  EXPECT_NE(idOf({extent(0, 5000, 100), extent(101, 5100, 200), extent(400, 9000, 100)}), id);
}

TEST(ExtentMap, compressed_extents_are_never_joined) {
  constexpr std::uint32_t encoded = shared | FIEMAP_EXTENT_ENCODED;
  EXPECT_NE(idOf({extent(0, 5000, 100, encoded), extent(100, 5100, 100, encoded)}),
            idOf({extent(0, 5000, 200, encoded)}));
  EXPECT_NE(idOf({extent(0, 5000, 100, encoded), extent(100, 5100, 100)}),
            idOf({extent(0, 5000, 200)}));
}

TEST(ExtentMap, the_id_does_not_depend_on_how_many_extents_come_at_a_time) {
  Extents whole;
  for (std::uint64_t i = 0; i < 100; ++i) whole.push_back(extent(i * 10, 5000 + i * 10, 10));
  for (const std::size_t most : {1, 7, 32, 100}) {
    EXPECT_EQ(idOf(answers(whole, most)), idOf({extent(0, 5000, 1000)})) << most;
    EXPECT_EQ(idOf(answers(many(100), most)), idOf(many(100))) << most;
  }
}

TEST(ExtentMap, nothing_is_read_after_the_last_extent) {
  Extents extents = many(3);
  extents[2].fe_flags |= FIEMAP_EXTENT_LAST;
  int readings = 0;
  const std::uint64_t id = idOf([&](std::uint64_t) {
    ++readings;
    return std::optional(extents);
  });
  EXPECT_EQ(id, idOf(many(3)));
  EXPECT_EQ(readings, 1);
}

TEST(ExtentMap, a_list_that_does_not_advance_leaves_no_id) {
  int readings = 0;
  EXPECT_EQ(idOf([&](std::uint64_t) {
              ++readings;
              return std::optional(many(2));
            }),
            0U);
  EXPECT_EQ(readings, 2);
  // The end of this extent is beyond the largest number.
  EXPECT_EQ(idOf([&](std::uint64_t start) {
              return std::optional(Extents{extent(start + 10, 5, UINT64_MAX - 5)});
            }),
            0U);
  EXPECT_EQ(idOf([&](std::uint64_t) { return std::optional(Extents{extent(0, 5, 0)}); }), 0U);
}

TEST(ExtentMap, a_list_with_too_many_extents_leaves_no_id) {
  EXPECT_NE(idOf(many(mostExtents)), 0U);
  EXPECT_EQ(idOf(many(mostExtents + 1)), 0U);
}

TEST(ExtentMap, a_list_that_cannot_be_read_to_its_end_leaves_no_id) {
  EXPECT_EQ(idOf([](std::uint64_t) { return std::optional<Extents>(); }), 0U);
  EXPECT_EQ(idOf([](std::uint64_t start) {
              return start == 0 ? std::optional(many(32)) : std::optional<Extents>();
            }),
            0U);
}

TEST(ExtentMap, a_list_that_is_given_up_leaves_no_id) {
  int looks = 0;
  EXPECT_EQ(cloneIdFrom(1, answers(many(100)), [&] { return ++looks > 2; }), 0U);
  EXPECT_EQ(looks, 3);
}

TEST(ExtentMap, a_folder_that_is_no_file_has_no_list) {
  const TempTree tree("a/\n");
  const FileDescriptor folder = openPath(tree.at("a"), O_PATH);
  EXPECT_FALSE(extentsOf(folder.get())(0).has_value());
}

}  // namespace
}  // namespace tessaly
