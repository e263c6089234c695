#include "architecture/SourceLines.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <vector>

namespace tessaly::architecture {

namespace fs = std::filesystem;

namespace {

bool isSource(const fs::path& path) {
  constexpr std::array<std::string_view, 6> endings = {".h", ".cpp", ".mm", ".qml", ".js", ".in"};
  return std::find(endings.begin(), endings.end(), path.extension().string()) != endings.end();
}

}  // namespace

std::string Line::complaint(const std::string& what) const {
  return file + ":" + std::to_string(number) + ": " + what;
}

void forEachLine(const fs::path& folder, const std::function<void(const Line&)>& visit,
                 Files which) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const bool isList =
        which == Files::sourcesAndLists && entry.path().filename() == "CMakeLists.txt";
    if (entry.is_regular_file() && (isList || isSource(entry.path()))) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    std::ifstream stream(file);
    Line line{.file = fs::relative(file, folder).generic_string(), .number = 0, .text = {}};
    while (std::getline(stream, line.text)) {
      ++line.number;
      visit(line);
    }
  }
}

bool isTest(std::string_view file) {
  return file.find("_test.") != std::string_view::npos;
}

}  // namespace tessaly::architecture
