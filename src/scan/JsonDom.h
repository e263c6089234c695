// What the readers of our own files share: they are parsed whole, and every value is asked for by
// its exact type, so that a file which is wrong anywhere counts for nothing.
#pragma once

#include <optional>
#include <simdjson.h>
#include <string_view>

namespace tessaly::JsonDom {

// Whether `json` is JSON to the letter; `top` then lives as long as the parser.
inline bool parse(simdjson::dom::parser& parser, std::string_view json,
                  simdjson::dom::element& top) {
  // Some versions of the parser pass over this mark, others do not.
  if (json.starts_with("\xEF\xBB\xBF")) return false;
  return parser.parse(json.data(), json.size()).get(top) == simdjson::SUCCESS;
}

// Sets `value` where the element is of its type. A 64-bit integer is read from a number without
// fraction and exponent only, a double from any.
template <class Value>
bool read(const simdjson::dom::element& element, std::optional<Value>& value) {
  Value found;
  if (element.get(found) != simdjson::SUCCESS) return false;
  value = found;
  return true;
}

}  // namespace tessaly::JsonDom
