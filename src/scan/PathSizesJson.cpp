#include "scan/PathSizesJson.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "scan/JsonDom.h"
#include "scan/JsonText.h"
#include "scan/JsonWriter.h"

namespace tessaly::PathSizesJson {

std::string encode(const PathSizes& sizes) {
  std::vector<const PathSizes::value_type*> ordered;
  ordered.reserve(sizes.size());
  for (const PathSizes::value_type& entry : sizes) ordered.push_back(&entry);
  std::sort(ordered.begin(), ordered.end(),
            [](const auto* a, const auto* b) { return a->first < b->first; });
  JsonWriter json(JsonWriter::Form::plain);
  json.beginObject();
  for (const PathSizes::value_type* entry : ordered) {
    json.key(entry->first).integer(entry->second);
  }
  json.endObject();
  return std::move(json).finish();
}

std::optional<PathSizes> decode(std::string_view json) {
  simdjson::dom::parser parser;
  simdjson::dom::element top;
  simdjson::dom::object fields;
  if (!JsonDom::parse(parser, json, top) || top.get(fields) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  PathSizes sizes;
  sizes.reserve(fields.size());
  std::int64_t total = 0;
  for (const simdjson::dom::key_value_pair field : fields) {
    std::optional<std::int64_t> size;
    if (!JsonDom::read(field.value, size) || *size < 0) return std::nullopt;
    if (__builtin_add_overflow(total, *size, &total)) return std::nullopt;
    sizes.insert_or_assign(JsonText::bytesOf(field.key), *size);
  }
  return sizes;
}

}  // namespace tessaly::PathSizesJson
