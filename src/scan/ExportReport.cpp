#include "scan/ExportReport.h"

#include <cmath>
#include <utility>

#include "scan/JsonWriter.h"

namespace tessaly::ExportReport {

namespace {

void write(JsonWriter& json, const DiskNode& node) {
  json.beginObject();
  json.key("children").beginArray();
  // Recurses no deeper than DiskNodeJson::maximumDepth, the limit of every tree.
  for (const DiskNode& child : node.children()) write(json, child);
  json.endArray();
  json.key("isDir").boolean(node.isDir());
  json.key("kind").text(rawText(node.kind()));
  if (node.mtime() && std::isfinite(*node.mtime())) json.key("mtime").number(*node.mtime());
  json.key("name").text(node.name());
  json.key("path").text(node.path());
  json.key("size").integer(node.size());
  json.endObject();
}

}  // namespace

std::string json(const DiskNode& from) {
  JsonWriter json(JsonWriter::Form::pretty);
  write(json, from);
  return std::move(json).finish() + "\n";
}

}  // namespace tessaly::ExportReport
