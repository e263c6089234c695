// What the status-bar extra says. Pure.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/StatusBarExtra.h"
#include "system/DiskUsage.h"

namespace tessaly::StatusMenu {

// What the buttons do.
struct Actions {
  std::function<void()> open = {};
  std::function<void()> quickSearch = {};
  std::function<void()> scanHome = {};
  std::function<void()> toggleOpenAtLogin = {};
  std::function<void()> quit = {};
};

StatusBarExtra::Label label(const DiskUsage& disk);

// From top to bottom. What can be purged has a line only where there is any.
std::vector<StatusBarExtra::Entry> entries(const DiskUsage& disk, bool openAtLogin,
                                           const Actions& actions);

}  // namespace tessaly::StatusMenu
