// What the table of df means, for those who read it: a header, then a row a volume with its device,
// three sizes in kibibytes and a percentage. Pure functions, safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessaly::DfTable {

// Whether `line` is the header. Only one in English is known by its words; in another language it
// is told from a row by its second word, which is no number.
bool isHeader(std::string_view line);

// The text of a size in bytes; absent when it is no whole number, or does not fit. Sizes are
// checked everywhere, and what a tool prints must not end the program.
std::optional<std::int64_t> bytes(std::string_view kibibytes);

// The number that is left of "36%" without its signs; 0 when none is, as for the "-" of a volume
// without blocks.
double percent(std::string_view text);

}  // namespace tessaly::DfTable
