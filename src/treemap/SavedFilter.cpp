#include "treemap/SavedFilter.h"

#include <utility>

#include "scan/JsonValue.h"
#include "scan/JsonWriter.h"

namespace tessaly {

namespace {

// The member under `key` if it has this type, else null.
template <class Type>
const Type* member(const JsonValue::Object& object, std::string_view key) {
  const auto found = object.find(key);
  return found == object.end() ? nullptr : found->second.as<Type>();
}

}  // namespace

std::string SavedFilter::encode(const std::vector<SavedFilter>& filters) {
  JsonWriter json(JsonWriter::Form::plain);
  json.beginArray();
  for (const SavedFilter& filter : filters) {
    json.beginObject();
    json.key("id").text(filter.id);
    json.key("enabled").boolean(filter.enabled);
    json.key("skipScan").boolean(filter.skipScan);
    json.endObject();
  }
  json.endArray();
  return std::move(json).finish();
}

std::optional<std::vector<SavedFilter>> SavedFilter::decode(std::string_view json) {
  const std::optional<JsonValue> top = JsonValue::parse(json);
  const auto* array = top ? top->as<JsonValue::Array>() : nullptr;
  if (array == nullptr) return std::nullopt;
  std::vector<SavedFilter> filters;
  for (const JsonValue& element : *array) {
    const auto* object = element.as<JsonValue::Object>();
    if (object == nullptr) return std::nullopt;
    const auto* id = member<std::string>(*object, "id");
    const auto* enabled = member<bool>(*object, "enabled");
    const auto* skipScan = member<bool>(*object, "skipScan");
    if (id == nullptr || enabled == nullptr || skipScan == nullptr) return std::nullopt;
    filters.push_back({*id, *enabled, *skipScan});
  }
  return filters;
}

}  // namespace tessaly
