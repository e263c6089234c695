// Base64 as in RFC 4648, section 4. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly::Base64 {

std::string encode(std::string_view bytes);

// Decodes what encode() wrote. Absent for any other text, such as one with blanks or without its
// padding.
std::optional<std::string> decode(std::string_view text);

}  // namespace tessaly::Base64
