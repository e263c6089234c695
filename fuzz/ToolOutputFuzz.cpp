#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "Target.h"
#include "platform/UnicodeText.h"
#include "system/ToolOutput.h"

namespace tessaly::fuzz {

namespace {

using Pieces = std::vector<std::string_view>;

// Checks that `pieces` are the parts of `text` by `split`: in order, none empty, and with only
// separators between them.
void requireParted(std::string_view text, const Pieces& pieces, Pieces (*split)(std::string_view)) {
  const char* position = text.data();
  const auto requireSeparators = [&](const char* end) {
    require(position <= end, "pieces follow each other");
    require(split({position, static_cast<std::size_t>(end - position)}).empty(),
            "between pieces there are separators alone");
  };
  for (const std::string_view piece : pieces) {
    require(!piece.empty(), "no piece is empty");
    requireSeparators(piece.data());
    require(split(piece) == Pieces{piece}, "a piece has no separators");
    position = piece.data() + piece.size();
  }
  requireSeparators(text.data() + text.size());
}

// The C library reads the same numbers, but also skips white space and stops at a NUL.
bool mayBeNumber(const std::string& text) {
  return !text.empty() && text.find('\0') == std::string::npos &&
         std::string_view(" \t\n\v\f\r").find(text[0]) == std::string_view::npos;
}

void tryInteger(const std::string& text) {
  errno = 0;
  char* end = nullptr;
  const long long expected = std::strtoll(text.c_str(), &end, 10);
  const bool isInteger =
      mayBeNumber(text) && end == text.c_str() + text.size() && end != text.c_str() && errno == 0;
  const std::optional<std::int64_t> integer = ToolOutput::integer(text);
  require(integer.has_value() == isInteger, "an integer is what the C library says");
  if (integer) require(*integer == expected, "an integer has the value that the C library says");
}

void tryNumber(const std::string& text) {
  char* end = nullptr;
  const double expected = std::strtod(text.c_str(), &end);
  const bool isWhole =
      mayBeNumber(text) && end == text.c_str() + text.size() && end != text.c_str();
  const std::optional<double> number = ToolOutput::number(text);
  if (number) {
    require(isWhole, "a number is one for the C library too");
    require(*number == expected, "a number has the value that the C library says");
  } else if (isWhole) {
    require(!std::isfinite(expected) || std::fabs(expected) < 1e-300,
            "only what a double cannot hold is refused");
  }
}

}  // namespace

void tryInput(std::string_view input) {
  requireParted(input, ToolOutput::lines(input), ToolOutput::lines);
  const Pieces words = ToolOutput::words(input);
  requireParted(input, words, ToolOutput::words);
  const std::string_view trimmed = ToolOutput::trimmed(input);
  require(ToolOutput::words(trimmed) == words, "trimming keeps the words");
  require(words.empty() ? trimmed.empty()
                        : trimmed.starts_with(words.front()) && trimmed.ends_with(words.back()),
          "trimmed text has no white space at its ends");
  for (const std::string_view word : words) {
    tryInteger(std::string(word));
    tryNumber(std::string(word));
  }
  tryInteger(std::string(input));
  tryNumber(std::string(input));
}

}  // namespace tessaly::fuzz
