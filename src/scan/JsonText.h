// Bytes as texts of JSON, which must be valid Unicode whatever the bytes are.
//
// Well-formed UTF-8 stands as it is. A byte 0xNN that is not becomes the character U+10FF00 + 0xNN,
// at the far end of a private plane, and so that this stays unambiguous a genuine character of
// U+10FF80 to U+10FFFF is written as its four bytes in the same way. So every string of bytes gives
// valid JSON, and reading gives back the same bytes. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::JsonText {

// Appends `bytes` as it stands between the quotes. "/" and characters beyond ASCII are not escaped.
void appendEscaped(std::string& json, std::string_view bytes);

// The bytes that a text stands for, as a JSON parser hands it over: in UTF-8, with the escapes of
// JSON itself already undone.
std::string bytesOf(std::string_view text);

// Whether bytesOf() may give anything else than the text itself.
bool holdsBytes(std::string_view text);

}  // namespace tessaly::JsonText
