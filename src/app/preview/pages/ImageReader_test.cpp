#include "app/preview/pages/ImageReader.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <variant>

#include <QImageWriter>

#include "app/preview/ContentKind.h"
#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using namespace std::string_literals;
using Verdict = ReaderAnswer::Verdict;

// Reads bytes as an image of the format that they themselves tell.
Decoded readBytes(const std::string& bytes, const PreviewLimits& limits = {}) {
  ImageReader::limitAllocation();
  const TempTree tree;
  putFile(tree.at("image"), bytes);
  return ImageReader::read(held(tree.at("image")), ContentKind::of(bytes).image, limits);
}

ImagePreview imageIn(const Decoded& decoded) {
  if (const auto* image = std::get_if<ImagePreview>(&decoded)) return *image;
  ADD_FAILURE() << "no image: " << decoded.index();
  return {};
}

Verdict verdictOf(const Decoded& decoded) {
  const auto* verdict = std::get_if<Verdict>(&decoded);
  return verdict != nullptr ? *verdict : Verdict::shown;
}

std::string littleEndian(unsigned number, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(number >> 8 * i & 0xFF);
  return text;
}

// A frame of one colour, not compressed: codes of 8 bits, and the decoder told to forget before it
// expects longer ones.
std::string gifFrame(int width, int height, unsigned char color) {
  std::string data;
  for (int i = 0; i < width * height; ++i) {
    if (i % 100 == 0) data += '\x80';
    data += static_cast<char>(color);
  }
  data += '\x81';
  std::string frame = "," + littleEndian(0, 4) + littleEndian(static_cast<unsigned>(width), 2) +
                      littleEndian(static_cast<unsigned>(height), 2) + "\0\7"s;
  for (std::size_t at = 0; at < data.size(); at += 255) {
    const std::string block = data.substr(at, 255);
    frame += static_cast<char>(block.size()) + block;
  }
  return frame + '\0';
}

// Colour 0 is red, all others are black but colour 1, which is blue.
std::string gifScreen(int width, int height) {
  return "GIF89a" + littleEndian(static_cast<unsigned>(width), 2) +
         littleEndian(static_cast<unsigned>(height), 2) + "\xF6\0\0"s + "\xFF\0\0\0\0\xFF"s +
         std::string(3 * 126, '\0');
}

class EveryFormat : public testing::TestWithParam<const char*> {};

TEST_P(EveryFormat, is_shown_at_its_size) {
  const ImagePreview preview = imageIn(readBytes(encoded(quarters(64, 64), GetParam())));
  EXPECT_EQ(preview.pixels, QSize(64, 64));
  EXPECT_EQ(preview.image.size(), QSize(64, 64));
  EXPECT_EQ(colorsOf(preview.image), "rgbw");
}

TEST_P(EveryFormat, is_scaled_down_in_shape) {
  PreviewLimits limits;
  limits.pixels = {40, 16};
  const ImagePreview preview = imageIn(readBytes(encoded(quarters(64, 64), GetParam()), limits));
  EXPECT_EQ(preview.pixels, QSize(64, 64));
  EXPECT_EQ(preview.image.size(), QSize(16, 16));
  EXPECT_EQ(colorsOf(preview.image), "rgbw");
}

TEST_P(EveryFormat, says_that_it_is_damaged_when_a_part_is_missing) {
  const std::string bytes = encoded(quarters(64, 64), GetParam());
  for (const double part : {0.4, 0.7, 0.95}) {
    const auto length = static_cast<std::size_t>(part * static_cast<double>(bytes.size()));
    EXPECT_EQ(verdictOf(readBytes(bytes.substr(0, length))), Verdict::damaged) << part;
  }
}

// Those with colours that there is a writer for.
INSTANTIATE_TEST_SUITE_P(ImageReader, EveryFormat,
                         testing::Values("bmp", "ico", "icns", "jpeg", "png", "ppm", "tiff", "webp",
                                         "xpm"),
                         [](const auto& format) { return std::string(format.param); });

TEST(ImageReader, shows_the_first_frame_of_an_animation) {
  const std::string two = gifScreen(20, 10) + gifFrame(20, 10, 0) + gifFrame(20, 10, 1) + ";";
  const ImagePreview preview = imageIn(readBytes(two));
  EXPECT_EQ(preview.pixels, QSize(20, 10));
  EXPECT_EQ(preview.image.pixel(10, 5), qRgb(255, 0, 0));
}

TEST(ImageReader, shows_an_animation_of_which_only_later_frames_are_missing) {
  const std::string bytes = gifScreen(20, 10) + gifFrame(20, 10, 0) + gifFrame(20, 10, 1);
  EXPECT_EQ(imageIn(readBytes(bytes.substr(0, bytes.size() - 50))).pixels, QSize(20, 10));
}

TEST(ImageReader, says_that_an_animation_without_its_first_frame_is_damaged) {
  const std::string bytes = gifScreen(20, 10) + gifFrame(20, 10, 0);
  EXPECT_EQ(verdictOf(readBytes(bytes.substr(0, bytes.size() - 50))), Verdict::damaged);
  EXPECT_EQ(verdictOf(readBytes(bytes.substr(0, 100))), Verdict::damaged);
}

TEST(ImageReader, shows_the_largest_of_an_icon) {
  // Two files of one image each, put together: a header, an entry of 16 bytes each, the images.
  const auto image = [](int side) { return encoded(quarters(side, side), "ico").substr(22); };
  const auto entry = [](int side, std::size_t length, std::size_t offset) {
    return std::string(2, static_cast<char>(side)) + "\0\0\1\0\x20\0"s +
           littleEndian(static_cast<unsigned>(length), 4) +
           littleEndian(static_cast<unsigned>(offset), 4);
  };
  const std::string small = image(16);
  const std::string large = image(48);
  const std::string icon = "\0\0\1\0\2\0"s + entry(16, small.size(), 38) +
                           entry(48, large.size(), 38 + small.size()) + small + large;
  EXPECT_EQ(imageIn(readBytes(icon)).pixels, QSize(48, 48));
}

// The orientation that a camera writes when it was held upright.
std::string turnedJpeg(int width, int height) {
  const std::string tiff = "MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s;
  const std::string segment = "Exif\0\0"s + tiff;
  const auto length = static_cast<char>(segment.size() + 2);
  std::string bytes = encoded(quarters(width, height), "jpeg");
  return bytes.insert(2, "\xFF\xE1\0"s + length + segment);
}

TEST(ImageReader, turns_a_photograph_as_it_is_meant_to_be_seen) {
  const ImagePreview preview = imageIn(readBytes(turnedJpeg(64, 32)));
  EXPECT_EQ(preview.pixels, QSize(32, 64));
  EXPECT_EQ(preview.image.size(), QSize(32, 64));
  EXPECT_EQ(colorsOf(preview.image), "brwg");
}

TEST(ImageReader, scales_a_turned_photograph_by_its_turned_sides) {
  PreviewLimits limits;
  limits.pixels = {100, 32};
  const ImagePreview preview = imageIn(readBytes(turnedJpeg(64, 32), limits));
  EXPECT_EQ(preview.pixels, QSize(32, 64));
  EXPECT_EQ(preview.image.size(), QSize(16, 32));
}

TEST(ImageReader, keeps_what_is_transparent) {
  QImage clear(8, 8, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  const ImagePreview preview = imageIn(readBytes(encoded(clear, "png")));
  EXPECT_TRUE(preview.image.hasAlphaChannel());
  EXPECT_EQ(qAlpha(preview.image.pixel(4, 4)), 0);
}

TEST(ImageReader, says_that_a_changed_image_is_damaged) {
  std::string bytes = encoded(quarters(64, 64), "png");
  bytes[bytes.find("IDAT") + 20] ^= 0x55;
  EXPECT_EQ(verdictOf(readBytes(bytes)), Verdict::damaged);
}

TEST(ImageReader, never_takes_the_memory_that_a_giant_asks_for) {
  EXPECT_EQ(verdictOf(readBytes("P6\n30000 30000\n255\n\1\2\3")), Verdict::tooLarge);
}

TEST(ImageReader, reads_no_file_that_is_longer_than_the_limit) {
  PreviewLimits limits;
  limits.imageFileBytes = 100;
  EXPECT_EQ(verdictOf(readBytes(encoded(quarters(64, 64), "png"), limits)), Verdict::tooLarge);
}

TEST(ImageReader, has_nothing_to_show_of_a_format_without_a_reader) {
  EXPECT_EQ(verdictOf(readBytes("8BPS\0\1\0\0\0\0\0\0\0\3"s)), Verdict::nothing);
}

constexpr const char* drawing =
    "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20' viewBox='0 0 2 1'>"
    "<rect width='1' height='1' fill='#f00'/><text x='0' y='1'>A</text></svg>";

TEST(ImageReader, draws_a_drawing) {
  const ImagePreview preview = imageIn(readBytes(drawing));
  EXPECT_EQ(preview.pixels, QSize(40, 20));
  EXPECT_EQ(preview.image.size(), QSize(40, 20));
  EXPECT_EQ(preview.image.pixel(2, 2), qRgb(255, 0, 0));
  EXPECT_EQ(qAlpha(preview.image.pixel(38, 2)), 0);
}

TEST(ImageReader, draws_a_giant_drawing_no_larger_than_it_is_shown) {
  std::string giant = drawing;
  giant.replace(giant.find("'40' height='20'"), 16, "'4000000' height='2000000'");
  const ImagePreview preview = imageIn(readBytes(giant));
  EXPECT_EQ(preview.pixels, QSize(4'000'000, 2'000'000));
  EXPECT_EQ(preview.image.size(), QSize(1600, 800));
}

TEST(ImageReader, says_that_a_drawing_is_damaged) {
  EXPECT_EQ(verdictOf(readBytes(std::string(drawing).substr(0, 120))), Verdict::damaged);
}

TEST(ImageReader, refuses_a_drawing_that_is_too_long) {
  PreviewLimits limits;
  limits.svgFileBytes = 100;
  EXPECT_EQ(verdictOf(readBytes(drawing, limits)), Verdict::tooLarge);
}

// All of such an image is in memory at once, at its full size, before any of it can be shown.
TEST(ImageReader, refuses_a_giant_photograph_that_cannot_be_read_bit_by_bit) {
  QByteArray progressive;
  QBuffer buffer(&progressive);
  QImageWriter writer(&buffer, "jpeg");
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(quarters(64, 64)));
  EXPECT_EQ(colorsOf(imageIn(readBytes(progressive.toStdString())).image), "rgbw");
  std::string bytes = progressive.toStdString();
  const std::size_t frame = bytes.find("\xFF\xC2");
  ASSERT_NE(frame, std::string::npos);
  bytes.replace(frame + 5, 4, "\x30\0\x30\0"s);
  EXPECT_EQ(verdictOf(readBytes(bytes)), Verdict::tooLarge);
}

}  // namespace
}  // namespace tessaly
