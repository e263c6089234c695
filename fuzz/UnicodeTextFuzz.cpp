#include <cstddef>
#include <string>

#include "Target.h"
#include "platform/UnicodeText.h"

namespace tessaly::fuzz {

namespace {

void requireScalars(std::string_view text) {
  std::string lower;
  std::string folded;
  bool isUtf8 = true;
  std::uint64_t sum = 0;
  for (std::string_view rest = text; !rest.empty();) {
    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(rest);
    require(scalar.length >= 1 && scalar.length <= 4 && scalar.length <= rest.size(),
            "a scalar takes bytes that are there");
    require(scalar.isText || (scalar.length == 1 && scalar.value == 0xFFFD),
            "what is no text is one byte");
    require(scalar.value <= 0x10FFFF && (scalar.value < 0xD800 || scalar.value > 0xDFFF),
            "a scalar is one of Unicode");
    lower += UnicodeText::lowercased(rest.substr(0, scalar.length));
    folded += UnicodeText::foldedForSearch(rest.substr(0, scalar.length));
    isUtf8 = isUtf8 && scalar.isText;
    sum += scalar.value;
    rest.remove_prefix(scalar.length);
  }
  require(UnicodeText::lowercased(text) == lower, "characters are lowered one by one");
  require(UnicodeText::foldedForSearch(text) == folded, "characters are folded one by one");
  require(UnicodeText::isUtf8(text) == isUtf8, "a text of characters is UTF-8");
  require(UnicodeText::scalarSum(text) == sum, "the sum is that of the scalars");
}

void requireGraphemes(std::string_view text) {
  std::size_t count = 0;
  std::size_t length = 0;
  for (std::string_view rest = text; !rest.empty(); ++count) {
    const std::string_view grapheme = UnicodeText::firstGraphemes(rest, 1);
    require(!grapheme.empty() && grapheme.data() == rest.data() && grapheme.size() <= rest.size(),
            "a grapheme is the beginning of what is left");
    length += grapheme.size();
    rest.remove_prefix(grapheme.size());
    require(UnicodeText::firstGraphemes(text, count + 1).size() == length,
            "some graphemes are as many times the first one");
    if (count == 64) return;
  }
  require(UnicodeText::graphemeCount(text) == count, "graphemes are counted");
}

}  // namespace

void tryInput(std::string_view input) {
  requireScalars(input);
  requireGraphemes(input);
}

}  // namespace tessaly::fuzz
