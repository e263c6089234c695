#include <simdjson.h>
#include <string>

#include "Target.h"
#include "platform/UnicodeText.h"
#include "scan/JsonText.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  std::string json = "\"";
  JsonText::appendEscaped(json, input);
  json += '"';
  for (std::string_view rest = json; !rest.empty();) {
    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(rest);
    require(scalar.isText && scalar.value >= 0x20, "what is written is valid text");
    rest.remove_prefix(scalar.length);
  }

  simdjson::dom::parser parser;
  std::string_view read;
  require(parser.parse(json).get(read) == simdjson::SUCCESS, "what is written is valid JSON");
  require(JsonText::bytesOf(read) == input, "bytes come back as they were");

  // A file may contain any text.
  const std::string bytes = JsonText::bytesOf(input);
  require(bytes.size() <= input.size(), "what a text stands for is no longer than it");
  if (!JsonText::holdsBytes(input)) require(bytes == input, "most texts stand for themselves");
}

}  // namespace tessaly::fuzz
