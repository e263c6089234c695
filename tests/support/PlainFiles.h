// Content, permissions and folders of plain files, for tests that examine the disk.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace tessaly {

inline void putFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// "" for a missing file.
inline std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Sorted by their bytes.
inline std::vector<std::string> entriesOf(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// The permission bits of the item itself; 0 if it is missing.
inline mode_t permissionsOf(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

}  // namespace tessaly
