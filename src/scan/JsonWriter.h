// Writes JSON from beginning to end. Names and texts are bytes, encoded as in JsonText.h. Each
// thread may use a writer of its own; nothing is shared.
//
//     JsonWriter json(JsonWriter::Form::plain);
//     json.beginObject().key("size").integer(7).endObject();
//     std::move(json).finish()  ->  {"size":7}
//
// The caller must alternate keys and values in objects, close everything, and write exactly one
// value at the top.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

class JsonWriter {
 public:
  enum class Form {
    plain,   // without blanks
    pretty,  // one value per line, each level indented by two blanks, a blank after colons
  };

  explicit JsonWriter(Form form) : form_(form) {}

  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }
  JsonWriter& key(std::string_view bytes);

  JsonWriter& text(std::string_view bytes);
  JsonWriter& integer(std::int64_t number);
  // A number that is not finite is written as null, since JSON has none.
  JsonWriter& number(double number);
  JsonWriter& boolean(bool value);
  JsonWriter& null();
  // Writes a value that is already JSON, unchanged.
  JsonWriter& raw(std::string_view json);

  // Returns the text; the writer cannot be used afterwards. The pretty form has no line feed at its
  // end.
  std::string finish() &&;

 private:
  JsonWriter& begin(char bracket);
  JsonWriter& end(char bracket);
  void separate();
  void breakLine();

  Form form_;
  std::string json_;
  int depth_ = 0;
  bool isFirst_ = true;   // nothing has been written in the innermost brackets yet
  bool isKeyed_ = false;  // a key has been written whose value is still missing
};

}  // namespace tessaly
