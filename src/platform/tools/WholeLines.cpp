#include "platform/tools/WholeLines.h"

#include <ostream>

namespace tessaly::tools {

bool WholeLines::print(std::string_view line) {
  const std::size_t room = limit - bytes_;
  // Including the line feed.
  if (line.size() + 1 >= room) isFull_ = true;
  if (isFull_) return false;
  out_ << line << '\n';
  bytes_ += line.size() + 1;
  return true;
}

}  // namespace tessaly::tools
