// Measures how long the window does not respond while it scans. Runs the real window with the
// program's own threads, scans a folder, and runs a timer on the main thread every millisecond: a
// longer gap between two ticks is time in which a click would have waited. Ends half a second after
// the map is shown, so that building it is included.
//
// Usage: tessaly_answer_bench FOLDER [RUNS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include "app/Application.h"
#include "support/FakeHotKey.h"
#include "support/FakeLoginItem.h"
#include "support/FakeStatusBarExtra.h"
#include "support/MemorySettings.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration duration) {
  return std::chrono::duration<double, std::milli>(duration).count();
}

double cpuMilliseconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

struct Figures {
  double scan = 0;        // from the start of the scan to the map; this and the others in
                          // milliseconds
  double longest = 0;     // longest gap between two ticks
  double percentile = 0;  // 99th percentile of the gaps
  double mainThread = 0;  // CPU time of the main thread until the map is shown
};

void runFor(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec();
}

Figures scanOnce(const std::string& folder) {
  MemorySettings settings;
  FakeLoginItem loginItem;
  FakeStatusBarExtra statusBar;
  FakeHotKey hotKey;
  const TempTree support;
  Application application({.platform = platformServices(),
                           .desktop = desktopServices(),
                           .settings = &settings,
                           .loginItem = &loginItem,
                           .statusBar = &statusBar,
                           .hotKey = &hotKey,
                           .homeDirectory = folder,
                           .supportDirectory = support.path()});
  application.window().show();
  runFor(std::chrono::milliseconds(500));

  std::vector<Clock::duration> gaps;
  Clock::time_point last = Clock::now();
  QTimer heart;
  heart.setTimerType(Qt::PreciseTimer);
  heart.setInterval(1);
  QObject::connect(&heart, &QTimer::timeout, &heart, [&] {
    const auto now = Clock::now();
    gaps.push_back(now - last);
    last = now;
  });

  ScanSession& session = application.session();
  QEventLoop scanning;
  QObject::connect(&session.run(), &ScanRun::statusChanged, &scanning, [&] {
    if (session.run().status() != ScanStatus::scanning) scanning.quit();
  });
  heart.start();
  last = Clock::now();
  const auto begin = Clock::now();
  const double cpu = cpuMilliseconds(CLOCK_THREAD_CPUTIME_ID);
  session.scanHome();
  scanning.exec();
  Figures figures;
  figures.scan = milliseconds(Clock::now() - begin);
  figures.mainThread = cpuMilliseconds(CLOCK_THREAD_CPUTIME_ID) - cpu;
  runFor(std::chrono::milliseconds(500));
  heart.stop();
  if (session.run().status() != ScanStatus::complete || gaps.empty()) {
    std::fprintf(stderr, "%s cannot be scanned\n", folder.c_str());
    std::exit(1);
  }
  std::ranges::sort(gaps);
  figures.longest = milliseconds(gaps.back());
  figures.percentile = milliseconds(gaps[gaps.size() * 99 / 100]);
  return figures;
}

int measure(const std::string& folder, int runs) {
  scanOnce(folder);  // warms the caches of the disk and of the fonts
  std::vector<Figures> all;
  for (int run = 0; run < runs; ++run) all.push_back(scanOnce(folder));
  const auto print = [&all](const char* what, double Figures::*figure) {
    std::ranges::sort(all, {}, figure);
    std::printf("%-44s %8.1f ms, median %8.1f, at most %8.1f\n", what, all.front().*figure,
                all[all.size() / 2].*figure, all.back().*figure);
  };
  print("scan, from the click to the map", &Figures::scan);
  print("CPU of the main thread meanwhile", &Figures::mainThread);
  print("longest time without an answer", &Figures::longest);
  print("99 of 100 beats came within", &Figures::percentile);
  return 0;
}

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fputs("usage: tessaly_answer_bench FOLDER [RUNS]\n", stderr);
    return 2;
  }
  const int runs = argc == 3 ? std::atoi(argv[2]) : 7;
  if (runs < 1) {
    std::fputs("tessaly_answer_bench: the number of runs is at least 1\n", stderr);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  int count = 1;
  QApplication qtApplication(count, argv);
  tessaly::Application::setUpLook();
  return tessaly::measure(argv[1], runs);
}
