// Measures the search for dead links and that for items in the cloud against `du -s` of the same
// folder, and writes the rows of a table.
//
//     tessaly_links_bench DIR [--runs N]
//
// Each run is in a process of its own. The runs of all three alternate, and the fastest of each are
// compared: other load on the machine can only make a run slower. The disk caches are warm after
// the first of them.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "ScanSample.h"
#include "reclaim/DeadLinks.h"
#include "reclaim/Offloaded.h"

namespace {

using namespace tessaly;

// The program's own limit would end the walk of a tree with many dead links early.
constexpr int limit = std::numeric_limits<int>::max();

struct Sample {
  double seconds = 1e9;  // of the call, by the monotonic clock
  double cpuSeconds = 1e9;
  std::size_t found = 0;
};

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "links_bench: %s: %s\n", what, std::strerror(errno));
  std::exit(1);
}

double cpuSeconds() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

Sample sampleOf(const std::function<std::size_t()>& search) {
  int ends[2];
  if (::pipe(ends) != 0) fail("pipe");
  const pid_t child = ::fork();
  if (child < 0) fail("fork");
  if (child == 0) {
    const double cpuBefore = cpuSeconds();
    const auto begin = std::chrono::steady_clock::now();
    Sample own;
    own.found = search();
    own.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    own.cpuSeconds = cpuSeconds() - cpuBefore;
    const bool isWritten = ::write(ends[1], &own, sizeof own) == sizeof own;
    ::_exit(isWritten ? 0 : 1);
  }
  ::close(ends[1]);
  Sample sample;
  if (::read(ends[0], &sample, sizeof sample) != sizeof sample) fail("read");
  ::close(ends[0]);
  int status = 0;
  if (::waitpid(child, &status, 0) != child || status != 0) fail("search");
  return sample;
}

void keepFastest(Sample& fastest, const Sample& sample) {
  fastest.seconds = std::min(fastest.seconds, sample.seconds);
  fastest.cpuSeconds = std::min(fastest.cpuSeconds, sample.cpuSeconds);
  fastest.found = sample.found;
}

void row(const char* figure, double bound, const Sample& du, const Sample& own) {
  const double measured = own.seconds / du.seconds;
  std::printf(
      "| %s | %.6g | %.4g | %s | du %.3f s (CPU %.3f s), search %.3f s (CPU %.3f s), %zu "
      "found |\n",
      figure, bound, measured, measured <= bound ? "met" : "**missed**", du.seconds, du.cpuSeconds,
      own.seconds, own.cpuSeconds, own.found);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() != 1 && (words.size() != 3 || words[1] != "--runs")) {
    std::fprintf(stderr, "usage: tessaly_links_bench DIR [--runs N]\n");
    return 2;
  }
  const std::string& folder = words[0];
  const int runs = words.size() == 3 ? std::max(std::atoi(words[2].c_str()), 1) : 7;
  Sample du;
  Sample links;
  Sample placeholders;
  for (int run = 0; run < runs; ++run) {
    const bench::DuSample other = bench::sampleDu(folder);
    keepFastest(du, {other.seconds, other.cpuSeconds});
    keepFastest(links, sampleOf([&] { return ProInsights::deadLinks(folder, limit).size(); }));
    keepFastest(placeholders,
                sampleOf([&] { return ProInsights::offloaded(folder, limit).size(); }));
    std::fprintf(stderr, "  run %d of %d: du %.3f s, dead links %.3f s, placeholders %.3f s\n",
                 run + 1, runs, other.seconds, links.seconds, placeholders.seconds);
  }
  constexpr double bound = 0.30;
  row("dead links / du -s", bound, du, links);
  row("items in the cloud / du -s", bound, du, placeholders);
  return 0;
}
