// The words of macOS that must not be shown on another system.
#pragma once

#include <array>
#include <cctype>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tessaly {

inline constexpr std::array<std::string_view, 12> wordsOfMacos = {"macOS",
                                                                  "Mac",
                                                                  "Finder",
                                                                  "APFS",
                                                                  "Macintosh HD",
                                                                  "Full Disk Access",
                                                                  "iCloud",
                                                                  "Time Machine",
                                                                  "Vision",
                                                                  "System Settings",
                                                                  "⌘",
                                                                  "menu bar"};

namespace detail {

inline bool isLetter(char byte) {
  return std::isalpha(static_cast<unsigned char>(byte)) != 0;
}

// Whether `text` has `word` at `place`, in any case, and not as a part of a longer word.
inline bool standsAt(std::string_view text, std::size_t place, std::string_view word) {
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(text[place + i])) !=
        std::tolower(static_cast<unsigned char>(word[i])))
      return false;
  }
  const std::size_t end = place + word.size();
  const bool endsLonger = isLetter(word.back()) && end < text.size() && isLetter(text[end]);
  return !endsLonger && !(isLetter(word.front()) && place > 0 && isLetter(text[place - 1]));
}

}  // namespace detail

// The first of wordsOfMacos in `text`; absent if there is none.
inline std::optional<std::string_view> wordOfMacosIn(std::string_view text) {
  for (const std::string_view word : wordsOfMacos) {
    for (std::size_t place = 0; place + word.size() <= text.size(); ++place) {
      if (detail::standsAt(text, place, word)) return word;
    }
  }
  return std::nullopt;
}

}  // namespace tessaly
