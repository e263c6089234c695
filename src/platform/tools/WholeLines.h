// Prints whole lines, and no more than fits a pipe that is read only after the tool has ended: it
// holds 64 KiB, and a tool that fills it never ends.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>

namespace tessaly::tools {

class WholeLines {
 public:
  static constexpr std::size_t limit = std::size_t{60} * 1024;  // bytes; output stays below

  explicit WholeLines(std::ostream& out) : out_(out) {}

  // Prints `line`, which has no line feed of its own. False if it does not fit; from then on
  // nothing is printed, so the output is the beginning of the complete one.
  bool print(std::string_view line);

 private:
  std::ostream& out_;
  std::size_t bytes_ = 0;
  bool isFull_ = false;
};

}  // namespace tessaly::tools
