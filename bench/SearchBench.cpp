// Measures mdfind of tessaly-tools against `du -s` and `find -iname` of the same folder, and writes
// the rows of a table.
//
//     tessaly_search_bench TOOLS DIR [--runs N]      TOOLS: the path of tessaly-tools
//
// Runs of all programs alternate, and the fastest of each are compared: other load on the machine
// can only make a run slower.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using Command = std::vector<std::string>;

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "search_bench: %s: %s\n", what.c_str(), std::strerror(errno));
  std::exit(1);
}

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Sample {
  double seconds = 1e9;     // from fork to exit, by the monotonic clock
  double cpuSeconds = 1e9;  // user and system time
};

double cpuSecondsOfChildren() {
  rusage usage{};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Ends the program if the command fails with more than `mostStatus`.
Sample sampleOf(const Command& command, int mostStatus) {
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  const double cpuBefore = cpuSecondsOfChildren();
  const double start = now();
  const pid_t child = ::fork();
  if (child < 0) fail("fork");
  if (child == 0) {
    const int null = ::open("/dev/null", O_WRONLY);
    ::dup2(null, STDOUT_FILENO);
    ::setenv("LC_ALL", "C", 1);
    ::execvp(words[0], words.data());
    ::_exit(127);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) > mostStatus) {
    fail("run " + command[0]);
  }
  const double seconds = now() - start;
  return {seconds, cpuSecondsOfChildren() - cpuBefore};
}

// `bound` is the largest allowed value of the quotient.
void row(const char* figure, double bound, const char* otherName, const Sample& other,
         const Sample& own) {
  const double measured = own.seconds / other.seconds;
  std::printf("| %s | %.6g | %.4g | %s | %s %.3f s (CPU %.3f s), mdfind %.3f s (CPU %.3f s) |\n",
              figure, bound, measured, measured <= bound ? "met" : "**missed**", otherName,
              other.seconds, other.cpuSeconds, own.seconds, own.cpuSeconds);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() != 2 && (words.size() != 4 || words[2] != "--runs")) {
    std::fprintf(stderr, "usage: tessaly_search_bench TOOLS DIR [--runs N]\n");
    return 2;
  }
  const std::string& folder = words[1];
  const int runs = words.size() == 4 ? std::max(std::atoi(words[3].c_str()), 1) : 7;
  const Command du = {"du", "-s", folder};
  const Command find = {"find", folder, "-iname", "*note*"};
  const Command bySize = {words[0], "mdfind", "-onlyin", folder, "kMDItemFSSize >= 52428800"};
  const Command every = {words[0], "mdfind", "-onlyin", folder, "kMDItemFSSize >= 0"};
  const Command byName = {words[0], "mdfind", "-onlyin", folder, "-name", "note"};

  constexpr int isComplete = 0;
  constexpr int isCut = 3;  // for a folder of more items than an answer can hold
  constexpr int isPartly = 1;
  std::vector<Sample> fastest(5);
  for (int run = 0; run < runs; ++run) {
    const Sample samples[] = {sampleOf(du, isPartly), sampleOf(bySize, isComplete),
                              sampleOf(every, isCut), sampleOf(find, isPartly),
                              sampleOf(byName, isCut)};
    std::fprintf(stderr, "  run %d of %d:", run + 1, runs);
    for (std::size_t i = 0; i < fastest.size(); ++i) {
      fastest[i].seconds = std::min(fastest[i].seconds, samples[i].seconds);
      fastest[i].cpuSeconds = std::min(fastest[i].cpuSeconds, samples[i].cpuSeconds);
      std::fprintf(stderr, " %.3f s", samples[i].seconds);
    }
    std::fprintf(stderr, "\n");
  }
  row("files of 50 MiB and more / du -s", 0.55, "du", fastest[0], fastest[1]);
  row("all files, the largest first / du -s", 0.55, "du", fastest[0], fastest[2]);
  row("names / find -iname", 0.40, "find", fastest[3], fastest[4]);
  return 0;
}
