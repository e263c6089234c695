#include "scan/JsonWriter.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "scan/JsonNumber.h"
#include "scan/JsonText.h"

namespace tessaly {

JsonWriter& JsonWriter::key(std::string_view bytes) {
  text(bytes);
  json_ += form_ == Form::pretty ? ": " : ":";
  isKeyed_ = true;
  return *this;
}

JsonWriter& JsonWriter::text(std::string_view bytes) {
  separate();
  json_ += '"';
  JsonText::appendEscaped(json_, bytes);
  json_ += '"';
  return *this;
}

JsonWriter& JsonWriter::integer(std::int64_t number) {
  separate();
  JsonNumber::appendInteger(json_, number);
  return *this;
}

JsonWriter& JsonWriter::number(double number) {
  if (!std::isfinite(number)) return null();
  separate();
  JsonNumber::appendDouble(json_, number);
  return *this;
}

JsonWriter& JsonWriter::boolean(bool value) {
  return raw(value ? "true" : "false");
}

JsonWriter& JsonWriter::null() {
  return raw("null");
}

JsonWriter& JsonWriter::raw(std::string_view json) {
  separate();
  json_ += json;
  return *this;
}

std::string JsonWriter::finish() && {
  return std::move(json_);
}

JsonWriter& JsonWriter::begin(char bracket) {
  separate();
  json_ += bracket;
  ++depth_;
  isFirst_ = true;
  return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
  --depth_;
  if (!isFirst_) breakLine();
  isFirst_ = false;
  json_ += bracket;
  return *this;
}

// Writes the separator between a value or key and the text before it.
void JsonWriter::separate() {
  if (std::exchange(isKeyed_, false)) return;
  if (!std::exchange(isFirst_, false)) json_ += ',';
  if (depth_ > 0) breakLine();
}

void JsonWriter::breakLine() {
  if (form_ == Form::plain) return;
  json_ += '\n';
  json_.append(static_cast<std::size_t>(depth_) * 2, ' ');
}

}  // namespace tessaly
