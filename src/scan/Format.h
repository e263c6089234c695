// Numbers as texts. Independent of the locale. Pure, safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::Format {

// A count of bytes in the largest unit that fits, in steps of 1024 up to "PB": "1023 B", "1.0 KB".
// Counts below 1 give "0 B".
std::string bytes(std::int64_t count);

// Bytes per second, up to "GB/s": "512 B/s", "1.0 KB/s". NaN and values of 0 or below give "0 B/s".
std::string rate(double bytesPerSecond);

// `value` with this many digits after the point. The exact value is rounded, ties to the even
// digit.
std::string fixed(double value, int decimals);

// A count with its noun: "1 item", "2 items", "0 items".
std::string counted(std::size_t count, std::string_view noun);

}  // namespace tessaly::Format
