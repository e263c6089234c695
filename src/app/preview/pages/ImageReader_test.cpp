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

// Reads bytes as an image in the format of their signature.
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

// A frame of one colour, uncompressed: codes of 8 bits, with a reset of the decoder before it
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

// Colour 0 is red, colour 1 is blue, all others are black.
std::string gifScreen(int width, int height) {
  return "GIF89a" + littleEndian(static_cast<unsigned>(width), 2) +
         littleEndian(static_cast<unsigned>(height), 2) + "\xF6\0\0"s + "\xFF\0\0\0\0\xFF"s +
         std::string(3 * 126, '\0');
}

class EveryFormat : public testing::TestWithParam<const char*> {};

TEST_P(EveryFormat, an_image_of_every_format_is_shown_at_its_size) {
  const ImagePreview preview = imageIn(readBytes(encoded(quarters(64, 64), GetParam())));
  EXPECT_EQ(preview.pixels, QSize(64, 64));
  EXPECT_EQ(preview.image.size(), QSize(64, 64));
  EXPECT_EQ(colorsOf(preview.image), "rgbw");
}

TEST_P(EveryFormat, an_image_of_every_format_is_scaled_down_with_its_aspect_ratio) {
  PreviewLimits limits;
  limits.pixels = {40, 16};
  const ImagePreview preview = imageIn(readBytes(encoded(quarters(64, 64), GetParam()), limits));
  EXPECT_EQ(preview.pixels, QSize(64, 64));
  EXPECT_EQ(preview.image.size(), QSize(16, 16));
  EXPECT_EQ(colorsOf(preview.image), "rgbw");
}

TEST_P(EveryFormat, a_truncated_image_of_every_format_is_reported_as_damaged) {
  const std::string bytes = encoded(quarters(64, 64), GetParam());
  for (const double part : {0.4, 0.7, 0.95}) {
    const auto length = static_cast<std::size_t>(part * static_cast<double>(bytes.size()));
    EXPECT_EQ(verdictOf(readBytes(bytes.substr(0, length))), Verdict::damaged) << part;
  }
}

// Formats in colour that Qt can write.
INSTANTIATE_TEST_SUITE_P(ImageReader, EveryFormat,
                         testing::Values("bmp", "ico", "icns", "jpeg", "png", "ppm", "tiff", "webp",
                                         "xpm"),
                         [](const auto& format) { return std::string(format.param); });

TEST(ImageReader, the_first_frame_of_an_animation_is_shown) {
  const std::string two = gifScreen(20, 10) + gifFrame(20, 10, 0) + gifFrame(20, 10, 1) + ";";
  const ImagePreview preview = imageIn(readBytes(two));
  EXPECT_EQ(preview.pixels, QSize(20, 10));
  EXPECT_EQ(preview.image.pixel(10, 5), qRgb(255, 0, 0));
}

TEST(ImageReader, an_animation_without_its_later_frames_is_shown) {
  const std::string bytes = gifScreen(20, 10) + gifFrame(20, 10, 0) + gifFrame(20, 10, 1);
  EXPECT_EQ(imageIn(readBytes(bytes.substr(0, bytes.size() - 50))).pixels, QSize(20, 10));
}

TEST(ImageReader, an_animation_without_its_first_frame_is_damaged) {
  const std::string bytes = gifScreen(20, 10) + gifFrame(20, 10, 0);
  EXPECT_EQ(verdictOf(readBytes(bytes.substr(0, bytes.size() - 50))), Verdict::damaged);
  EXPECT_EQ(verdictOf(readBytes(bytes.substr(0, 100))), Verdict::damaged);
}

TEST(ImageReader, the_largest_image_of_an_icon_is_shown) {
  // Two icon files with one image each, merged: a header, an entry of 16 bytes for each, the
  // images.
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

// With the orientation of a camera held upright.
std::string turnedJpeg(int width, int height) {
  const std::string tiff = "MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s;
  const std::string segment = "Exif\0\0"s + tiff;
  const auto length = static_cast<char>(segment.size() + 2);
  std::string bytes = encoded(quarters(width, height), "jpeg");
  return bytes.insert(2, "\xFF\xE1\0"s + length + segment);
}

TEST(ImageReader, a_photograph_is_rotated_by_its_orientation) {
  const ImagePreview preview = imageIn(readBytes(turnedJpeg(64, 32)));
  EXPECT_EQ(preview.pixels, QSize(32, 64));
  EXPECT_EQ(preview.image.size(), QSize(32, 64));
  EXPECT_EQ(colorsOf(preview.image), "brwg");
}

TEST(ImageReader, a_rotated_photograph_is_scaled_by_its_rotated_sides) {
  PreviewLimits limits;
  limits.pixels = {100, 32};
  const ImagePreview preview = imageIn(readBytes(turnedJpeg(64, 32), limits));
  EXPECT_EQ(preview.pixels, QSize(32, 64));
  EXPECT_EQ(preview.image.size(), QSize(16, 32));
}

TEST(ImageReader, transparency_is_kept) {
  QImage clear(8, 8, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  const ImagePreview preview = imageIn(readBytes(encoded(clear, "png")));
  EXPECT_TRUE(preview.image.hasAlphaChannel());
  EXPECT_EQ(qAlpha(preview.image.pixel(4, 4)), 0);
}

TEST(ImageReader, a_corrupted_image_is_reported_as_damaged) {
  std::string bytes = encoded(quarters(64, 64), "png");
  bytes[bytes.find("IDAT") + 20] ^= 0x55;
  EXPECT_EQ(verdictOf(readBytes(bytes)), Verdict::damaged);
}

TEST(ImageReader, the_memory_for_a_giant_image_is_never_allocated) {
  EXPECT_EQ(verdictOf(readBytes("P6\n30000 30000\n255\n\1\2\3")), Verdict::tooLarge);
}

TEST(ImageReader, a_file_over_the_size_limit_is_not_read) {
  PreviewLimits limits;
  limits.imageFileBytes = 100;
  EXPECT_EQ(verdictOf(readBytes(encoded(quarters(64, 64), "png"), limits)), Verdict::tooLarge);
}

TEST(ImageReader, a_format_without_a_decoder_has_nothing_to_show) {
  EXPECT_EQ(verdictOf(readBytes("8BPS\0\1\0\0\0\0\0\0\0\3"s)), Verdict::nothing);
}

constexpr const char* drawing =
    "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20' viewBox='0 0 2 1'>"
    "<rect width='1' height='1' fill='#f00'/><text x='0' y='1'>A</text></svg>";

TEST(ImageReader, a_drawing_is_drawn) {
  const ImagePreview preview = imageIn(readBytes(drawing));
  EXPECT_EQ(preview.pixels, QSize(40, 20));
  EXPECT_EQ(preview.image.size(), QSize(40, 20));
  EXPECT_EQ(preview.image.pixel(2, 2), qRgb(255, 0, 0));
  EXPECT_EQ(qAlpha(preview.image.pixel(38, 2)), 0);
}

TEST(ImageReader, a_giant_drawing_is_drawn_no_larger_than_shown) {
  std::string giant = drawing;
  giant.replace(giant.find("'40' height='20'"), 16, "'4000000' height='2000000'");
  const ImagePreview preview = imageIn(readBytes(giant));
  EXPECT_EQ(preview.pixels, QSize(4'000'000, 2'000'000));
  EXPECT_EQ(preview.image.size(), QSize(1600, 800));
}

TEST(ImageReader, a_damaged_drawing_is_reported) {
  EXPECT_EQ(verdictOf(readBytes(std::string(drawing).substr(0, 120))), Verdict::damaged);
}

TEST(ImageReader, a_drawing_that_is_too_long_is_refused) {
  PreviewLimits limits;
  limits.svgFileBytes = 100;
  EXPECT_EQ(verdictOf(readBytes(drawing, limits)), Verdict::tooLarge);
}

// Such an image is completely in memory at its full size before any part can be shown.
TEST(ImageReader, a_giant_photograph_that_cannot_be_read_in_parts_is_refused) {
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
