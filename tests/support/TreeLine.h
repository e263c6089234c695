// Parses the text format of TempTree, line by line.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tessaly {

struct TreeLine {
  enum class Form { folder, file, link, hardLink, fifo, socket };

  int indent = 0;  // number of folders above it within the text
  std::string name;
  Form form = Form::file;
  std::int64_t allocated = 0;
  std::int64_t sparseLength = 0;
  std::string target;  // of a symbolic or hard link
  mode_t mode = 0;
  timespec mtime = {1600000000, 0};
  int times = 1;
  std::string source;  // the original line, for messages

  // The name of copy `ordinal`.
  std::string nameOf(int ordinal) const;
};

// Throws std::invalid_argument for an invalid line.
std::vector<TreeLine> parseTreeLines(std::string_view text);

}  // namespace tessaly
