// Reading what a tool printed: lines, words and numbers. The text is foreign, so nothing here
// fails: what cannot be read is absent. Text is taken as UTF-8; bytes that are not stand for
// themselves.
//
// Pure functions without locale, safe from any thread. The views they return lie in their argument.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tessaly::ToolOutput {

// What stands between newlines, empty lines left out. Newlines are the characters of code 10 to 13,
// 133 (next line), 8232 and 8233 (line and paragraph separator).
std::vector<std::string_view> lines(std::string_view text);

// What stands between white space, which is every character that Unicode gives the property
// White_Space. Newlines are among them.
std::vector<std::string_view> words(std::string_view line);

// `text` without the white space at its ends.
std::string_view trimmed(std::string_view text);

// All of `text` as a whole number: decimal digits, which may follow a sign. Absent when it is
// anything else, or does not fit.
std::optional<std::int64_t> integer(std::string_view text);

// All of `text` as a number, in decimal ("12", "-.5", "1e3") or hexadecimal ("0x1.8p1") form, which
// may follow a sign. Absent when it is anything else, when it is beyond what a double holds, and
// when it is infinite or not a number: such a figure cannot be shown, and a value that
// holds it would not even equal itself.
std::optional<double> number(std::string_view text);

}  // namespace tessaly::ToolOutput
