#include "treemap/SavedFilter.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using namespace std::string_literals;
using Filters = std::vector<SavedFilter>;

const std::string text =
    R"([{"id":"build","enabled":true,"skipScan":false},{"id":"é\"","enabled":false,"skipScan":true}])";
const Filters filters = {{"build", true, false}, {"é\"", false, true}};

TEST(SavedFilter, keys_are_written_in_order_without_blanks) {
  EXPECT_EQ(SavedFilter::encode(filters), text);
  EXPECT_EQ(SavedFilter::encode({}), "[]");
}

TEST(SavedFilter, written_filters_are_read_back) {
  EXPECT_EQ(SavedFilter::decode(text), filters);
  EXPECT_EQ(SavedFilter::decode("[]"), Filters{});
  const Filters odd = {{"\xff\0"s, true, true}, {"", false, false}};
  EXPECT_EQ(SavedFilter::decode(SavedFilter::encode(odd)), odd);
}

TEST(SavedFilter, keys_may_be_in_any_order_and_unknown_ones_are_ignored) {
  EXPECT_EQ(SavedFilter::decode(
                R"( [ { "skipScan" : true , "new" : 1e999, "id" : "x", "enabled" : false } ] )"),
            (Filters{{"x", false, true}}));
}

TEST(SavedFilter, values_of_another_type_and_missing_keys_are_refused) {
  for (const char* wrong :
       {"", "null", "{}", "1", "[null]", "[[]]", "[{}]", "[1]", R"([{"id":"a","enabled":true}])",
        R"([{"id":"a","skipScan":true}])", R"([{"enabled":true,"skipScan":true}])",
        R"([{"id":1,"enabled":true,"skipScan":true}])",
        R"([{"id":"a","enabled":1,"skipScan":true}])",
        R"([{"id":"a","enabled":true,"skipScan":"true"}])",
        R"([{"id":"a","enabled":true,"skipScan":null}])"}) {
    EXPECT_EQ(SavedFilter::decode(wrong), std::nullopt) << wrong;
  }
  // One invalid filter makes the whole list invalid.
  EXPECT_EQ(SavedFilter::decode(text.substr(0, text.size() - 1) + ",{}]"), std::nullopt);
}

TEST(SavedFilter, damaged_json_is_refused) {
  for (const std::string& wrong :
       {"\0"s, text + "\0"s, text + "x", "\xEF\xBB\xBF" + text, "\xff"s, std::string(100000, '['),
        std::string(100000, '[') + std::string(100000, ']')}) {
    EXPECT_EQ(SavedFilter::decode(wrong), std::nullopt) << wrong.substr(0, 100);
  }
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(SavedFilter::decode(std::string_view(text).substr(0, length)), std::nullopt);
  }
}

}  // namespace
}  // namespace tessaly
