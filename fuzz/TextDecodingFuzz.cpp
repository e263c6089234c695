#include <cstddef>
#include <string>

#include "Target.h"
#include "app/preview/TextDecoding.h"

namespace tessaly::fuzz {

namespace {

bool isHigh(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool isLow(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

void requireHarmless(const std::u16string& units, const TextDecoding::Limits& limits) {
  std::size_t lines = 0;
  std::size_t inLine = 0;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    require(unit != u'\r' && unit != 0x2028 && unit != 0x2029, "lines end in a line feed");
    require(unit == u'\n' || unit == u'\t' || (unit >= 0x20 && unit < 0x7F) || unit >= 0xA0,
            "control characters are shown as something else");
    require((unit & 0xFFFE) != 0xFFFE && !(unit >= 0xFDD0 && unit <= 0xFDEF),
            "what is no character is shown as something else");
    require(!isHigh(unit) || (i + 1 < units.size() && isLow(units[i + 1])), "pairs are whole");
    require(!isLow(unit) || (i > 0 && isHigh(units[i - 1])), "pairs are whole");
    inLine = unit == u'\n' ? 0 : inLine + 1;
    lines += unit == u'\n' ? 1 : 0;
    require(inLine <= limits.lineLength, "lines are no longer than the limit");
  }
  require(lines + (inLine > 0 ? 1 : 0) <= limits.lines, "there are no more lines than the limit");
}

void requireText(std::string_view input, bool isWholeFile, const TextDecoding::Limits& limits) {
  const auto text = TextDecoding::decoded(input, isWholeFile, limits);
  if (!text) return;
  require(isWholeFile || !text->isWhole, "a part is never the whole");
  requireHarmless(text->units, limits);
}

}  // namespace

void tryInput(std::string_view input) {
  for (const bool isWholeFile : {false, true}) {
    requireText(input, isWholeFile, {});
    requireText(input, isWholeFile, {.lines = 3, .lineLength = 5});
  }
}

}  // namespace tessaly::fuzz
