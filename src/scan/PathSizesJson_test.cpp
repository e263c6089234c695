#include "scan/PathSizesJson.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;
using PathSizesJson::decode;
using PathSizesJson::encode;

const std::string text = "{\"/a\":3,\"/a b\":0,\"/a/b\":2,\"/\U0010FFFF\\n\":1}";
const PathSizes sizes = {{"/a/b", 2}, {"/a", 3}, {"/\xff\n", 1}, {"/a b", 0}};

TEST(PathSizesJson, paths_are_written_in_the_order_of_their_bytes_without_blanks) {
  EXPECT_EQ(encode(sizes), text);
  EXPECT_EQ(encode({}), "{}");
}

TEST(PathSizesJson, written_sizes_are_read_back) {
  EXPECT_EQ(decode(text), sizes);
  EXPECT_EQ(decode("{}"), PathSizes{});
  PathSizes all;
  for (int byte = 1; byte < 256; ++byte) {
    all["/"s + static_cast<char>(byte)] = byte;
    all["/\xf4\x8f"s + static_cast<char>(byte) + "\xbf"] = byte;
  }
  EXPECT_EQ(decode(encode(all)), all);
}

TEST(PathSizesJson, blanks_and_escapes_in_json_are_read) {
  EXPECT_EQ(decode(" { \"\\/a\" : 3 ,\n \"\\u002fb\":4 } "), (PathSizes{{"/a", 3}, {"/b", 4}}));
}

TEST(PathSizesJson, the_last_of_several_sizes_for_one_path_is_used) {
  EXPECT_EQ(decode(R"({"/a":1,"/b":2,"/a":3})"), (PathSizes{{"/a", 3}, {"/b", 2}}));
}

TEST(PathSizesJson, sizes_are_whole_numbers_not_below_zero) {
  EXPECT_EQ(decode(R"({"/a":9223372036854775807})"),
            (PathSizes{{"/a", std::numeric_limits<std::int64_t>::max()}}));
  for (const char* wrong : {"1.5", "1.0", "1e3", "-1", "-0.0", "9223372036854775808", "null",
                            "\"1\"", "true", "[]", "{}", "99999999999999999999999999", "1e999"}) {
    EXPECT_EQ(decode("{\"/a\":"s + wrong + "}"), std::nullopt) << wrong;
    EXPECT_EQ(decode("{\"/\":1,\"/a\":"s + wrong + "}"), std::nullopt) << wrong;
  }
}

TEST(PathSizesJson, sizes_whose_sum_overflows_are_refused) {
  EXPECT_TRUE(decode(R"({"/a":4611686018427387904,"/b":4611686018427387903})"));
  EXPECT_EQ(decode(R"({"/a":4611686018427387904,"/b":4611686018427387904})"), std::nullopt);
}

TEST(PathSizesJson, json_that_is_no_map_of_sizes_is_refused) {
  for (const std::string& wrong : {""s,
                                   " "s,
                                   "\0"s,
                                   "null"s,
                                   "[]"s,
                                   "1"s,
                                   "\"{}\""s,
                                   "{\"/a\"}"s,
                                   "{1:1}"s,
                                   "{\"/a\":1,}"s,
                                   text + "x",
                                   text + text,
                                   text + "\0"s,
                                   "\xEF\xBB\xBF" + text,
                                   "\xFF\xFE"s,
                                   "{\"/\xff\":1}"s,
                                   "{\"/\\ud800\":1}"s,
                                   "{\"/\0\":1}"s,
                                   std::string(100000, '{'),
                                   std::string(100000, '['),
                                   "{\"/a\":"s + std::string(100000, '[')}) {
    EXPECT_EQ(decode(wrong), std::nullopt) << wrong.substr(0, 100);
  }
}

TEST(PathSizesJson, a_text_cut_at_any_byte_is_refused) {
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(decode(std::string_view(text).substr(0, length)), std::nullopt) << length;
  }
}

}  // namespace
}  // namespace tessaly
