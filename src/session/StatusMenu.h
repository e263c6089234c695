// The content of the status-bar extra. Pure functions.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/StatusBarExtra.h"
#include "system/DiskUsage.h"

namespace tessaly::StatusMenu {

// The actions of the buttons.
struct Actions {
  std::function<void()> open = {};
  std::function<void()> quickSearch = {};
  std::function<void()> scanHome = {};
  std::function<void()> toggleOpenAtLogin = {};
  std::function<void()> quit = {};
};

StatusBarExtra::Label label(const DiskUsage& disk);

// From top to bottom. Purgeable space has a line only if there is any.
std::vector<StatusBarExtra::Entry> entries(const DiskUsage& disk, bool openAtLogin,
                                           const Actions& actions);

}  // namespace tessaly::StatusMenu
