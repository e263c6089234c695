// SHA-256 (FIPS 180-4) of a sequence of bytes that comes in parts.
//
// Use an object on one thread at a time; different objects are independent.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace tessaly {

class Sha256 {
 public:
  Sha256();
  Sha256(Sha256&&) noexcept;
  Sha256& operator=(Sha256&&) noexcept;
  ~Sha256();

  void add(std::span<const char> bytes);
  // The same as this many bytes 0, which need not exist.
  void addZeros(std::size_t count);

  // The digest as 64 hexadecimal digits in lower case; absent if the system's library has failed,
  // for example without memory. Must be called once, after the last part.
  std::optional<std::string> finish();

 private:
  struct State;

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
