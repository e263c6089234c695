#include "support/MemoryTrash.h"

#include "support/TrashContract.h"

namespace tessaly {
namespace {

struct MemoryTrashHarness {
  MemoryTrashHarness() { disk.put("/home/user/here"); }

  TrashMover& mover() { return disk; }
  static std::string at(const std::string& below) { return "/home/user/here/" + below; }
  void put(const std::string& path, const std::string& content) { disk.put(path, content); }
  void remove(const std::string& path) { disk.remove(path); }
  bool has(const std::string& path) const { return disk.has(path); }
  std::string contentOf(const std::string& path) const { return disk.contentOf(path); }

  MemoryTrash disk;
};

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryTrash, TrashContract, MemoryTrashHarness);

TEST(MemoryTrash, refuses_what_it_was_told_to) {
  MemoryTrash disk;
  disk.put("/a");
  disk.refuse("/a");
  const Result<std::string> moved = disk.moveToTrash("/a");
  ASSERT_FALSE(moved);
  EXPECT_EQ(moved.error().kind, SystemError::Kind::notPermitted);
  EXPECT_TRUE(disk.has("/a"));
}

TEST(MemoryTrash, moves_without_a_word_of_where_to) {
  MemoryTrash disk;
  disk.put("/a");
  disk.tellNoPlaces();
  const Result<std::string> moved = disk.moveToTrash("/a");
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved.value(), "");
  EXPECT_FALSE(disk.has("/a"));
}

}  // namespace
}  // namespace tessaly
