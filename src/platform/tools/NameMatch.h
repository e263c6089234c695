// Looks for a text in names; case and accents make no difference. Immutable; safe from any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::tools {

class NameMatch {
 public:
  enum class Place : std::uint8_t { nowhere, inside, start };

  // `text` must have something left in the form for a search (UnicodeText::foldedForSearch).
  explicit NameMatch(std::string_view text);

  // Where `name` contains the text.
  Place in(std::string_view name) const;

 private:
  Place inAscii(std::string_view name) const;

  std::string folded_;
  bool isAscii_;
};

}  // namespace tessaly::tools
