#include "scan/JsonValue.h"

#include <cstddef>
#include <simdjson.h>
#include <utility>

#include "scan/JsonText.h"

namespace tessaly {

namespace {

namespace ondemand = simdjson::ondemand;

// Whether `token` is a number by the grammar of JSON. The parser is never asked for its value, so
// numbers that fit no machine type are accepted too.
bool isNumber(std::string_view token) {
  std::size_t at = 0;
  const auto take = [&](std::string_view characters) {
    const bool isTaken = at < token.size() && characters.find(token[at]) != std::string_view::npos;
    if (isTaken) ++at;
    return isTaken;
  };
  const auto takeDigits = [&] {
    const std::size_t begin = at;
    while (take("0123456789")) {
    }
    return at > begin;
  };
  take("-");
  if (!take("0") && !takeDigits()) return false;
  if (take(".") && !takeDigits()) return false;
  if (take("eE")) {
    take("+-");
    if (!takeDigits()) return false;
  }
  return at == token.size();
}

std::string_view withoutBlanksBehind(std::string_view token) {
  const std::size_t last = token.find_last_not_of(" \t\n\r");
  return token.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// The parser reads and checks the text only as far as values are asked for, so all of them are
// asked for. Recurses no deeper than the maximum.
bool read(ondemand::value& source, JsonValue& value, int depth);

bool readText(simdjson::simdjson_result<std::string_view> found, std::string& bytes) {
  std::string_view text;
  if (std::move(found).get(text) != simdjson::SUCCESS) return false;
  bytes = JsonText::bytesOf(text);
  return true;
}

bool readArray(ondemand::value& source, JsonValue& value, int depth) {
  ondemand::array elements;
  if (depth == 0 || source.get_array().get(elements) != simdjson::SUCCESS) return false;
  JsonValue::Array& array = value.held.emplace<JsonValue::Array>();
  for (auto element : elements) {
    ondemand::value found;
    if (element.get(found) != simdjson::SUCCESS || !read(found, array.emplace_back(), depth - 1)) {
      return false;
    }
  }
  return true;
}

bool readObject(ondemand::value& source, JsonValue& value, int depth) {
  ondemand::object fields;
  if (depth == 0 || source.get_object().get(fields) != simdjson::SUCCESS) return false;
  JsonValue::Object& object = value.held.emplace<JsonValue::Object>();
  for (auto field : fields) {
    std::string key;
    ondemand::value found;
    JsonValue member;
    if (!readText(field.unescaped_key(), key) || field.value().get(found) != simdjson::SUCCESS ||
        !read(found, member, depth - 1)) {
      return false;
    }
    object.insert_or_assign(std::move(key), std::move(member));
  }
  return true;
}

bool read(ondemand::value& source, JsonValue& value, int depth) {
  ondemand::json_type type{};
  if (source.type().get(type) != simdjson::SUCCESS) return false;
  switch (type) {
    case ondemand::json_type::array:
      return readArray(source, value, depth);
    case ondemand::json_type::object:
      return readObject(source, value, depth);
    case ondemand::json_type::string:
      return readText(source.get_string(), value.held.emplace<std::string>());
    case ondemand::json_type::number: {
      const std::string_view token = withoutBlanksBehind(source.raw_json_token());
      value.held = JsonValue::Number{std::string(token)};
      return isNumber(token);
    }
    case ondemand::json_type::boolean:
      return source.get_bool().get(value.held.emplace<bool>()) == simdjson::SUCCESS;
    case ondemand::json_type::null: {
      bool isNull = false;
      return source.is_null().get(isNull) == simdjson::SUCCESS && isNull;
    }
  }
  return false;
}

void write(JsonWriter& json, const JsonValue& value) {
  if (const auto* array = value.as<JsonValue::Array>()) {
    json.beginArray();
    for (const JsonValue& element : *array) write(json, element);
    json.endArray();
  } else if (const auto* object = value.as<JsonValue::Object>()) {
    json.beginObject();
    for (const auto& [key, member] : *object) {
      json.key(key);
      write(json, member);
    }
    json.endObject();
  } else if (const auto* text = value.as<std::string>()) {
    json.text(*text);
  } else if (const auto* number = value.as<JsonValue::Number>()) {
    json.raw(number->digits);
  } else if (const auto* boolean = value.as<bool>()) {
    json.boolean(*boolean);
  } else {
    json.null();
  }
}

}  // namespace

std::optional<JsonValue> JsonValue::parse(std::string_view json) {
  if (json.starts_with("\xEF\xBB\xBF")) return std::nullopt;
  // Inside brackets the parser treats a top-level value like any other.
  const simdjson::padded_string padded("[" + std::string(json) + "]");
  ondemand::parser parser;
  ondemand::document document;
  ondemand::array top;
  if (parser.iterate(padded).get(document) != simdjson::SUCCESS ||
      document.get_array().get(top) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  std::optional<JsonValue> value;
  for (auto element : top) {
    ondemand::value found;
    if (value || element.get(found) != simdjson::SUCCESS ||
        !read(found, value.emplace(), maximumDepth)) {
      return std::nullopt;
    }
  }
  if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) return std::nullopt;
  return value;
}

std::string JsonValue::written(JsonWriter::Form form) const {
  JsonWriter writer(form);
  write(writer, *this);
  return std::move(writer).finish();
}

}  // namespace tessaly
