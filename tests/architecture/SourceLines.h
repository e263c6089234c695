// The sources of the project, line by line.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly::architecture {

struct Line {
  std::string file;  // relative to the folder passed in, with "/"
  int number = 0;
  std::string text;

  // "file:line: what"
  std::string complaint(const std::string& what) const;
};

enum class Files { sources, sourcesAndLists };  // the lists are those of CMake

// Visits the lines of all files below `folder`, in the order of their paths.
void forEachLine(const std::filesystem::path& folder, const std::function<void(const Line&)>& visit,
                 Files files = Files::sources);

// Whether the name of the file is that of a test source.
bool isTest(std::string_view file);

}  // namespace tessaly::architecture
