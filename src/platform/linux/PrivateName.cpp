#include "platform/linux/PrivateName.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <random>
#include <unistd.h>

namespace tessaly::PrivateName {

namespace {

constexpr std::string_view start = ".tessaly-";
constexpr std::string_view startOfNote = ".tessaly-place-";
constexpr std::size_t digitsByChance = 16;

std::string digits() {
  std::random_device device;
  std::array<char, digitsByChance + 1> text{};
  std::snprintf(text.data(), text.size(), "%08x%08x", device(), device());
  return text.data();
}

bool areDigitsByChance(std::string_view text) {
  return text.size() == digitsByChance && std::ranges::all_of(text, [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
         });
}

bool isNumber(std::string_view text) {
  constexpr std::size_t most = 10;  // digits of a 32-bit number
  return !text.empty() && text.size() <= most && text.front() != '0' &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// `name` without `beginning`; empty if it begins differently.
std::string_view behind(std::string_view beginning, std::string_view name) {
  return name.starts_with(beginning) ? name.substr(beginning.size()) : std::string_view();
}

}  // namespace

std::string ofFile() {
  static std::atomic<unsigned> counter = 0;
  return std::string(start) + std::to_string(::getpid()) + "-" + std::to_string(++counter);
}

std::string ofFolder() {
  return std::string(start) + digits();
}

std::string ofNote() {
  return std::string(startOfNote) + digits();
}

bool isOfFile(std::string_view name) {
  const std::string_view numbers = behind(start, name);
  const std::size_t dash = numbers.find('-');
  return dash != std::string_view::npos && isNumber(numbers.substr(0, dash)) &&
         isNumber(numbers.substr(dash + 1));
}

bool isOfFolder(std::string_view name) {
  return areDigitsByChance(behind(start, name));
}

bool isOfNote(std::string_view name) {
  return areDigitsByChance(behind(startOfNote, name));
}

bool isInFolder(std::string_view name) {
  const std::string_view own = inFolder;
  if (name.starts_with(own)) return name.size() == own.size() || name[own.size()] == '.';
  constexpr std::string_view startOfZips = "zi";
  constexpr std::size_t lengthOfZips = 8;
  return name.size() == lengthOfZips && name.starts_with(startOfZips) &&
         std::ranges::all_of(name, [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

}  // namespace tessaly::PrivateName
