#include "system/FullDiskAccess.h"

#include <algorithm>
#include <chrono>

namespace tessaly::FullDiskAccess {

namespace {

// Time for the other instance to start, so that the desktop always sees one.
constexpr std::chrono::milliseconds quitDelay{250};

Outcome start(const Process::Launch& launch) {
  const Result<Process> started = Process::launch(launch);
  if (!started) return started.error();
  return succeeded();
}

}  // namespace

std::vector<std::string> probePaths(std::string_view home, const Places& places) {
  std::vector<std::string> paths;
  for (const AccessProbe& probe : places.accessProbes)
    paths.push_back((probe.isInHome ? std::string(home) : std::string()) + probe.path);
  return paths;
}

bool canAccess(const std::string& path, const FileAccess& files) {
  switch (files.kindOf(path)) {
    case FileAccess::Kind::nothing:
      return false;
    case FileAccess::Kind::directory:
      return files.canList(path);
    case FileAccess::Kind::file:
      break;
  }
  return files.canOpen(path) || files.canReadWhole(path);
}

bool isGranted(const std::vector<std::string>& paths, const FileAccess& files) {
  return std::ranges::any_of(paths, [&files](const auto& path) { return canAccess(path, files); });
}

void openSystemSettings(Workspace& workspace) {
  for (const std::string_view page : settingsPages) {
    if (workspace.openSettings(std::string(page))) return;
  }
}

void revealRunningApp(Workspace& workspace, const std::string& application) {
  if (!application.empty()) workspace.reveal({application});
}

void relaunch(const Relaunch& how) {
  if (how.giveUpInstance) how.giveUpInstance();
  // After a failure the program has quit anyway; the user can start it again.
  (void)(how.launch ? how.launch
                    : start)({.path = "/usr/bin/open", .args = {"-n", how.application}});
  how.dispatch.after(quitDelay, Dispatch::Queue::main, how.quit);
}

}  // namespace tessaly::FullDiskAccess
