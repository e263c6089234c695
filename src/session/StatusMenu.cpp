#include "session/StatusMenu.h"

#include <utility>

#include "scan/Format.h"
#include "scan/Percent.h"

namespace tessaly::StatusMenu {

namespace {

using Entry = StatusBarExtra::Entry;

// Numbers its lines, including those that are left out.
class Lines {
 public:
  void button(const std::string& title, const std::function<void()>& action) {
    entries_.push_back({++id_, Entry::Kind::button, title, action});
  }
  void text(const std::string& title) { entries_.push_back({++id_, Entry::Kind::text, title}); }
  void divider() { entries_.push_back({++id_, Entry::Kind::divider}); }
  void leaveOut() { ++id_; }

  std::vector<Entry> take() { return std::move(entries_); }

 private:
  int id_ = 0;
  std::vector<Entry> entries_;
};

}  // namespace

StatusBarExtra::Label label(const DiskUsage& disk) {
  return {"externaldrive.fill", Percent::rounded(disk.usedPercent)};
}

std::vector<Entry> entries(const DiskUsage& disk, bool openAtLogin, const Actions& actions) {
  Lines lines;
  lines.button("Open Tessaly", actions.open);
  lines.divider();
  lines.text("Disk " + Percent::rounded(disk.usedPercent) + " used");
  lines.text(Format::bytes(disk.free) + " free");
  if (disk.purgeable >= 1) {
    lines.text(Format::bytes(disk.purgeable) + " purgeable");
  } else {
    lines.leaveOut();
  }
  lines.divider();
  lines.button("Quick Search…", actions.quickSearch);
  lines.button("Scan Home", actions.scanHome);
  lines.divider();
  lines.button(openAtLogin ? "Open at Login: On" : "Open at Login: Off", actions.toggleOpenAtLogin);
  lines.button("Quit", actions.quit);
  return lines.take();
}

}  // namespace tessaly::StatusMenu
