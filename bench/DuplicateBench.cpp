// Measures the search for duplicates, and writes rows of a table.
//
//     tessaly_duplicate_bench DIR [--runs N]
//
// Makes 40 files of 64 MiB in DIR, in groups of 4, unless they are there. The runs of the search
// and of the other programs take turns, each in a process of its own, and the fastest of each
// count. The files are in the page cache after the first turn, which does not count. A program that
// is not installed is left out. A sparse file of 100 GB is read once.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "reclaim/DuplicateEngine.h"
#include "scan/DiskScanner.h"

namespace {

using namespace tessaly;
namespace fs = std::filesystem;

constexpr std::int64_t MiB = 1048576;
constexpr int fileCount = 40;
constexpr int groupSize = 4;
constexpr std::int64_t fileBytes = 64 * MiB;
constexpr std::int64_t sparseBytes = 100'000'000'000;

// What a child process took.
struct Sample {
  double seconds = std::numeric_limits<double>::max();
  double cpuSeconds = 0;
  long peakKiB = 0;
  bool isGood = false;
};

// Runs `body` in a child, whose exit status it returns.
Sample sampleOf(const std::function<int()>& body) {
  const auto begin = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) ::_exit(body());
  int status = 0;
  struct rusage usage {};
  if (child < 0 || ::wait4(child, &status, 0, &usage) != child) std::exit(1);
  Sample sample;
  sample.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  for (const timeval& time : {usage.ru_utime, usage.ru_stime})
    sample.cpuSeconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  sample.peakKiB = usage.ru_maxrss;
  sample.isGood = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return sample;
}

int become(const std::vector<std::string>& command) {
  std::vector<char*> args;
  for (const std::string& arg : command) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);
  const int nowhere = ::open("/dev/null", O_RDWR);
  ::dup2(nowhere, STDIN_FILENO);
  ::dup2(nowhere, STDOUT_FILENO);
  ::dup2(nowhere, STDERR_FILENO);
  ::execvp(args.front(), args.data());
  return 127;
}

// One that fails is not measured, like one that is not installed.
struct Program {
  std::string name;
  std::function<int()> body;
  Sample best = {};
  bool isGood = true;

  void run(bool counts) {
    const Sample sample = sampleOf(body);
    isGood = isGood && sample.isGood;
    if (counts && sample.isGood && sample.seconds < best.seconds) best = sample;
  }
};

std::int64_t blocksOf(const fs::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_blocks : 0;
}

// A file in many pieces takes a block more for the list of these, and then has another size on disk
// than its copies. So its space is reserved at once, and another place is tried until it fits.
bool write(const fs::path& path, const std::vector<char>& bytes) {
  std::vector<fs::path> misplaced;
  bool isWhole = false;
  for (int attempt = 0; attempt < 20 && !isWhole; ++attempt) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    isWhole = ::posix_fallocate(file, 0, fileBytes) == 0 &&
              ::write(file, bytes.data(), bytes.size()) == fileBytes && ::fsync(file) == 0 &&
              blocksOf(path) == fileBytes / 512;
    ::close(file);
    if (isWhole) break;
    misplaced.push_back(path.native() + ".misplaced" + std::to_string(attempt));
    fs::rename(path, misplaced.back());
  }
  for (const fs::path& other : misplaced) fs::remove(other);
  return isWhole;
}

void makeFiles(const fs::path& folder) {
  fs::create_directories(folder);
  std::vector<char> bytes(fileBytes);
  for (int k = 0; k < fileCount; ++k) {
    const fs::path path = folder / ("file" + std::to_string(k));
    if (blocksOf(path) == fileBytes / 512) continue;
    std::mt19937_64 engine(static_cast<std::uint64_t>(k / groupSize));
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
      const std::uint64_t word = engine();
      std::memcpy(bytes.data() + at, &word, sizeof word);
    }
    if (!write(path, bytes)) std::exit(1);
  }
  ::sync();
}

long memoryAtRestKiB() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::atol(line.c_str() + 6);
  }
  return 0;
}

void row(const char* figure, double bound, double measured, const std::string& detail) {
  std::printf("| %s | %.6g | %.4g | %s | %s |\n", figure, bound, measured,
              measured <= bound ? "met" : "**missed**", detail.c_str());
}

std::string wordsFor(const Program& program) {
  if (!program.isGood) return program.name + " not measured";
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), "%s %.3f s (CPU %.3f s)", program.name.c_str(),
                program.best.seconds, program.best.cpuSeconds);
  return text.data();
}

// The most that a call takes above the memory at rest, in MiB.
double extraMemory(const std::function<bool()>& call, Sample& sample) {
  int ends[2];
  if (::pipe(ends) != 0) std::exit(1);
  sample = sampleOf([&] {
    const long before = memoryAtRestKiB();
    struct rusage usage {};
    if (!call() || ::getrusage(RUSAGE_SELF, &usage) != 0) return 1;
    const long extra = usage.ru_maxrss - before;
    return ::write(ends[1], &extra, sizeof extra) == sizeof extra ? 0 : 1;
  });
  ::close(ends[1]);
  long extra = -1;
  if (::read(ends[0], &extra, sizeof extra) != sizeof extra) std::exit(1);
  ::close(ends[0]);
  return static_cast<double>(extra) / 1024;
}

void measureGroups(const fs::path& folder, int runs) {
  makeFiles(folder);
  const DiskNode tree = DiskScanner::scan(folder.native(), {}, {});
  const auto find = [&] {
    return DuplicateEngine::find(tree, fileBytes, {}).size() ==
           static_cast<std::size_t>(fileCount / groupSize);
  };
  std::vector<std::string> dgst = {"openssl", "dgst", "-sha256"};
  for (int k = 0; k < fileCount; ++k) dgst.push_back(folder / ("file" + std::to_string(k)));
  std::vector<Program> programs = {
      {"search", [&] { return find() ? 0 : 1; }},
      {"openssl", [&] { return become(dgst); }},
      {"jdupes",
       [&] {
         return become({"jdupes", "-q", "-r", folder});
       }},
      // To standard output: rmlint puts a new file at the path of its output, even at /dev/null.
      {"rmlint", [&] {
         return become({"rmlint", "-T", "df", "-a", "sha256", "-o", "fdupes:stdout", folder});
       }}};
  for (int run = 0; run <= runs; ++run) {
    for (Program& program : programs) program.run(run > 0);
  }
  row("40 files of 64 MiB in the page cache / openssl dgst -sha256", 0.55,
      programs[0].best.seconds / programs[1].best.seconds,
      wordsFor(programs[0]) + ", " + wordsFor(programs[1]) + ", " + wordsFor(programs[2]) + ", " +
          wordsFor(programs[3]));
  Sample sample;
  row("memory above rest, MiB", 8, extraMemory(find, sample), "the same files");
}

void measureSparse(const std::string& path) {
  std::ofstream(path, std::ios::binary) << "begin";
  if (::truncate(path.c_str(), sparseBytes) != 0) std::exit(1);
  Sample sample;
  const double extra = extraMemory([&] { return FileDigest::of(path).ok(); }, sample);
  const double seconds = sample.isGood ? sample.seconds : std::numeric_limits<double>::infinity();
  std::array<char, 80> detail{};
  std::snprintf(detail.data(), detail.size(), "%.2f GB a second, CPU %.1f s",
                static_cast<double>(sparseBytes) / seconds / 1e9, sample.cpuSeconds);
  row("a sparse file of 100 GB, s", 120, seconds, detail.data());
  row("memory above rest for it, MiB", 8, extra, "");
  ::unlink(path.c_str());
}

}  // namespace

int main(int count, char** args) {
  const std::vector<std::string> given(args + 1, args + count);
  if (given.empty()) {
    std::fputs("usage: tessaly_duplicate_bench DIR [--runs N]\n", stderr);
    return 2;
  }
  int runs = 7;
  if (given.size() == 3 && given[1] == "--runs") runs = std::max(1, std::atoi(given[2].c_str()));
  measureGroups(fs::path(given[0]) / "groups", runs);
  measureSparse(given[0] + "/sparse");
  return 0;
}
