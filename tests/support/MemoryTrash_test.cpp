#include "support/MemoryTrash.h"

#include "support/TrashCanContract.h"
#include "support/TrashContract.h"

namespace tessaly {
namespace {

struct MemoryTrashHarness {
  MemoryTrashHarness() { disk.put("/home/user/here"); }

  TrashMover& mover() { return disk; }
  TrashCan& can() { return disk; }
  static std::string at(const std::string& below) { return "/home/user/here/" + below; }
  void put(const std::string& path, const std::string& content) { disk.put(path, content); }
  void remove(const std::string& path) { disk.remove(path); }
  void takeOut(const std::string& trashPath) { disk.remove(trashPath); }
  bool has(const std::string& path) const { return disk.has(path); }
  std::string contentOf(const std::string& path) const { return disk.contentOf(path); }

  MemoryTrash disk;
};

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryTrash, TrashContract, MemoryTrashHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(MemoryTrash, TrashCanContract, MemoryTrashHarness);

TEST(MemoryTrash, refused_items_do_not_move) {
  MemoryTrash disk;
  disk.put("/a");
  disk.refuse("/a");
  const Result<ItemInTrash> moved = disk.moveToTrash("/a");
  ASSERT_FALSE(moved);
  EXPECT_EQ(moved.error().kind, SystemError::Kind::notPermitted);
  EXPECT_TRUE(disk.has("/a"));
}

TEST(MemoryTrash, refused_items_are_not_deleted) {
  MemoryTrash disk;
  disk.put("/a");
  disk.put("/b");
  const std::string place = disk.moveToTrash("/a").value().path;
  EXPECT_TRUE(disk.moveToTrash("/b"));
  disk.refuse(place);
  const EmptiedTrash emptied = disk.empty();
  EXPECT_EQ(emptied.deleted, 1);
  EXPECT_EQ(emptied.failures, 1);
  EXPECT_EQ(emptied.errors, std::vector{SystemError::fromErrno(EACCES, place)});
  EXPECT_TRUE(disk.has(place));
}

TEST(MemoryTrash, moves_may_report_no_place) {
  MemoryTrash disk;
  disk.put("/a");
  disk.tellNoPlaces();
  const Result<ItemInTrash> moved = disk.moveToTrash("/a");
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved.value().path, "");
  EXPECT_FALSE(disk.has("/a"));
}

}  // namespace
}  // namespace tessaly
