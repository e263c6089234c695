// The meaning of df's table: a header, then one row per volume with its device, three sizes in
// kibibytes and a percentage. Pure functions, safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessaly::DfTable {

// Whether `line` begins like the English header. A header in another language is not recognised
// here: callers find that its second word is not a number.
bool isHeader(std::string_view line);

// The bytes of a size in kibibytes; absent when it is not a whole number, or does not fit. Sizes
// are always checked: the output of a tool must not end the program.
std::optional<std::int64_t> bytes(std::string_view kibibytes);

// The number in "36%", without its signs; 0 when there is none, as in the "-" of a volume without
// blocks.
double percent(std::string_view text);

}  // namespace tessaly::DfTable
