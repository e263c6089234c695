// Measures the look at the blocks of 400 files for the list of shared blocks, and writes a row of a
// table.
//
//     tessaly_clone_bench DIR [--runs N]
//
// The files are made in the new folder DIR/clone-bench, which is removed at the end. Each has a
// number of extents: every second block is written. The disk caches are warm.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <linux/fs.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "reclaim/CloneEngine.h"

namespace {

using namespace tessaly;

constexpr int files = 400;
constexpr int extentsOfAFile = 100;
constexpr off_t block = 4096;

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "clone_bench: %s: %s\n", what.c_str(), std::strerror(errno));
  std::exit(1);
}

void makeFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  if (file < 0) fail(path);
  const std::string bytes(block, 'x');
  for (int i = 0; i < extentsOfAFile; ++i) {
    if (::pwrite(file, bytes.data(), bytes.size(), 2 * i * block) != block) fail(path);
  }
  ::close(file);
}

// A file that shares all blocks with another one. False if the file system has no such files.
bool makeClone(const std::string& from, const std::string& to) {
  const int source = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
  const int target = ::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  if (source < 0 || target < 0) fail(to);
  const bool isDone = ::ioctl(target, FICLONE, source) == 0;
  ::close(source);
  ::close(target);
  return isDone;
}

// The least and the most extents of a file in the lists of filefrag; "" if it is not installed.
std::string countedExtents(const std::string& folder) {
  const std::string command =
      "filefrag -v '" + folder +
      "'/* 2>/dev/null | awk '/^ *[0-9]+:/ { n++ } / found$/ { print n; n = 0 }' | sort -n |"
      " sed -n '1p;$p' | xargs | sed 's/ / to /'";
  FILE* const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return "";
  std::array<char, 64> line{};
  if (std::fgets(line.data(), line.size(), pipe) == nullptr) line[0] = '\0';
  ::pclose(pipe);
  std::string text = line.data();
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

DiskNode treeOf(const std::string& folder) {
  std::vector<DiskNode> children;
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  for (const auto& path : paths) {
    children.push_back(DiskNode(
        {.name = path.filename().string(), .path = path.string(), .size = extentsOfAFile * block}));
  }
  return DiskNode({.name = "clone-bench", .path = folder, .isDir = true, .kind = FileKind::folder},
                  children);
}

int measure(const std::string& place, int runs) {
  namespace fs = std::filesystem;
  const std::string folder = place + "/clone-bench";
  fs::remove_all(folder);
  fs::create_directories(folder);
  const auto nameOf = [&](int i) { return folder + "/" + std::to_string(1000 + i); };
  // On a file system with clones, half of the files are clones of the other half.
  for (int i = 0; i < files; ++i) {
    if (i % 2 == 1 && makeClone(nameOf(i - 1), nameOf(i))) continue;
    fs::remove(nameOf(i));
    makeFile(nameOf(i));
  }
  ::sync();

  const DiskNode tree = treeOf(folder);
  double best = std::numeric_limits<double>::max();
  double bestGroups = best;
  std::size_t records = 0;
  std::size_t groups = 0;
  CloneEngine::collect(tree, files);
  for (int run = 0; run < runs; ++run) {
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::duration time) {
      return std::chrono::duration<double, std::milli>(time).count();
    };
    const auto begin = Clock::now();
    const std::vector<ShareRecord> found = CloneEngine::collect(tree, files);
    const auto middle = Clock::now();
    groups = CloneEngine::groups(found, 0).size();
    bestGroups = std::min(bestGroups, milliseconds(Clock::now() - middle));
    best = std::min(best, milliseconds(middle - begin));
    records = found.size();
  }
  const std::string extents = countedExtents(folder);
  fs::remove_all(folder);
  constexpr double bound = 20;
  std::printf(
      "| blocks of 400 files, ms | %g | %.3g | %s | %zu files of %s extents by filefrag; %zu "
      "groups, which take %.3g ms more |\n",
      bound, best, best <= bound ? "met" : "**missed**", records,
      extents.empty() ? "an unknown number of" : extents.c_str(), groups, bestGroups);
  return records == files ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  const auto option = std::find(words.begin(), words.end(), "--runs");
  const int runs =
      option == words.end() || option + 1 == words.end() ? 7 : std::atoi((option + 1)->data());
  if (words.empty() || words[0].starts_with("--") || runs < 1) {
    std::fputs("usage: tessaly_clone_bench DIR [--runs N]\n", stderr);
    return 2;
  }
  return measure(std::string(words[0]), runs);
}
