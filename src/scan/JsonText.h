// Bytes as texts of JSON, which must be valid Unicode whatever the bytes are.
//
// Well-formed UTF-8 is written as it is. A byte 0xNN that is not well-formed becomes the character
// U+10FF00 + 0xNN, at the end of a private plane; to keep this unambiguous, a genuine character of
// U+10FF80 to U+10FFFF is written as its four bytes in the same way. So every string of bytes gives
// valid JSON, and reading gives back the same bytes. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::JsonText {

// Appends `bytes` in the form between the quotes. "/" and characters beyond ASCII are not escaped.
void appendEscaped(std::string& json, std::string_view bytes);

// The bytes that a text stands for. `text` is UTF-8 from a JSON parser, which has already undone
// the escapes of JSON.
std::string bytesOf(std::string_view text);

// Whether bytesOf() may differ from the text itself.
bool holdsBytes(std::string_view text);

}  // namespace tessaly::JsonText
