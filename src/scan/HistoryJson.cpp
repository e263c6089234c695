#include "scan/HistoryJson.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "scan/JsonDom.h"
#include "scan/JsonWriter.h"

namespace tessaly::HistoryJson {

namespace {

bool readPoint(const simdjson::dom::element& element, HistoryPoint& point) {
  constexpr double timesEnd = 9007199254740992.0;
  simdjson::dom::object fields;
  if (element.get(fields) != simdjson::SUCCESS) return false;
  std::optional<double> at;
  std::optional<std::int64_t> bytes;
  std::optional<std::int64_t> files;
  for (const simdjson::dom::key_value_pair field : fields) {
    const bool isRead = field.key == "at"      ? JsonDom::read(field.value, at)
                        : field.key == "bytes" ? JsonDom::read(field.value, bytes)
                        : field.key == "files" ? JsonDom::read(field.value, files)
                                               : true;
    if (!isRead) return false;
  }
  if (!at || !bytes || !files) return false;
  if (std::fabs(*at) >= timesEnd || *bytes < 0 || *files < 0) return false;
  point = {.at = *at, .bytes = *bytes, .files = *files};
  return true;
}

}  // namespace

std::string encode(const std::vector<HistoryPoint>& points) {
  JsonWriter json(JsonWriter::Form::plain);
  json.beginArray();
  for (const HistoryPoint& point : points) {
    if (!std::isfinite(point.at)) continue;
    json.beginObject();
    json.key("at").number(point.at);
    json.key("bytes").integer(point.bytes);
    json.key("files").integer(point.files);
    json.endObject();
  }
  json.endArray();
  return std::move(json).finish();
}

std::optional<std::vector<HistoryPoint>> decode(std::string_view json) {
  simdjson::dom::parser parser;
  simdjson::dom::element top;
  simdjson::dom::array elements;
  if (!JsonDom::parse(parser, json, top) || top.get(elements) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  std::vector<HistoryPoint> points;
  for (const simdjson::dom::element element : elements) {
    if (!readPoint(element, points.emplace_back())) return std::nullopt;
  }
  return points;
}

}  // namespace tessaly::HistoryJson
