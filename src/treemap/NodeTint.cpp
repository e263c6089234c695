#include "treemap/NodeTint.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "look/MarrowTheme.h"
#include "platform/UnicodeText.h"
#include "treemap/KindColor.h"

namespace tessaly::NodeTint {

namespace {

constexpr double secondsPerDay = 86400;
constexpr double faint = 0.28;

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

Color byAge(std::optional<double> mtime, double now) {
  if (!mtime || !(*mtime > 0)) return MarrowTheme::other;
  const double age = (now - *mtime) / secondsPerDay;
  if (age < 7) return MarrowTheme::success;
  if (age < 30) return MarrowTheme::accent;
  if (age < 180) return MarrowTheme::warning;
  return MarrowTheme::other;
}

}  // namespace

double presentTime() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration<double>(sinceEpoch).count();
}

Color color(const DiskNode& node, const std::vector<BloatFilter>& filters,
            const std::set<std::string>& grew, bool heatmap, double now) {
  if (heatmap) return byAge(node.mtime(), now);

  // Lower-cased only once a filter needs them.
  bool anyEnabled = false;
  std::string name;
  std::string path;
  for (const BloatFilter& filter : filters) {
    if (!filter.enabled) continue;
    if (!anyEnabled) {
      anyEnabled = true;
      name = UnicodeText::lowercased(node.name());
      path = UnicodeText::lowercased(node.path());
    }
    for (const std::string& pattern : filter.patterns) {
      const std::string part = UnicodeText::lowercased(pattern);
      if (contains(name, part) || contains(path, part)) return MarrowTheme::highlight;
    }
  }
  if (anyEnabled) return base(node).atOpacity(faint);
  if (!grew.empty() && grew.contains(node.path())) return MarrowTheme::warning;
  return base(node);
}

Color base(const DiskNode& node) {
  if (!node.isDir()) return KindColor::of(node.kind());
  const std::string lower = UnicodeText::lowercased(node.name());
  if (lower == "node_modules" || contains(lower, ".npm")) return MarrowTheme::developer;
  if (lower == "deriveddata" || contains(lower, "xcode")) return MarrowTheme::folderPalette[3];
  if (lower == ".next" || lower == "dist" || lower == "build" || lower == "out") {
    return MarrowTheme::folderPalette[7];
  }
  if (node.kind() == FileKind::app) return MarrowTheme::accent;
  return MarrowTheme::folderColor(node.name());
}

std::string ageLabel(std::optional<double> mtime, double now) {
  if (!mtime || !(*mtime > 0)) return "Unknown date";
  const double wholeDays = std::trunc((now - *mtime) / secondsPerDay);
  if (wholeDays < 1) return "Today";
  const auto days = static_cast<std::int64_t>(wholeDays);
  if (days == 1) return "1 day ago";
  if (days < 30) return std::to_string(days) + " days ago";
  if (days > 364) return std::to_string(days / 365) + "+ yr ago";
  return std::to_string(days / 30) + " mo ago";
}

}  // namespace tessaly::NodeTint
