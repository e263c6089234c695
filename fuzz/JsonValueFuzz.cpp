#include <algorithm>
#include <cstddef>
#include <optional>
#include <simdjson.h>
#include <string>

#include "Target.h"
#include "scan/JsonValue.h"

namespace tessaly::fuzz {

namespace {

namespace dom = simdjson::dom;

// Nesting depth of arrays and objects.
int depthOf(const dom::element& element) {
  int deepest = 0;
  dom::array array;
  dom::object object;
  if (element.get(array) == simdjson::SUCCESS) {
    for (const dom::element inner : array) deepest = std::max(deepest, depthOf(inner));
    return deepest + 1;
  }
  if (element.get(object) == simdjson::SUCCESS) {
    for (const dom::key_value_pair field : object) {
      deepest = std::max(deepest, depthOf(field.value));
    }
    return deepest + 1;
  }
  return 0;
}

// The verdict must be that of a strict parser, except for numbers that fit no machine type and for
// a byte order mark.
void requireSameVerdict(std::string_view input, bool isRead) {
  if (input.starts_with("\xEF\xBB\xBF")) {
    require(!isRead, "a byte order mark is no JSON");
    return;
  }
  dom::parser parser;
  dom::element top;
  const simdjson::error_code error = parser.parse(input.data(), input.size()).get(top);
  if (error == simdjson::SUCCESS) {
    require(isRead == (depthOf(top) <= JsonValue::maximumDepth),
            "JSON is read unless it is too deep");
  } else if (error != simdjson::NUMBER_ERROR) {
    require(!isRead, "what is no JSON is not read");
  }
}

// Numbers are kept digit for digit, so they must be strictly valid.
void requireNumber(std::string_view digits) {
  const auto skipDigits = [&digits] {
    const std::size_t end = std::min(digits.find_first_not_of("0123456789"), digits.size());
    require(end > 0, "a number has digits where it must");
    digits.remove_prefix(end);
  };
  if (digits.starts_with('-')) digits.remove_prefix(1);
  const bool beginsWithZero = digits.starts_with('0');
  const std::size_t before = digits.size();
  skipDigits();
  require(!beginsWithZero || before - digits.size() == 1, "a number has no zeros in front");
  if (digits.starts_with('.')) {
    digits.remove_prefix(1);
    skipDigits();
  }
  if (digits.starts_with('e') || digits.starts_with('E')) {
    digits.remove_prefix(
        digits.substr(1).starts_with('+') || digits.substr(1).starts_with('-') ? 2 : 1);
    skipDigits();
  }
  require(digits.empty(), "a number is nothing but one");
}

void requireNumbers(const JsonValue& value) {
  if (const auto* number = value.as<JsonValue::Number>()) requireNumber(number->digits);
  if (const auto* array = value.as<JsonValue::Array>()) {
    for (const JsonValue& element : *array) requireNumbers(element);
  }
  if (const auto* object = value.as<JsonValue::Object>()) {
    for (const auto& [key, member] : *object) requireNumbers(member);
  }
}

}  // namespace

void tryInput(std::string_view input) {
  const std::optional<JsonValue> value = JsonValue::parse(input);
  requireSameVerdict(input, value.has_value());
  if (value) {
    requireNumbers(*value);
    const std::string plain = value->written(JsonWriter::Form::plain);
    require(JsonValue::parse(plain) == value, "a value comes back from its plain form");
    require(JsonValue::parse(plain)->written(JsonWriter::Form::plain) == plain,
            "a value is written as before");
    const std::string pretty = value->written(JsonWriter::Form::pretty);
    require(JsonValue::parse(pretty) == value, "a value comes back from its pretty form");
  }

  const JsonValue text = {.held = std::string(input)};
  require(JsonValue::parse(text.written(JsonWriter::Form::plain)) == text, "a text is any bytes");
}

}  // namespace tessaly::fuzz
