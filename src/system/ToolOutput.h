// Reads the output of tools: lines, words and numbers. The text is foreign, so nothing here fails:
// a value that cannot be read is absent. Text is taken as UTF-8; bytes that are not UTF-8 are
// ordinary characters.
//
// Pure functions independent of the locale, safe from any thread. The returned views point into the
// argument.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tessaly::ToolOutput {

// The lines of `text`, empty ones left out. Newlines are the characters 10 to 13, 133 (next line),
// 8232 and 8233 (line and paragraph separator).
std::vector<std::string_view> lines(std::string_view text);

// The words between white space, which is every character with the Unicode property White_Space,
// newlines included.
std::vector<std::string_view> words(std::string_view line);

// `text` without the white space at its ends.
std::string_view trimmed(std::string_view text);

// All of `text` as a whole number: decimal digits after an optional sign. Absent when it is
// anything else, or does not fit.
std::optional<std::int64_t> integer(std::string_view text);

// All of `text` as a number, in decimal ("12", "-.5", "1e3") or hexadecimal ("0x1.8p1") form, after
// an optional sign. Absent when it is anything else, too large for a double, infinite or NaN: such
// a figure cannot be shown, and a value that contains NaN would not even equal itself.
std::optional<double> number(std::string_view text);

}  // namespace tessaly::ToolOutput
