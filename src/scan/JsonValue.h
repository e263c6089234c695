// Any JSON, read whole and written back without loss: for files in which others may have put what
// this program knows nothing of. Plain values, safe from any thread.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "scan/JsonWriter.h"

namespace tessaly {

struct JsonValue {
  struct Null {
    friend bool operator==(const Null&, const Null&) = default;
  };
  // As it was written, digit for digit: of any size and precision.
  struct Number {
    std::string digits;
    friend bool operator==(const Number&, const Number&) = default;
  };
  using Array = std::vector<JsonValue>;
  using Object = std::map<std::string, JsonValue, std::less<>>;  // by the bytes of the keys

  // How many arrays and objects may lie inside one another in what is read.
  static constexpr int maximumDepth = 64;

  // Texts and keys are bytes, as JsonText tells. Absent when `json` is not JSON to the letter or
  // too deep. Of several values under one key the last one counts.
  static std::optional<JsonValue> parse(std::string_view json);

  // Keys stand in the order of their bytes.
  std::string written(JsonWriter::Form form) const;

  // The value as one of its types; null when it is of another.
  template <class Type>
  const Type* as() const {
    return std::get_if<Type>(&held);
  }

  friend bool operator==(const JsonValue&, const JsonValue&) = default;

  std::variant<Null, bool, Number, std::string, Array, Object> held;
};

}  // namespace tessaly
