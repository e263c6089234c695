#include "picture/FixtureFindings.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "picture/FixtureTree.h"
#include "reclaim/SafeScore.h"

namespace tessaly {

namespace {

constexpr double day = 86400;
constexpr std::int64_t mega = 1024 * 1024;

struct UnusedFile {
  const char* below;  // the home
  std::int64_t megabytes;
  const char* kind;
  double days;  // since its last change
};

// Largest first.
constexpr std::array<UnusedFile, 12> unusedFiles = {{
    {"VirtualBox VMs/debian.vdi", 6400, "other", 40},
    {"Movies/Iceland 2024/glacier.mov", 5200, "video", 800},
    {"Movies/wedding.mkv", 4300, "video", 800},
    {"Downloads/linux.iso", 3800, "disk", 32},
    {".local/share/libvirt/images/windows.qcow2", 3100, "other", 400},
    {"Downloads/backup.zip", 2600, "archive", 100},
    {"Code/atlas/target/release.a", 900, "other", 45},
    {"Pictures/2023/a.raw", 900, "image", 800},
    {".cache/pip/wheels.tar", 700, "archive", 800},
    {"Code/atlas/dump.json", 510, "code", 300},
    {"Code/atlas/node_modules/esbuild.tar", 190, "archive", 800},
    {"Documents/taxes.pdf", 140, "document", 800},
}};

// A copy of `node` at `path`; `sizeOf` gives the size of each file, 0 for one that is left out.
DiskNode copied(const DiskNode& node, const std::string& path, const auto& sizeOf) {
  DiskNode::Fields fields;
  fields.name = node.name();
  fields.path = path;
  fields.isDir = node.isDir();
  fields.kind = node.kind();
  fields.mtime = node.mtime();
  std::vector<DiskNode> children;
  for (const DiskNode& child : node.children()) {
    DiskNode copy = copied(child, path + "/" + std::string(child.name()), sizeOf);
    if (copy.size() == 0) continue;
    fields.size += copy.size();
    children.push_back(std::move(copy));
  }
  if (!node.isDir()) fields.size = sizeOf(node);
  return DiskNode(fields, children);
}

DiskNode withFile(const DiskNode& folder, const std::string& name, std::int64_t bytes) {
  DiskNode::Fields fields;
  fields.name = folder.name();
  fields.path = folder.path();
  fields.size = folder.size() + bytes;
  fields.isDir = true;
  fields.kind = FileKind::folder;
  std::vector<DiskNode> children(folder.children().begin(), folder.children().end());
  DiskNode::Fields file;
  file.name = name;
  file.path = folder.path() + "/" + name;
  file.size = bytes;
  children.emplace_back(file);
  return DiskNode(fields, children);
}

}  // namespace

std::vector<SafeItem> fixtureSafeItems(std::size_t count) {
  std::vector<LargeOldFile> files;
  for (const UnusedFile& file : unusedFiles) {
    files.push_back({.path = fixtureHome + std::string("/") + file.below,
                     .bytes = file.megabytes * mega,
                     .kind = file.kind,
                     .mtimeMs = static_cast<std::int64_t>((fixtureNow - file.days * day) * 1000)});
  }
  std::vector<SafeItem> items = SafeScore::rank(
      files, {.places = Places::forLinux(), .personalFolders = {}, .now = fixtureNow});
  items.resize(std::min(count, items.size()));
  return items;
}

DiskNode fixtureBackupTree() {
  const DiskNode tree = copied(fixtureTree(), fixtureBackup, [](const DiskNode& file) {
    if (file.name().ends_with(".mov") || file.name() == "debian.vdi") return std::int64_t(0);
    if (file.name().ends_with(".a")) return file.size() * 2;
    return file.name().ends_with(".zip") ? file.size() / 2 : file.size();
  });
  return withFile(tree, "old-laptop.tar", 2100 * mega);
}

DiskNode fixtureCopyTree() {
  constexpr std::int64_t small = 20480;
  const DiskNode tree =
      copied(fixtureTree(), fixtureBackup, [](const DiskNode& file) { return file.size(); });
  return withFile(tree, "README", small);
}

std::vector<HistoryPoint> fixtureHistory() {
  constexpr std::array<std::int64_t, 25> gigabytes = {22, 22, 23, 25, 24, 26, 27, 27, 29,
                                                      31, 24, 25, 25, 27, 28, 30, 33, 33,
                                                      35, 34, 37, 38, 29, 31, 33};
  std::vector<HistoryPoint> points;
  for (std::size_t week = 0; week < gigabytes.size(); ++week) {
    const auto ago = static_cast<double>(gigabytes.size() - week) * 7 - (week % 3 == 0 ? 2 : 0);
    points.push_back(
        {.at = fixtureNow - ago * day + static_cast<double>(week) * 1700,
         .bytes = gigabytes[week] * 1024 * mega + static_cast<std::int64_t>(week) * 61 * mega,
         .files = 60});
  }
  return points;
}

}  // namespace tessaly
