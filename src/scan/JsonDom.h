// Shared by the readers of the program's own files: a file is parsed as a whole, and each value
// must have its exact type, so one error anywhere makes the whole file invalid.
#pragma once

#include <optional>
#include <simdjson.h>
#include <string_view>

namespace tessaly::JsonDom {

// Whether `json` is strictly valid JSON; `top` is then valid as long as the parser.
inline bool parse(simdjson::dom::parser& parser, std::string_view json,
                  simdjson::dom::element& top) {
  // Some versions of the parser skip a byte order mark, others do not.
  if (json.starts_with("\xEF\xBB\xBF")) return false;
  return parser.parse(json.data(), json.size()).get(top) == simdjson::SUCCESS;
}

// Sets `value` if the element has its type. A 64-bit integer is read only from a number without
// fraction and exponent, a double from any number.
template <class Value>
bool read(const simdjson::dom::element& element, std::optional<Value>& value) {
  Value found;
  if (element.get(found) != simdjson::SUCCESS) return false;
  value = found;
  return true;
}

}  // namespace tessaly::JsonDom
