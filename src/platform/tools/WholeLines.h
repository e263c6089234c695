// What a tool prints, in whole lines and no more than whoever asked can get: a pipe that nobody
// reads before the tool has ended holds 64 KiB, and the tool that fills it never ends.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>

namespace tessaly::tools {

class WholeLines {
 public:
  static constexpr std::size_t limit = std::size_t{60} * 1024;  // bytes, never quite reached

  explicit WholeLines(std::ostream& out) : out_(out) {}

  // Prints `line`, which has no line feed of its own. False when there is no room for it; from then
  // on nothing is printed any more, so that the answer is the beginning of the whole one.
  bool print(std::string_view line);

 private:
  std::ostream& out_;
  std::size_t bytes_ = 0;
  bool isFull_ = false;
};

}  // namespace tessaly::tools
