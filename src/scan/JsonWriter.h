// Writes JSON from its beginning to its end. Names and texts are bytes, written as JsonText tells.
// A value per thread; nothing is shared.
//
//   JsonWriter json(JsonWriter::Form::plain);
//   json.beginObject().key("size").integer(7).endObject();
//   std::move(json).finish()  ->  {"size":7}
//
// The caller sees to it that objects consist of keys and values in turn, that all is closed, and
// that there is one value at the top.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

class JsonWriter {
 public:
  enum class Form {
    plain,   // without blanks
    pretty,  // a line a value, each level indented by two blanks, a blank behind colons
  };

  explicit JsonWriter(Form form) : form_(form) {}

  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }
  JsonWriter& key(std::string_view bytes);

  JsonWriter& text(std::string_view bytes);
  JsonWriter& integer(std::int64_t number);
  // JSON has no number for what is not finite: that is written as null.
  JsonWriter& number(double number);
  JsonWriter& boolean(bool value);
  JsonWriter& null();
  // A value that is JSON already, as it stands.
  JsonWriter& raw(std::string_view json);

  // The text; the writer is spent. The pretty form has no line feed at its end.
  std::string finish() &&;

 private:
  JsonWriter& begin(char bracket);
  JsonWriter& end(char bracket);
  void separate();
  void breakLine();

  Form form_;
  std::string json_;
  int depth_ = 0;
  bool isFirst_ = true;   // nothing stands in the innermost brackets yet
  bool isKeyed_ = false;  // a key waits for its value
};

}  // namespace tessaly
