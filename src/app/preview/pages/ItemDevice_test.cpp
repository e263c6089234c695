#include "app/preview/pages/ItemDevice.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

constexpr std::int64_t plenty = 1 << 30;

class ItemDeviceTest : public testing::Test {
 protected:
  ItemDeviceTest() { putFile(tree_.at("file"), content_); }

  HeldItem file() const { return held(tree_.at("file")); }
  std::string path() const { return tree_.at("file"); }

  const std::string content_ = std::string(100'000, 'a') + std::string(100'000, 'b');

 private:
  TempTree tree_;
};

TEST_F(ItemDeviceTest, the_whole_file_is_read) {
  const HeldItem item = file();
  ItemDevice device(item, plenty);
  EXPECT_EQ(device.size(), 200'000);
  EXPECT_FALSE(device.isSequential());
  EXPECT_EQ(device.readAll().toStdString(), content_);
  EXPECT_EQ(device.read(1).size(), 0);
}

TEST_F(ItemDeviceTest, reading_starts_at_the_position_that_was_set) {
  const HeldItem item = file();
  ItemDevice device(item, plenty);
  ASSERT_TRUE(device.seek(99'998));
  EXPECT_EQ(device.read(4), "aabb");
  ASSERT_TRUE(device.seek(3));
  EXPECT_EQ(device.peek(2), "aa");
  EXPECT_EQ(device.pos(), 3);
  ASSERT_TRUE(device.seek(199'999));
  EXPECT_EQ(device.read(4), "b");
}

TEST_F(ItemDeviceTest, reading_fails_once_the_budget_is_used_up) {
  const HeldItem item = file();
  ItemDevice device(item, 120'000);
  EXPECT_EQ(device.readAll().size(), 120'000);
  char byte = 0;
  EXPECT_EQ(device.read(&byte, 1), -1);
}

TEST_F(ItemDeviceTest, reading_ends_where_the_file_was_truncated) {
  const HeldItem item = file();
  ASSERT_EQ(::truncate(path().c_str(), 2), 0);
  ItemDevice device(item, plenty);
  EXPECT_EQ(device.readAll(), "aa");
}

}  // namespace
}  // namespace tessaly
