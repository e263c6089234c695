#include "scan/HistoryJson.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <unordered_set>

namespace tessaly {
namespace {

using namespace std::string_literals;
using HistoryJson::decode;
using HistoryJson::encode;
using Points = std::vector<HistoryPoint>;

const std::string text =
    R"([{"at":1700000000.25,"bytes":123456789012,"files":42},{"at":1700000100,"bytes":0,"files":0}])";
const Points points = {{1700000000.25, 123456789012, 42}, {1700000100, 0, 0}};

// A history of one point with one value replaced.
std::optional<Points> with(const std::string& key, const std::string& value) {
  std::string json = "[{";
  for (const char* name : {"at", "bytes", "files"}) {
    json +=
        (json.size() > 2 ? ",\"" : "\"") + std::string(name) + "\":" + (key == name ? value : "1");
  }
  return decode(json + "}]");
}

TEST(HistoryPoint, identity_is_the_time_and_equality_covers_all_fields) {
  const HistoryPoint point{1.5, 2, 3};
  EXPECT_EQ(point.id(), 1.5);
  EXPECT_EQ(point, (HistoryPoint{1.5, 2, 3}));
  EXPECT_NE(point, (HistoryPoint{1.25, 2, 3}));
  EXPECT_NE(point, (HistoryPoint{1.5, 1, 3}));
  EXPECT_NE(point, (HistoryPoint{1.5, 2, 1}));
  const std::unordered_set<HistoryPoint> set{{1.5, 2, 3}, {1.5, 2, 3}, {1.5, 3, 2}, {2, 2, 3}};
  EXPECT_EQ(set.size(), 3U);
}

TEST(HistoryJson, points_are_written_in_order_without_blanks) {
  EXPECT_EQ(encode(points), text);
  EXPECT_EQ(encode({}), "[]");
}

TEST(HistoryJson, written_points_are_read_back) {
  EXPECT_EQ(decode(text), points);
  EXPECT_EQ(decode("[]"), Points{});
  const Points extreme = {{-9007199254740991, std::numeric_limits<std::int64_t>::max(),
                           std::numeric_limits<std::int64_t>::max()},
                          {0.1, 1, 1}};
  EXPECT_EQ(decode(encode(extreme)), extreme);
}

TEST(HistoryJson, a_point_with_a_time_that_is_not_finite_is_left_out) {
  EXPECT_EQ(encode({{std::numeric_limits<double>::quiet_NaN(), 1, 1}, {2, 3, 4}}),
            R"([{"at":2,"bytes":3,"files":4}])");
}

TEST(HistoryJson, keys_may_be_in_any_order_and_unknown_ones_are_ignored) {
  EXPECT_EQ(decode(R"( [ { "files" : 1, "more" : [ {} ], "bytes" : 2, "at" : 3 } ] )"),
            (Points{{3, 2, 1}}));
}

TEST(HistoryJson, the_last_of_several_values_for_one_key_is_used) {
  EXPECT_EQ(decode(R"([{"at":1,"bytes":2,"files":3,"bytes":4}])"), (Points{{1, 4, 3}}));
}

TEST(HistoryJson, a_time_may_be_whole_or_fractional) {
  EXPECT_EQ(with("at", "5"), (Points{{5, 1, 1}}));
  EXPECT_EQ(with("at", "5.5"), (Points{{5.5, 1, 1}}));
  EXPECT_EQ(with("at", "5e0"), (Points{{5, 1, 1}}));
  for (const char* wrong : {"null", "\"5\"", "true", "[]", "{}", "1e999", "9007199254740992",
                            "-9007199254740992", "1e300", "18446744073709551616"}) {
    EXPECT_EQ(with("at", wrong), std::nullopt) << wrong;
  }
}

TEST(HistoryJson, counts_are_whole_numbers_not_below_zero) {
  for (const char* key : {"bytes", "files"}) {
    EXPECT_TRUE(with(key, "9223372036854775807")) << key;
    for (const char* wrong : {"1.5", "1.0", "1e3", "-1", "-0.0", "9223372036854775808", "null",
                              "\"1\"", "true", "[]", "{}", "99999999999999999999999999"}) {
      EXPECT_EQ(with(key, wrong), std::nullopt) << key << ' ' << wrong;
    }
  }
}

TEST(HistoryJson, json_that_is_no_history_is_refused) {
  for (const std::string& wrong : {""s,
                                   " "s,
                                   "\0"s,
                                   "null"s,
                                   "{}"s,
                                   "1"s,
                                   "\"[]\""s,
                                   "[null]"s,
                                   "[1]"s,
                                   "[[]]"s,
                                   "[{}]"s,
                                   R"([{"at":1,"bytes":2}])"s,
                                   R"([{"at":1,"files":2}])"s,
                                   R"([{"bytes":1,"files":2}])"s,
                                   text + "x",
                                   text + text,
                                   text + "\0"s,
                                   "\xEF\xBB\xBF" + text,
                                   "\xFF\xFE"s,
                                   R"([{"at":1,"bytes":2,"files":3,"x":")"s + "\xff" + R"("}])",
                                   std::string(100000, '['),
                                   std::string(100000, '[') + std::string(100000, ']')}) {
    EXPECT_EQ(decode(wrong), std::nullopt) << wrong.substr(0, 100);
  }
}

TEST(HistoryJson, a_text_cut_at_any_byte_is_refused) {
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(decode(std::string_view(text).substr(0, length)), std::nullopt) << length;
  }
}

}  // namespace
}  // namespace tessaly
