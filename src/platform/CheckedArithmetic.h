// Sums and products of sizes, in checked 64-bit arithmetic. After an overflow the figures would be
// wrong, so it ends the program with a message. Safe from any thread.
#pragma once

#include <cstdint>

namespace tessaly {

[[noreturn]] void overflowed(const char* operation, std::int64_t a, std::int64_t b);

inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) overflowed("+", a, b);
  return sum;
}

inline std::int64_t checkedMul(std::int64_t a, std::int64_t b) {
  std::int64_t product = 0;
  if (__builtin_mul_overflow(a, b, &product)) overflowed("*", a, b);
  return product;
}

}  // namespace tessaly
