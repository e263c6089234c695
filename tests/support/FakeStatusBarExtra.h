// A status bar that a test can read and click.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/StatusBarExtra.h"

namespace tessaly {

class FakeStatusBarExtra final : public StatusBarExtra {
 public:
  void setLabel(const Label& newLabel) override { label = newLabel; }
  void setMenu(std::vector<Entry> newMenu) override { menu = std::move(newMenu); }
  Presence presence() const override { return presence_; }
  void setPresenceChanged(std::function<void()> changed) override { changed_ = std::move(changed); }

  // The titles of the menu, with "-" for a divider.
  std::vector<std::string> lines() const {
    std::vector<std::string> lines;
    for (const Entry& entry : menu)
      lines.push_back(entry.kind == Entry::Kind::divider ? "-" : entry.title);
    return lines;
  }

  // False if there is no such button.
  bool click(const std::string& title) {
    for (const Entry& entry : menu) {
      if (entry.title != title || entry.kind != Entry::Kind::button) continue;
      const std::function<void()> action = entry.action;
      action();
      return true;
    }
    return false;
  }

  void become(Presence presence) {
    if (presence == presence_) return;
    presence_ = presence;
    if (changed_) changed_();
  }

  Label label;
  std::vector<Entry> menu;

 private:
  Presence presence_ = Presence::unknown;
  std::function<void()> changed_;
};

}  // namespace tessaly
