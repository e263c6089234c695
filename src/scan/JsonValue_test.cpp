#include "scan/JsonValue.h"

#include <gtest/gtest.h>
#include <random>
#include <simdjson.h>
#include <string>
#include <string_view>

namespace tessaly {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Form = JsonWriter::Form;

// The text written after `json` was read; "refused" if it was not.
std::string plain(std::string_view json) {
  const std::optional<JsonValue> value = JsonValue::parse(json);
  return value ? value->written(Form::plain) : "refused";
}

TEST(JsonValue, each_type_is_read_at_the_top_level) {
  EXPECT_TRUE(JsonValue::parse(" null ")->as<JsonValue::Null>());
  EXPECT_EQ(*JsonValue::parse("true")->as<bool>(), true);
  EXPECT_EQ(*JsonValue::parse("false")->as<bool>(), false);
  EXPECT_EQ(JsonValue::parse(" -1.50e+3\n")->as<JsonValue::Number>()->digits, "-1.50e+3");
  EXPECT_EQ(*JsonValue::parse("\"x\"")->as<std::string>(), "x");
  EXPECT_EQ(JsonValue::parse("[1,2]")->as<JsonValue::Array>()->size(), 2U);
  EXPECT_EQ(JsonValue::parse("{\"a\":1}")->as<JsonValue::Object>()->count("a"), 1U);
  EXPECT_EQ(JsonValue::parse("[]")->as<JsonValue::Object>(), nullptr);
}

TEST(JsonValue, numbers_keep_all_their_digits) {
  for (const char* digits :
       {"0", "-0", "1.0", "1.50", "1e400", "-1E-400", "0.1e+1", "12345678901234567890123456789",
        "3.14159265358979323846264338327950288", "100000000000000000000.0"}) {
    EXPECT_EQ(plain(digits), digits);
    EXPECT_EQ(plain("{\"a\" : [ "s + digits + " ] }"), "{\"a\":["s + digits + "]}");
  }
}

TEST(JsonValue, malformed_numbers_are_refused) {
  for (const char* digits :
       {"01",  "-",  "+1", ".5",  "5.",  "1e",       "1e+",       "0x1", "1_0", "1.2.3",
        "--1", "1-", "00", "-01", "NaN", "Infinity", "-Infinity", "1,",  "1 2", "1a"}) {
    EXPECT_EQ(plain(digits), "refused") << digits;
    EXPECT_EQ(plain("["s + digits + "]"), "refused") << digits;
    EXPECT_EQ(plain("{\"a\":"s + digits + "}"), "refused") << digits;
  }
}

TEST(JsonValue, keys_are_written_in_the_order_of_their_bytes) {
  EXPECT_EQ(plain(R"({"b":1,"a":{"z":null,"Z":[]},"":0,"é":2,"aa":3})"),
            R"({"":0,"a":{"Z":[],"z":null},"aa":3,"b":1,"é":2})");
}

TEST(JsonValue, the_last_of_several_values_for_one_key_is_used) {
  EXPECT_EQ(plain(R"({"a":1,"b":2,"a":[3]})"), R"({"a":[3],"b":2})");
  EXPECT_EQ(plain(R"({"a":1,"\u0061":2})"), R"({"a":2})");
}

TEST(JsonValue, texts_and_keys_are_bytes) {
  const auto value = JsonValue::parse("{\"\U0010FFFF\":\"\\u0000\\ud83d\\ude00\U0010FFE9\"}");
  ASSERT_TRUE(value);
  const JsonValue::Object& object = *value->as<JsonValue::Object>();
  ASSERT_EQ(object.count("\xff"), 1U);
  EXPECT_EQ(*object.at("\xff").as<std::string>(), "\0\U0001F600\xe9"s);
}

TEST(JsonValue, text_that_is_not_strictly_valid_json_is_refused) {
  for (const std::string& text : {""s,
                                  " "s,
                                  "\0"s,
                                  "null\0"s,
                                  "\0null"s,
                                  "nul"s,
                                  "nulll"s,
                                  "NULL"s,
                                  "tru"s,
                                  "truee"s,
                                  "fals"s,
                                  "True"s,
                                  "x"s,
                                  "'x'"s,
                                  "\"x"s,
                                  "x\""s,
                                  "\"\\x\""s,
                                  "\"\\u12\""s,
                                  "\"\\ud800\""s,
                                  "\"\n\""s,
                                  "\"\0\""s,
                                  "\"\xff\""s,
                                  "\"\xed\xa0\x80\""s,
                                  "[\"\xc3\"]"s,
                                  "["s,
                                  "]"s,
                                  "[1"s,
                                  "[1,"s,
                                  "[1,]"s,
                                  "[,1]"s,
                                  "[1 2]"s,
                                  "[1:2]"s,
                                  "[1}"s,
                                  "{1]"s,
                                  "{"s,
                                  "}"s,
                                  "{\"a\"}"s,
                                  "{\"a\":}"s,
                                  "{\"a\":1"s,
                                  "{\"a\":1,}"s,
                                  "{,\"a\":1}"s,
                                  "{\"a\" 1}"s,
                                  "{\"a\",1}"s,
                                  "{a:1}"s,
                                  "{1:1}"s,
                                  "{\"a\":1 \"b\":2}"s,
                                  "[] []"s,
                                  "{}{}"s,
                                  "1,2"s,
                                  "[1],[2]"s,
                                  "1],[2"s,
                                  "],["s,
                                  "{}]"s,
                                  "/**/1"s,
                                  "1//"s,
                                  "\xEF\xBB\xBF"s,
                                  "\xEF\xBB\xBF{}"s,
                                  "\xFF\xFE{\0}\0"s,
                                  ","s,
                                  ":"s}) {
    EXPECT_EQ(plain(text), "refused") << text;
  }
}

TEST(JsonValue, nesting_beyond_the_maximum_depth_is_refused) {
  const auto nested = [](const std::string& open, const std::string& close, int depth) {
    std::string text;
    for (int k = 0; k < depth; ++k) text += open;
    text += "1";
    for (int k = 0; k < depth; ++k) text += close;
    return text;
  };
  constexpr int most = JsonValue::maximumDepth;
  for (const auto& [open, close] : {std::pair("[", "]"), std::pair("{\"a\":", "}")}) {
    EXPECT_EQ(plain(nested(open, close, most)), nested(open, close, most));
    EXPECT_EQ(plain(nested(open, close, most + 1)), "refused");
    EXPECT_EQ(plain(nested(open, close, 100000)), "refused");
    EXPECT_EQ(plain(nested(open, "", 100000)), "refused");
  }
}

TEST(JsonValue, values_with_the_same_content_are_equal) {
  const auto parsed = [](const char* json) { return *JsonValue::parse(json); };
  EXPECT_EQ(parsed(R"({"a":[1,"x",null],"b":true})"),
            parsed(R"( {"b":true, "a":[1,"\u0078",null]})"));
  EXPECT_NE(parsed("1"), parsed("1.0"));
  EXPECT_NE(parsed("null"), parsed("false"));
  EXPECT_NE(parsed("[1]"), parsed("[1,1]"));
  EXPECT_NE(parsed("\"1\""), parsed("1"));
}

constexpr std::string_view sample =
    R"({"a": [1, -2.5e3, "x\u00e9\\", true, false, null, [], {}], "b c": {"d": {"e": ["é", 0]}}, "f": ""})";

TEST(JsonValue, the_pretty_form_is_read_back_as_the_same_value) {
  const std::optional<JsonValue> value = JsonValue::parse(sample);
  ASSERT_TRUE(value);
  EXPECT_EQ(JsonValue::parse(value->written(Form::pretty)), value);
  EXPECT_EQ(JsonValue::parse(value->written(Form::plain)), value);
}

TEST(JsonValue, a_text_cut_at_any_byte_is_refused) {
  for (std::size_t length = 0; length < sample.size(); ++length) {
    EXPECT_FALSE(JsonValue::parse(sample.substr(0, length))) << length;
  }
}

// Whether a parser that checks the whole text first accepts it.
bool isTakenWhole(std::string_view text) {
  simdjson::dom::parser parser;
  simdjson::dom::element top;
  return parser.parse(text.data(), text.size()).get(top) == simdjson::SUCCESS;
}

TEST(JsonValue, parse_accepts_the_same_texts_as_a_parser_that_checks_the_whole_text_first) {
  std::mt19937_64 random(11);
  const std::string_view bytes = "{}[]\",:\\ 01-.eEtfn\xc3\xa9\xff\n\0u/"sv;
  int taken = 0;
  int refused = 0;
  for (int round = 0; round < 60000; ++round) {
    std::string text(sample);
    for (auto changes = 1 + random() % 2; changes > 0; --changes) {
      const std::size_t at = random() % text.size();
      switch (random() % 4) {
        case 0:
          text[at] = bytes[random() % bytes.size()];
          break;
        case 1:
          text.insert(at, 1, bytes[random() % bytes.size()]);
          break;
        case 2:
          text.erase(at, 1 + random() % 3);
          break;
        default:
          text[at] = static_cast<char>(text[at] ^ (1U << (random() % 8)));
      }
      if (text.empty()) text = "x";
    }
    const bool isTaken = JsonValue::parse(text).has_value();
    // These changes cannot produce numbers that fit no machine type.
    ASSERT_EQ(isTaken, isTakenWhole(text)) << text;
    ++(isTaken ? taken : refused);
  }
  EXPECT_GT(taken, 1000);
  EXPECT_GT(refused, 10000);
}

}  // namespace
}  // namespace tessaly
