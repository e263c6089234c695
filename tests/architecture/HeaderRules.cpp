#include "architecture/HeaderRules.h"

#include <algorithm>
#include <fstream>
#include <string_view>

namespace tessaly::architecture {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> headersBelow(const fs::path& src) {
  std::vector<fs::path> headers;
  for (const auto& entry : fs::recursive_directory_iterator(src))
    if (entry.path().extension() == ".h") headers.push_back(entry.path());
  std::sort(headers.begin(), headers.end());
  return headers;
}

// The first line of a file that starts with `start`; "" if there is none.
std::string firstLine(const fs::path& file, std::string_view start) {
  std::ifstream stream(file);
  std::string line;
  while (std::getline(stream, line))
    if (line.starts_with(start)) return line;
  return "";
}

}  // namespace

std::vector<std::string> lateOwnHeaders(const fs::path& src) {
  std::vector<std::string> complaints;
  for (const fs::path& header : headersBelow(src)) {
    fs::path source = header;
    source.replace_extension(".cpp");
    const std::string own = fs::relative(header, src).generic_string();
    if (!fs::exists(source) || firstLine(source, "#include") == "#include \"" + own + "\"")
      continue;
    complaints.push_back(fs::relative(source, src).generic_string() + ": " + own + " comes first");
  }
  return complaints;
}

std::vector<std::string> headersReadTwice(const fs::path& src) {
  std::vector<std::string> complaints;
  for (const fs::path& header : headersBelow(src))
    if (firstLine(header, "#pragma once").empty())
      complaints.push_back(fs::relative(header, src).generic_string() + ": no #pragma once");
  return complaints;
}

}  // namespace tessaly::architecture
