#include "app/preview/TextDecoding.h"

#include <algorithm>
#include <utility>

#include <QString>
#include <QStringDecoder>

#include "platform/UnicodeText.h"

namespace tessaly::TextDecoding {

namespace {

// Invalid bytes, and the character that is shown for them.
constexpr char32_t noCharacter = 0xFFFFFFFF;
constexpr char32_t replacement = 0xFFFD;

// One character of an encoding, and its number of bytes; 0 if the rest is an incomplete character.
struct Step {
  char32_t value = noCharacter;
  std::size_t length = 0;
};
using Decode = Step (*)(std::string_view rest);

// The length of a UTF-8 character by its first byte.
std::size_t lengthByLead(unsigned char lead) {
  if (lead >= 0xF0) return lead <= 0xF4 ? 4 : 1;
  if (lead >= 0xE0) return 3;
  return lead >= 0xC2 ? 2 : 1;
}

Step utf8(std::string_view rest) {
  const UnicodeText::Scalar scalar = UnicodeText::firstScalar(rest);
  if (!scalar.isText && lengthByLead(static_cast<unsigned char>(rest[0])) > rest.size() &&
      std::all_of(rest.begin() + 1, rest.end(), [](char c) { return (c & 0xC0) == 0x80; })) {
    return {.value = noCharacter, .length = 0};
  }
  return {.value = scalar.isText ? scalar.value : noCharacter, .length = scalar.length};
}

// The characters of Windows-1252 that are control characters in Latin-1; 0 for unassigned ones.
Step windows1252(std::string_view rest) {
  constexpr char16_t extra[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                  0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
  const auto byte = static_cast<unsigned char>(rest[0]);
  const bool isExtra = byte >= 0x80 && byte < 0xA0;
  return {.value = !isExtra                  ? byte
                   : extra[byte - 0x80] != 0 ? extra[byte - 0x80]
                                             : noCharacter,
          .length = 1};
}

// Invalid bytes, and a character cut off by the end of the file, are noCharacter.
std::u32string charactersOf(std::string_view bytes, bool isWholeFile, Decode decode) {
  std::u32string characters;
  while (!bytes.empty()) {
    const Step step = decode(bytes);
    if (step.length == 0) {
      if (isWholeFile) characters += noCharacter;
      break;
    }
    characters += step.value;
    bytes.remove_prefix(step.length);
  }
  return characters;
}

// The same for bytes with a byte-order mark of this encoding.
std::u32string markedCharactersOf(std::string_view bytes, bool isWholeFile,
                                  QStringConverter::Encoding encoding) {
  using Flag = QStringConverter::Flag;
  // A decoder with a state holds back an incomplete character at the end.
  QStringDecoder decoder(encoding, isWholeFile ? Flag::Stateless : Flag::Default);
  QString text = decoder.decode(bytes);
  if (!isWholeFile && !text.isEmpty() && text.back().isHighSurrogate()) text.chop(1);
  std::u32string characters = text.toStdU32String();
  std::ranges::replace(characters, replacement, noCharacter);
  return characters;
}

bool isControl(char32_t value) {
  return value < 0x20 || (value >= 0x7F && value < 0xA0);
}

// The control characters of texts: white space and terminal codes.
bool isUsualControl(char32_t value) {
  return (value >= '\b' && value <= '\r') || value == 0x1B || value == 0x85;
}

bool isNoncharacter(char32_t value) {
  return (value >= 0xFDD0 && value <= 0xFDEF) || (value & 0xFFFE) == 0xFFFE;
}

struct Census {
  std::size_t characters = 0;
  std::size_t errors = 0;    // invalid bytes
  std::size_t controls = 0;  // unusual control characters
  std::size_t beyond = 0;    // characters outside ASCII
};

Census censusOf(std::u32string_view characters) {
  Census census{.characters = characters.size()};
  for (const char32_t character : characters) {
    if (character == noCharacter) {
      ++census.errors;
    } else if (isControl(character) || isNoncharacter(character)) {
      if (!isUsualControl(character)) ++census.controls;
    } else if (character > 0x7F) {
      ++census.beyond;
    }
  }
  return census;
}

// Absent if the bytes are not a text.
std::optional<std::u32string> unmarked(std::string_view bytes, bool isWholeFile) {
  if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
  std::u32string characters = charactersOf(bytes, isWholeFile, utf8);
  const Census unicode = censusOf(characters);
  // A few errors do not make UTF-8 another encoding.
  if (unicode.errors == 0 || unicode.errors * 4 <= unicode.beyond) {
    if (unicode.controls * 10 > unicode.characters) return std::nullopt;
    return characters;
  }
  characters = charactersOf(bytes, isWholeFile, windows1252);
  const Census western = censusOf(characters);
  const bool isText = (western.errors + western.controls) * 50 <= western.characters &&
                      western.beyond * 2 <= western.characters;
  if (!isText) return std::nullopt;
  return characters;
}

std::optional<std::u32string> charactersOf(std::string_view bytes, bool isWholeFile) {
  const auto encoding = QStringConverter::encodingForData(bytes);
  if (!encoding) return unmarked(bytes, isWholeFile);
  std::u32string characters = markedCharactersOf(bytes, isWholeFile, *encoding);
  const Census census = censusOf(characters);
  // Other files may begin with these bytes by chance.
  if ((census.errors + census.controls) * 10 > census.characters) return std::nullopt;
  return characters;
}

// Splits characters into lines.
class Lines {
 public:
  Lines(const Limits& limits, std::size_t expected) : limits_(limits) { units_.reserve(expected); }

  // Returns false, and adds nothing, if there are enough lines.
  bool add(char32_t value) {
    const bool isSecondHalf = value == '\n' && wasReturn_;
    wasReturn_ = value == '\r';
    if (isSecondHalf) return true;
    if (value == '\n' || value == '\r' || value == 0x85 || value == 0x2028 || value == 0x2029) {
      return endLine();
    }
    value = shown(value);
    const std::size_t length = value > 0xFFFF ? 2 : 1;
    if (inLine_ + length > limits_.lineLength && !endLine()) return false;
    if (lines_ >= limits_.lines) return false;
    put(value);
    inLine_ += length;
    return true;
  }

  std::u16string take() { return std::move(units_); }

 private:
  static char32_t shown(char32_t value) {
    if (value == '\t') return value;
    if (value < 0x20) return 0x2400 + value;
    if (value == 0x7F) return 0x2421;
    return isControl(value) || value == noCharacter || isNoncharacter(value) ? replacement : value;
  }

  bool endLine() {
    if (lines_ >= limits_.lines) return false;
    units_ += u'\n';
    ++lines_;
    inLine_ = 0;
    return true;
  }

  void put(char32_t value) {
    if (value > 0xFFFF) {
      units_ += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10U));
      units_ += static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FFU));
    } else {
      units_ += static_cast<char16_t>(value);
    }
  }

  const Limits& limits_;
  std::u16string units_;
  std::size_t lines_ = 0;   // complete lines
  std::size_t inLine_ = 0;  // units in the current line
  bool wasReturn_ = false;
};

}  // namespace

std::optional<Text> decoded(std::string_view bytes, bool isWholeFile, const Limits& limits) {
  const std::optional<std::u32string> characters = charactersOf(bytes, isWholeFile);
  if (!characters) return std::nullopt;
  Lines lines(limits, characters->size());
  const bool isAllTaken =
      std::ranges::all_of(*characters, [&](char32_t character) { return lines.add(character); });
  return Text{.units = lines.take(), .isWhole = isWholeFile && isAllTaken};
}

}  // namespace tessaly::TextDecoding
