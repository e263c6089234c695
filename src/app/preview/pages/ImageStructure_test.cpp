#include "app/preview/pages/ImageStructure.h"

#include <gtest/gtest.h>
#include <string>

#include <QBuffer>

namespace tessaly {
namespace {

using namespace std::string_literals;

bool isComplete(bool (*judge)(QIODevice&), const std::string& bytes) {
  QByteArray data = QByteArray::fromStdString(bytes);
  QBuffer file(&data);
  file.open(QIODevice::ReadOnly);
  return judge(file);
}

bool bmp(const std::string& bytes) {
  return isComplete(ImageStructure::isCompleteBmp, bytes);
}

bool gif(const std::string& bytes) {
  return isComplete(ImageStructure::isCompleteGif, bytes);
}

// Three pixels wide and two high, 24 bits each: rows of 9 bytes are padded to 12.
const std::string bmpHead = "BM\0\0\0\0\0\0\0\0\x36\0\0\0"s;
const std::string bmpSize = "\x28\0\0\0\3\0\0\0\2\0\0\0\1\0\x18\0"s;
const std::string bmpRest = std::string(24, '\0');

TEST(ImageStructure, a_bitmap_needs_all_its_rows) {
  const std::string head = bmpHead + bmpSize + bmpRest;
  EXPECT_TRUE(bmp(head + std::string(24, 'r')));
  EXPECT_FALSE(bmp(head + std::string(23, 'r')));
  EXPECT_FALSE(bmp(head));
  EXPECT_FALSE(bmp(head.substr(0, 30)));
  EXPECT_FALSE(bmp(""));
}

TEST(ImageStructure, a_top_down_bitmap_needs_all_its_rows) {
  std::string size = bmpSize;
  size.replace(8, 4, "\xFE\xFF\xFF\xFF");
  EXPECT_TRUE(bmp(bmpHead + size + bmpRest + std::string(24, 'r')));
  EXPECT_FALSE(bmp(bmpHead + size + bmpRest + std::string(23, 'r')));
}

TEST(ImageStructure, an_old_bitmap_needs_all_its_rows) {
  const std::string head = "BM\0\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\3\0\2\0\1\0\x18\0"s;
  EXPECT_TRUE(bmp(head + std::string(24, 'r')));
  EXPECT_FALSE(bmp(head + std::string(23, 'r')));
}

TEST(ImageStructure, compressed_rows_have_no_known_length) {
  EXPECT_TRUE(bmp(bmpHead + bmpSize + "\1\0\0\0"s + std::string(20, '\0')));
}

TEST(ImageStructure, an_invalid_bitmap_is_left_to_its_decoder) {
  std::string size = bmpSize;
  size.replace(4, 8, "\xFF\xFF\xFF\x7F\0\0\0\x80"s);
  EXPECT_TRUE(bmp(bmpHead + size + bmpRest));
}

const std::string screen = "GIF89a\1\0\1\0\x80\0\0rgbrgb"s;
const std::string remark = "!\xFE\3abc\2de\0"s;
const std::string frame = ",\0\0\0\0\1\0\1\0\x80rgbrgb\2\3abc\0"s;

TEST(ImageStructure, an_animation_needs_its_first_frame) {
  EXPECT_TRUE(gif(screen + remark + frame));
  EXPECT_TRUE(gif(screen + frame + "anything"));
  const std::string whole = screen + remark + frame;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(gif(whole.substr(0, length))) << length;
  }
}

TEST(ImageStructure, an_invalid_block_is_left_to_the_decoder) {
  EXPECT_TRUE(gif(screen + "?"));
}

}  // namespace
}  // namespace tessaly
