// Runs a target on the files named as arguments, and on all files in folders named: each file
// complete and cut off at many lengths, at every length if it is small. Fails if there is no file,
// so that lost seeds are noticed.
#include <cstddef>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesAt(const fs::path& place) {
  if (fs::is_regular_file(place)) return {place};
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(place)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

void replayStart(const std::string& bytes, std::size_t length) {
  // Allocated separately, so that a sanitizer detects a read past the end.
  const auto input = std::make_unique<char[]>(length);
  bytes.copy(input.get(), length);
  tessaly::fuzz::tryInput({input.get(), length});
}

void replay(const std::string& bytes) {
  const std::size_t step = bytes.size() / 512 + 1;
  for (std::size_t length = 0; length < bytes.size(); length += step) replayStart(bytes, length);
  replayStart(bytes, bytes.size());
}

int replayAll(const std::vector<std::string>& places) {
  std::size_t count = 0;
  for (const std::string& place : places) {
    for (const fs::path& file : filesAt(place)) {
      // Printed first, since a crash prints no file name.
      std::printf("%s\n", file.c_str());
      std::fflush(stdout);
      std::ifstream stream(file, std::ios::binary);
      replay({std::istreambuf_iterator<char>(stream), {}});
      ++count;
    }
  }
  std::printf("%zu files\n", count);
  return count > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return replayAll({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
