// Access to the whole disk: whether the program has it, and how to get it.
//
// A system that keeps parts of the user's data from programs has no query for this. The program
// tries to read items that only a program with access can read. If the answer cannot be determined,
// it counts as no access.
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

// Pages of the system's settings on which access is granted: the newest system's first; the last
// one is the least exact.
inline constexpr std::array<std::string_view, 3> settingsPages = {
    "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_AllFiles",
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles",
    "x-apple.systempreferences:com.apple.preference.security",
};

// The paths to try, in order, for the user with the home directory `home`.
std::vector<std::string> probePaths(std::string_view home = homeDirectory(),
                                    const Places& places = Places::current());

// Whether the item at `path` can be read: a directory by listing it, a file by opening it, or else
// by reading it completely. False for a missing item. Blocks while it reads. Safe from any thread.
bool canAccess(const std::string& path, const FileAccess& files = FileAccess::ofMachine());

// Whether at least one of `paths` can be read; stops at the first. Safe from any thread.
bool isGranted(const std::vector<std::string>& paths,
               const FileAccess& files = FileAccess::ofMachine());

// Opens the first of settingsPages that the desktop can open; if there is none, does nothing. Main
// thread only.
void openSystemSettings(Workspace& workspace);

// Shows in the file viewer which copy of the program needs the access. Does nothing for an empty
// path. Main thread only.
void revealRunningApp(Workspace& workspace,
                      const std::string& application = runningApplicationPath());

// Parameters of relaunch().
struct Relaunch {
  Dispatch& dispatch;
  // Allows another instance to start beside this one.
  std::function<void()> giveUpInstance;
  std::function<void()> quit;
  std::string application = runningApplicationPath();
  // Starts a program without waiting for it.
  std::function<Outcome(const Process::Launch&)> launch = {};
};

// Starts another instance, and asks this one to quit a quarter of a second later, whether or not
// the other has started. Main thread only.
void relaunch(const Relaunch& how);

}  // namespace tessaly::FullDiskAccess
