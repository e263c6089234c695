#include "platform/linux/trash/TrashInfo.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

std::tm moment() {
  std::tm time{};
  time.tm_year = 124;
  time.tm_mon = 1;
  time.tm_mday = 3;
  time.tm_hour = 4;
  time.tm_min = 5;
  time.tm_sec = 6;
  return time;
}

std::string encoded(std::string_view path) {
  const std::string text = TrashInfo::text(path, moment());
  const std::size_t start = text.find("Path=") + 5;
  return text.substr(start, text.find("\nDeletionDate") - start);
}

std::string numbered(std::string_view name, unsigned number = 1, std::size_t longest = 255) {
  return TrashInfo::nameFor(name, number, longest);
}

TEST(TrashInfoText, a_record_contains_the_path_and_the_local_time) {
  EXPECT_EQ(TrashInfo::text("/home/ada/film.mkv", moment()),
            "[Trash Info]\nPath=/home/ada/film.mkv\nDeletionDate=2024-02-03T04:05:06\n");
}

TEST(TrashInfoText, all_but_plain_characters_and_slashes_are_encoded) {
  EXPECT_EQ(encoded("azAZ09-._~/"), "azAZ09-._~/");
  EXPECT_EQ(encoded("a b%c\n"), "a%20b%25c%0A");
  EXPECT_EQ(encoded("\xC3\xA9\xff\x01"), "%C3%A9%FF%01");
  EXPECT_EQ(encoded("!*'();:@&=+$,?#[]"), "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%3F%23%5B%5D");
}

TEST(TrashName, the_first_name_is_that_of_the_item) {
  for (const char* name : {"film.mkv", "film", ".hidden", "a.b.c", "\xff"}) {
    EXPECT_EQ(numbered(name), name);
  }
}

TEST(TrashName, the_number_comes_before_the_extension) {
  EXPECT_EQ(numbered("film.mkv", 2), "film.2.mkv");
  EXPECT_EQ(numbered("film", 12), "film.12");
  EXPECT_EQ(numbered(".hidden", 2), ".hidden.2");
  EXPECT_EQ(numbered("a.a long sentence without end", 2), "a.a long sentence without end.2");
}

TEST(TrashName, a_name_is_cut_to_leave_room_for_the_ending_of_its_record) {
  EXPECT_EQ(numbered(std::string(245, 'n')), std::string(245, 'n'));
  EXPECT_EQ(numbered(std::string(246, 'n')), std::string(245, 'n'));
  EXPECT_EQ(numbered(std::string(255, 'n')), std::string(245, 'n'));
  EXPECT_EQ(numbered(std::string(251, 'n') + ".mkv", 10), std::string(238, 'n') + ".10.mkv");
  EXPECT_EQ(numbered(std::string(255, 'n'), 1, 143), std::string(133, 'n'));
}

TEST(TrashName, a_character_is_never_cut_in_two) {
  // After one byte, characters of three bytes end at 244 and 247: the limit is 245.
  std::string name = "n";
  for (int i = 0; i < 84; ++i) name += "\xE2\x82\xAC";
  EXPECT_EQ(numbered(name), name.substr(0, 244));
  // With characters of two bytes the limit falls on the end of a character when the name starts
  // with one byte.
  std::string accents = "n";
  for (int i = 0; i < 127; ++i) accents += "\xC3\xA9";
  EXPECT_EQ(numbered(accents), accents.substr(0, 245));
  EXPECT_EQ(numbered(accents.substr(1)), accents.substr(1, 244));
  std::string faces;
  for (int i = 0; i < 63; ++i) faces += "\xF0\x9F\x98\x80";
  EXPECT_EQ(numbered(faces), faces.substr(0, 244));
  for (const char* before : {"n", "nn", "nnn"}) {
    const std::string shifted = before + faces;
    const std::size_t offset = std::string(before).size();
    EXPECT_EQ(numbered(shifted), shifted.substr(0, offset + (245 - offset) / 4 * 4));
  }
}

TEST(TrashName, bytes_that_are_not_utf8_are_cut_at_the_limit) {
  for (const char byte : {'\xff', '\x80', '\xE2', '\xC3'}) {
    EXPECT_EQ(numbered(std::string(255, byte)), std::string(245, byte));
  }
}

}  // namespace
}  // namespace tessaly
