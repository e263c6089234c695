// Access to the whole disk: whether the program has it, and the way to get it.
//
// A system that keeps parts of the user's data from programs has no way to ask whether it does so.
// It is found out by reading what only a program with access can read. What cannot be told counts
// as no access.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Dispatch.h"
#include "platform/FileAccess.h"
#include "platform/HomeDirectory.h"
#include "platform/Places.h"
#include "platform/Process.h"
#include "platform/RunningApplication.h"
#include "platform/Workspace.h"

namespace tessaly::FullDiskAccess {

// Pages of the system's settings where access is granted: of the newest system first, the last one
// the least exact.
inline constexpr std::array<std::string_view, 3> settingsPages = {
    "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_AllFiles",
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles",
    "x-apple.systempreferences:com.apple.preference.security",
};

// The places to try, in their order, for the user whose home directory is `home`.
std::vector<std::string> probePaths(std::string_view home = homeDirectory(),
                                    const Places& places = Places::current());

// Whether what stands at `path` can be read: a directory by listing it, a file by opening it, or
// else by reading it whole. What is not there cannot. Blocks while it reads. Safe from any thread.
bool canAccess(const std::string& path, const FileAccess& files = FileAccess::ofMachine());

// Whether at least one of `paths` can be read; those behind it are not tried. Safe from any thread.
bool isGranted(const std::vector<std::string>& paths,
               const FileAccess& files = FileAccess::ofMachine());

// Opens the first of settingsPages that the desktop has; none is not an error. Main thread only.
void openSystemSettings(Workspace& workspace);

// Shows in the file viewer which copy of the program it is that access must be given to. Does
// nothing without a path. Main thread only.
void revealRunningApp(Workspace& workspace,
                      const std::string& application = runningApplicationPath());

// Starting the program anew.
struct Relaunch {
  Dispatch& dispatch;
  // Lets another instance be started beside this one.
  std::function<void()> giveUpInstance;
  std::function<void()> quit;
  std::string application = runningApplicationPath();
  // Starts a program without waiting for it.
  std::function<Outcome(const Process::Launch&)> launch = {};
};

// Starts another instance, and asks this one to quit a quarter of a second later, whether the other
// has started or not. Main thread only.
void relaunch(const Relaunch& how);

}  // namespace tessaly::FullDiskAccess
