#include "app/preview/pages/JpegStructure.h"

#include <gtest/gtest.h>
#include <string>

#include <QBuffer>

namespace tessaly {
namespace {

using namespace std::string_literals;

JpegStructure structureOf(const std::string& bytes) {
  QByteArray data = QByteArray::fromStdString(bytes);
  QBuffer file(&data);
  file.open(QIODevice::ReadOnly);
  return JpegStructure::of(file);
}

const std::string start = "\xFF\xD8";
const std::string frame = "\xFF\xC0\0\4ab"s;
const std::string scan = "\xFF\xDA\0\4ab"s;
const std::string end = "\xFF\xD9";

TEST(JpegStructure, a_file_is_complete_with_the_end_marker) {
  EXPECT_TRUE(structureOf(start + frame + scan + "data" + end).isComplete);
  EXPECT_FALSE(structureOf(start + frame + scan + "data").isComplete);
  EXPECT_FALSE(structureOf(start + frame + scan + "data\xFF").isComplete);
  EXPECT_FALSE(structureOf(start + frame + end).isComplete);
  EXPECT_FALSE(structureOf("").isComplete);
}

TEST(JpegStructure, a_file_is_complete_whatever_follows_the_end_marker) {
  EXPECT_TRUE(structureOf(start + scan + end + "a film, perhaps").isComplete);
}

TEST(JpegStructure, data_is_not_taken_for_a_marker) {
  EXPECT_TRUE(structureOf(start + scan + "a\xFF\0b\xFF\xD0g\xFF\xD7h"s + end).isComplete);
  EXPECT_FALSE(structureOf(start + scan + "a\xFF\0\xD9"s).isComplete);
  // A marker may be preceded by fill bytes.
  EXPECT_TRUE(structureOf(start + scan + "a\xFF\xFF" + end).isComplete);
}

TEST(JpegStructure, segments_are_skipped_when_looking_for_markers) {
  const std::string thumbnail = start + scan + end;
  const std::string segment = "\xFF\xE1\0"s + static_cast<char>(thumbnail.size() + 2) + thumbnail;
  EXPECT_FALSE(structureOf(start + segment).isComplete);
  EXPECT_FALSE(structureOf(start + segment + scan + "data").isComplete);
  EXPECT_TRUE(structureOf(start + segment + scan + "data" + end).isComplete);
}

TEST(JpegStructure, a_file_of_any_length_is_read) {
  EXPECT_TRUE(structureOf(start + scan + std::string(100'000, 'd') + end).isComplete);
}

TEST(JpegStructure, a_progressive_file_is_recognised) {
  const std::string passes = "\xFF\xC2\0\4ab"s;
  EXPECT_TRUE(structureOf(start + passes + scan + scan + end).isProgressive);
  EXPECT_FALSE(structureOf(start + frame + scan + end).isProgressive);
}

}  // namespace
}  // namespace tessaly
