// Bytes as text of 64 characters, by RFC 4648, section 4. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly::Base64 {

std::string encode(std::string_view bytes);

// The bytes that were encoded; absent for any text that encode() does not give, such as one with
// blanks in it or without its padding.
std::optional<std::string> decode(std::string_view text);

}  // namespace tessaly::Base64
