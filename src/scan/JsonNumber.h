// Numbers in the syntax of JSON, independent of the locale. Pure, safe from any thread.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::JsonNumber {

void appendInteger(std::string& json, std::int64_t number);

// Appends the shortest text that reads back as the same number, without ".0" for whole ones.
// `number` must be finite.
void appendDouble(std::string& json, double number);

}  // namespace tessaly::JsonNumber
