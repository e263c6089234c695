// Any JSON, read as a whole and written back without loss: for files that may contain data of other
// programs. Plain values, safe from any thread.
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
  // Digit for digit as written, so of any size and precision.
  struct Number {
    std::string digits;
    friend bool operator==(const Number&, const Number&) = default;
  };
  using Array = std::vector<JsonValue>;
  using Object = std::map<std::string, JsonValue, std::less<>>;  // sorted by the bytes of the keys

  // Deepest nesting of arrays and objects that parse() accepts.
  static constexpr int maximumDepth = 64;

  // Texts and keys are bytes, encoded as in JsonText.h. Absent when `json` is not strictly valid
  // JSON or is too deep. Of several values for one key the last one counts.
  static std::optional<JsonValue> parse(std::string_view json);

  // Writes keys in the order of their bytes.
  std::string written(JsonWriter::Form form) const;

  // The value as `Type`; null when it has another type.
  template <class Type>
  const Type* as() const {
    return std::get_if<Type>(&held);
  }

  friend bool operator==(const JsonValue&, const JsonValue&) = default;

  std::variant<Null, bool, Number, std::string, Array, Object> held;
};

}  // namespace tessaly
