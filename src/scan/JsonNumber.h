// Numbers as JSON has them, whatever the locale. Pure, safe from any thread.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::JsonNumber {

void appendInteger(std::string& json, std::int64_t number);

// The shortest text that reads back as the same number, without ".0" where it is whole. `number`
// must be finite.
void appendDouble(std::string& json, double number);

}  // namespace tessaly::JsonNumber
