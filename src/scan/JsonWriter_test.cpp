#include "scan/JsonWriter.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "scan/JsonNumber.h"

namespace tessaly {
namespace {

using Form = JsonWriter::Form;

// One value of each type, nested, with empty brackets in several places.
std::string sample(Form form) {
  JsonWriter json(form);
  json.beginObject();
  json.key("a").beginArray();
  json.integer(1).text("x/y").boolean(true).boolean(false).null().number(0.5);
  json.beginArray().endArray();
  json.beginObject().endObject();
  json.endArray();
  json.key("b").beginObject().key("c").raw("1e400").endObject();
  json.key("d").beginArray().endArray();
  json.key("e").beginObject().endObject();
  json.endObject();
  return std::move(json).finish();
}

std::string number(double value) {
  return std::move(JsonWriter(Form::plain).number(value)).finish();
}

TEST(JsonWriter, the_plain_form_has_no_blanks) {
  EXPECT_EQ(sample(Form::plain),
            R"({"a":[1,"x/y",true,false,null,0.5,[],{}],"b":{"c":1e400},"d":[],"e":{}})");
}

TEST(JsonWriter, the_pretty_form_indents_by_two) {
  EXPECT_EQ(sample(Form::pretty), R"({
  "a": [
    1,
    "x/y",
    true,
    false,
    null,
    0.5,
    [],
    {}
  ],
  "b": {
    "c": 1e400
  },
  "d": [],
  "e": {}
})");
}

TEST(JsonWriter, a_single_value_needs_no_brackets) {
  for (const Form form : {Form::plain, Form::pretty}) {
    EXPECT_EQ(std::move(JsonWriter(form).text("x")).finish(), "\"x\"");
    EXPECT_EQ(std::move(JsonWriter(form).beginArray().endArray()).finish(), "[]");
    EXPECT_EQ(std::move(JsonWriter(form).beginObject().endObject()).finish(), "{}");
  }
}

TEST(JsonWriter, texts_and_keys_hold_any_bytes) {
  const std::string bytes("/\"\\\n\0\xff\xc3\xa9", 8);
  JsonWriter json(Form::plain);
  json.beginObject().key(bytes).text(bytes).endObject();
  const std::string escaped = "\"/\\\"\\\\\\n\\u0000\U0010FFFF\xc3\xa9\"";
  EXPECT_EQ(std::move(json).finish(), "{" + escaped + ":" + escaped + "}");
}

TEST(JsonWriter, integers_are_exact) {
  for (const std::int64_t value :
       {std::int64_t{0}, std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::int64_t>::min(), (std::int64_t{1} << 53U) + 1}) {
    EXPECT_EQ(std::move(JsonWriter(Form::plain).integer(value)).finish(), std::to_string(value));
  }
}

TEST(JsonWriter, doubles_are_written_with_as_few_digits_as_can_be_read_back) {
  EXPECT_EQ(number(1700000000), "1700000000");
  EXPECT_EQ(number(1700000000.25), "1700000000.25");
  EXPECT_EQ(number(0.1), "0.1");
  EXPECT_EQ(number(-3), "-3");
  EXPECT_EQ(number(-0.0), "0");
  EXPECT_EQ(number(9007199254740991), "9007199254740991");
  EXPECT_EQ(number(1e23), "1e+23");
  for (const double value :
       {1e300, 5e-324, 9007199254740993.0, -1e19, 1.0 / 3, std::numeric_limits<double>::max()}) {
    EXPECT_EQ(std::strtod(number(value).c_str(), nullptr), value);
  }
}

TEST(JsonWriter, numbers_that_are_not_finite_are_written_as_null) {
  EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "null");
  EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "null");
  EXPECT_EQ(number(-std::numeric_limits<double>::infinity()), "null");
}

}  // namespace
}  // namespace tessaly
