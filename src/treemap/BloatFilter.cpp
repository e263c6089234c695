#include "treemap/BloatFilter.h"

#include <string_view>

#include "platform/UnicodeText.h"

namespace tessaly {

namespace {

// Suffixes are short; a longer pattern that starts with a dot is the name of a file or folder.
constexpr std::size_t longestSuffix = 8;

bool isSuffix(std::string_view pattern) {
  return pattern.starts_with('.') && pattern.find('.', 1) == std::string_view::npos &&
         UnicodeText::graphemeCount(pattern) <= longestSuffix;
}

}  // namespace

const std::vector<BloatFilter>& BloatFilter::catalog() {
  static const std::vector<BloatFilter> filters = {
      {"node_modules", "Node.js", {"node_modules"}, "shippingbox"},
      {"xcode", "Xcode", {"DerivedData", "iOS DeviceSupport", "watchOS DeviceSupport"}, "hammer"},
      {"build",
       "Build Artifacts",
       {".next", "dist", "build", "out", ".nuxt", ".output", "__pycache__", ".cache"},
       "folder"},
      {"android", "Android", {".gradle", ".android", "Android Studio"}, "iphone"},
      {"docker", "Docker", {"Docker.raw", "com.docker.docker"}, "externaldrive"},
      {"videos",
       "Videos",
       {".mp4", ".mkv", ".avi", ".mov", ".wmv", ".flv", ".webm", ".m4v", ".mpg", ".mpeg"},
       "video"},
      {"disk_images",
       "Disk Images",
       {".dmg", ".iso", ".img", ".sparseimage", ".sparsebundle"},
       "opticaldiscdrive"},
      {"archives",
       "Archives",
       {".zip", ".tar", ".gz", ".rar", ".7z", ".bz2", ".xz", ".pkg"},
       "archivebox"},
      {"ios_backups",
       "iOS Backups",
       {"MobileSync", "iPhone Backup", "iPad Backup", "Application Support/MobileSync"},
       "iphone"},
      {"virtual_machines",
       "Virtual Machines",
       {".vmdk", ".vdi", ".vhd", ".vmwarevm", ".pvm", "Parallels", "Virtual Machines",
        "VirtualBox VMs"},
       "desktopcomputer"},
      {"large_media",
       "Large Media",
       {".psd", ".ai", ".indd", ".raw", ".cr2", ".nef", ".dng", ".arw", ".orf", ".tiff"},
       "photo"},
      {"logs_caches",
       "Logs & Caches",
       {"Caches", "Logs", "CrashReporter", "DiagnosticReports", ".log"},
       "doc.text"},
  };
  return filters;
}

BloatFilter::ScanExcludes BloatFilter::scanExcludes(const std::vector<BloatFilter>& filters) {
  ScanExcludes excludes;
  for (const BloatFilter& filter : filters) {
    if (!filter.skipScan) continue;
    for (const std::string& pattern : filter.patterns) {
      if (isSuffix(pattern)) {
        excludes.suffixes.insert(UnicodeText::lowercased(pattern));
      } else {
        excludes.names.insert(pattern);
      }
    }
  }
  return excludes;
}

}  // namespace tessaly

std::size_t std::hash<tessaly::BloatFilter>::operator()(const tessaly::BloatFilter& filter) const {
  std::size_t seed = 0;
  const auto mix = [&seed](std::size_t value) {
    seed ^= value + 0x9e3779b97f4a7c15U + (seed << 6U) + (seed >> 2U);
  };
  const std::hash<std::string> ofText;
  mix(ofText(filter.id));
  mix(ofText(filter.name));
  for (const std::string& pattern : filter.patterns) mix(ofText(pattern));
  mix(ofText(filter.symbol));
  mix((filter.enabled ? 2U : 0U) + (filter.skipScan ? 1U : 0U));
  return seed;
}
