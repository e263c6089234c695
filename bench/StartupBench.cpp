// Measures the time from the program's start to the first frame with a map, and its memory: from
// outside, on an X server without a screen and with the software renderer. A tree of 40,000 nodes
// is saved from the last run, as in ordinary use.
//
// Usage: tessaly_startup_bench PROGRAM [RUNS]
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <QCoreApplication>

#include "SampleTree.h"
#include "session/ScanStore.h"
#include "session/SettingsFile.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr QSize screenSize(1280, 820);
constexpr std::chrono::milliseconds betweenLooks(3);
constexpr std::chrono::seconds longestStart(30);
constexpr std::chrono::seconds untilAtRest(5);

struct Start {
  double milliseconds = 0;
  double mebibytes = 0;  // proportional set size (Pss) when idle
};

// The home folder with the program's saved data.
class Machine {
 public:
  Machine() {
    ScanStore::saveTree(sampleTree("abcdefghijklmnopqrstuvwxyz-_ "), home_.at("data/Marrow"));
    SettingsFile settings(home_.at("config/Marrow/settings.json"));
    settings.setText(ScanStore::lastScanRootKey, "/home/somebody");
    settings.setBoolean("marrow.fdaGateSkipped", true);
  }

  std::vector<std::string> environment(const XServer& server) const {
    std::vector<std::string> all = {"DISPLAY=" + server.display().toStdString(),
                                    "HOME=" + home_.path(),
                                    "XDG_DATA_HOME=" + home_.at("data"),
                                    "XDG_CONFIG_HOME=" + home_.at("config"),
                                    "XDG_RUNTIME_DIR=" + home_.at("run"),
                                    "DBUS_SESSION_BUS_ADDRESS=unix:path=/none",
                                    "QT_QUICK_BACKEND=software",
                                    "LANG=C.UTF-8"};
    if (const char* path = std::getenv("PATH")) all.push_back(std::string("PATH=") + path);
    return all;
  }

 private:
  TempTree home_{"data/\n  Marrow/\nconfig/\n  Marrow/\nrun/ mode=0700\n"};
};

// Whether the map is shown: most of the area below the bars is coloured, which no other screen
// does.
bool showsMap(const QImage& screen) {
  constexpr int steps = 20;
  int colored = 0;
  for (int i = 0; i < steps * steps; ++i) {
    const int x = (i % steps) * screen.width() / steps + 30;
    const int y = screen.height() / 4 + (i / steps) * screen.height() * 7 / 10 / steps;
    const QRgb pixel = screen.pixel(std::min(x, screen.width() - 1), y);
    const auto [low, high] = std::minmax({qRed(pixel), qGreen(pixel), qBlue(pixel)});
    if (high - low > 40) ++colored;
  }
  return colored > steps * steps / 2;
}

double shareOfMemory(pid_t process) {
  std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string line; std::getline(rollup, line);) {
    if (line.starts_with("Pss:")) return std::stod(line.substr(4)) / 1024;
  }
  std::fprintf(stderr, "the program's memory cannot be read\n");
  std::exit(1);
}

Start startOnce(const std::string& program, bool waitForRest) {
  const Machine machine;
  XServer server(screenSize);
  const std::vector<std::string> environment = machine.environment(server);
  std::vector<char*> variables;
  for (const std::string& variable : environment) {
    variables.push_back(const_cast<char*>(variable.c_str()));
  }
  variables.push_back(nullptr);
  char* arguments[] = {const_cast<char*>(program.c_str()), nullptr};

  Start start;
  pid_t process = 0;
  const auto begin = Clock::now();
  if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, variables.data()) != 0) {
    std::fprintf(stderr, "%s does not start\n", program.c_str());
    std::exit(1);
  }
  while (!showsMap(server.look())) {
    if (Clock::now() - begin > longestStart) {
      std::fprintf(stderr, "no map came on the screen\n");
      std::exit(1);
    }
    std::this_thread::sleep_for(betweenLooks);
  }
  start.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
  if (waitForRest) {
    std::this_thread::sleep_for(untilAtRest);
    start.mebibytes = shareOfMemory(process);
  }
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
  return start;
}

}  // namespace
}  // namespace tessaly::bench

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: tessaly_startup_bench PROGRAM [RUNS]\n");
    return 2;
  }
  const int runs = argc > 2 ? std::atoi(argv[2]) : 7;
  tessaly::bench::startOnce(argv[1], false);  // the first one fills the caches
  std::vector<double> times;
  std::vector<double> sizes;
  for (int run = 0; run < runs; ++run) {
    const tessaly::bench::Start start = tessaly::bench::startOnce(argv[1], true);
    times.push_back(start.milliseconds);
    sizes.push_back(start.mebibytes);
  }
  const auto tell = [](const char* what, std::vector<double> figures, const char* unit) {
    std::sort(figures.begin(), figures.end());
    std::printf("%-44s %8.1f %s, median %8.1f, at most %8.1f\n", what, figures.front(), unit,
                figures[figures.size() / 2], figures.back());
  };
  tell("start to the first frame with the map", times, "ms");
  tell("memory at rest (Pss)", sizes, "MB");
  return 0;
}
