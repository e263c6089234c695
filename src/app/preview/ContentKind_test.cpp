#include "app/preview/ContentKind.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace tessaly {

std::ostream& operator<<(std::ostream& out, const ContentKind& kind) {
  return out << static_cast<int>(kind.family) << " " << kind.image;
}

namespace {

using namespace std::string_literals;
using Family = ContentKind::Family;

ContentKind image(std::string_view format) {
  return {.family = Family::image, .image = format};
}
constexpr ContentKind document = {.family = Family::document, .image = {}};
constexpr ContentKind media = {.family = Family::media, .image = {}};
constexpr ContentKind closed = {.family = Family::closed, .image = {}};
constexpr ContentKind unknown = {};

TEST(ContentKind, images_are_recognised_by_their_signatures) {
  EXPECT_EQ(ContentKind::of("\x89PNG\r\n\x1A\n and more"), image("png"));
  EXPECT_EQ(ContentKind::of("\xFF\xD8\xFF\xE0\0\x10JFIF"s), image("jpeg"));
  EXPECT_EQ(ContentKind::of("GIF89a\1\0\1\0"s), image("gif"));
  EXPECT_EQ(ContentKind::of("RIFF\x10\0\0\0WEBPVP8 "s), image("webp"));
  EXPECT_EQ(ContentKind::of("\0\0\0\x18"
                            "ftypavif\0\0\0\0"s),
            image("avif"));
  EXPECT_EQ(ContentKind::of("P6\n640 480\n255\n"), image("ppm"));
}

TEST(ContentKind, bitmaps_need_more_than_two_letters_and_icons_more_than_four_bytes) {
  EXPECT_EQ(ContentKind::of("BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0"s), image("bmp"));
  EXPECT_EQ(ContentKind::of("BMW builds cars of many kinds."), unknown);
  EXPECT_EQ(ContentKind::of("\0\0\1\0\1\0\x10\x10\0\0\1\0\x20\0\x68\4\0\0\x16\0\0\0"s),
            image("ico"));
  EXPECT_EQ(ContentKind::of("\0\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s), unknown);
}

TEST(ContentKind, drawings_are_recognised_by_their_first_element) {
  EXPECT_EQ(ContentKind::of("<svg/>"), image("svg"));
  EXPECT_EQ(ContentKind::of("<svg:svg xmlns:svg='x'>"), image("svg"));
  EXPECT_EQ(ContentKind::of("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- <html> -->\n"
                            "<!DOCTYPE svg [<!ENTITY a '>'>]>\n<svg\n"),
            image("svg"));
  EXPECT_EQ(ContentKind::of("<?xml version='1.0'?><note><svg/></note>"), unknown);
  EXPECT_EQ(ContentKind::of("<svgs/>"), unknown);
  EXPECT_EQ(ContentKind::of("<!-- <svg/>"), unknown);
  EXPECT_EQ(ContentKind::of("<"), unknown);
}

TEST(ContentKind, documents_are_recognised_by_a_line_near_the_beginning) {
  EXPECT_EQ(ContentKind::of("%PDF-1.7\n"), document);
  EXPECT_EQ(ContentKind::of("Content-Type: application/pdf\r\n\r\n%PDF-1.4"), document);
  EXPECT_EQ(ContentKind::of("It begins with %PDF-1.7 as all do."), unknown);
  EXPECT_EQ(ContentKind::of(std::string(1024, '\n') + "%PDF-1.7"), unknown);
  EXPECT_EQ(ContentKind::of("%PDF-"), unknown);
}

TEST(ContentKind, sound_and_film_are_recognised) {
  EXPECT_EQ(ContentKind::of("RIFF\x10\0\0\0WAVEfmt "s), media);
  EXPECT_EQ(ContentKind::of("ID3\3\0\0\0\0\0\0"s), media);
  EXPECT_EQ(ContentKind::of("\0\0\0\x18"
                            "ftypisom\0\0\2\0"s),
            media);
  std::string stream(5 * 188, '\0');
  for (std::size_t at = 0; at < stream.size(); at += 188) stream[at] = 'G';
  EXPECT_EQ(ContentKind::of(stream), media);
  stream[188] = 'H';
  EXPECT_EQ(ContentKind::of(stream), unknown);
}

TEST(ContentKind, files_with_nothing_to_show_are_recognised) {
  EXPECT_EQ(ContentKind::of("PK\3\4\x14\0"s), closed);
  EXPECT_EQ(ContentKind::of("\x7F"
                            "ELF\2\1\1\0"s),
            closed);
  EXPECT_EQ(ContentKind::of("SQLite format 3\0\x10"s), closed);
  EXPECT_EQ(ContentKind::of(std::string(257, '\0') + "ustar\0"s), closed);
}

TEST(ContentKind, texts_that_begin_like_a_signature_are_not_mistaken) {
  for (const char* text : {"ID3 tags are", "MAC addresses", "GIF89a is a format", "BZhang",
                           "OggS begins every page", "free software and more", "PACK up"}) {
    EXPECT_EQ(ContentKind::of(text), unknown) << text;
  }
}

TEST(ContentKind, an_empty_file_is_unknown) {
  EXPECT_EQ(ContentKind::of(""), unknown);
}

}  // namespace
}  // namespace tessaly
