#include "reclaim/BigWinsEngine.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>
#include <utility>

#include "scan/FileKindRules.h"
#include "scan/PathName.h"
#include "system/ToolText.h"

namespace tessaly::BigWinsEngine {

namespace {

constexpr const char* searchTool = "/usr/bin/mdfind";
constexpr const char* snapshotTool = "/usr/bin/tmutil";

constexpr std::int64_t leastFileBytes = 52428800;
constexpr std::size_t mostFilesRead = 80;
constexpr double idleSeconds = 2592000;

// The earliest time that a date can have, the first day of the year 1, in seconds since 1970.
constexpr double distantPast = -62135769600;

template <class Row>
void sortLargestFirst(std::vector<Row>& rows) {
  std::stable_sort(rows.begin(), rows.end(),
                   [](const Row& a, const Row& b) { return a.bytes > b.bytes; });
}

// Only line feeds end a line here: a path may contain any other character.
std::vector<std::string_view> linesOf(std::string_view text,
                                      std::size_t most = std::numeric_limits<std::size_t>::max()) {
  std::vector<std::string_view> lines;
  while (!text.empty() && lines.size() < most) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    if (length > 0) lines.push_back(text.substr(0, length));
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return lines;
}

double secondsNow() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// File systems may report times that no 64-bit number of milliseconds holds.
std::int64_t milliseconds(double seconds) {
  constexpr double limit = 9.2e18;
  return static_cast<std::int64_t>(std::clamp(seconds * 1000, -limit, limit));
}

}  // namespace

const std::unordered_map<std::string_view, ArtifactDir>& artifactDirs() {
  constexpr ArtifactDir pythonEnvironment = {"Python virtualenvs",
                                             "Recreated with pip/uv/poetry install"};
  constexpr ArtifactDir framework = {"Framework build caches", "Rebuilt on next dev/build run"};
  constexpr ArtifactDir zig = {"Zig artifacts", "Rebuilt by zig"};
  static const std::unordered_map<std::string_view, ArtifactDir> dirs = {
      {"node_modules", {"node_modules", "Restored by npm/yarn/pnpm install"}},
      {"__pycache__", {"Python bytecode", "Regenerated automatically by Python"}},
      {".venv", pythonEnvironment},
      {"venv", pythonEnvironment},
      {".next", framework},
      {".nuxt", framework},
      {".output", framework},
      {".turbo", framework},
      {".angular", framework},
      {".parcel-cache", framework},
      {".dart_tool", {"Dart/Flutter artifacts", "Rebuilt by flutter/dart tooling"}},
      {".gradle", {"Gradle project caches", "Rebuilt on next Gradle build"}},
      {".stack-work", {"Haskell artifacts", "Rebuilt by stack"}},
      {"zig-cache", zig},
      {"zig-out", zig},
      {".terraform", {"Terraform providers", "Restored by terraform init"}},
      {".pytest_cache", {"Python bytecode", "Regenerated automatically"}},
      {"Pods", {"CocoaPods (in projects)", "Restored by pod install"}},
      {"DerivedData", {"Xcode DerivedData (in projects)", "Rebuilt automatically by Xcode"}},
  };
  return dirs;
}

void walk(const DiskNode& node, std::vector<TreeWin>& into) {
  const auto& dirs = artifactDirs();
  for (const DiskNode child : node.children()) {
    if (!child.isDir()) continue;
    const std::string_view name = child.name();
    const auto dir = dirs.find(name);
    if (dir == dirs.end()) {
      walk(child, into);
    } else if (child.size() >= leastArtifactBytes) {
      into.push_back({.path = child.path(),
                      .name = std::string(name),
                      .bytes = child.size(),
                      .category = std::string(dir->second.category),
                      .note = std::string(dir->second.note)});
    }
  }
}

std::vector<TreeWin> findTreeWins(const DiskNode& root) {
  std::vector<TreeWin> wins;
  walk(root, wins);
  sortLargestFirst(wins);
  return wins;
}

std::vector<LargeOldFile> largeOld(const std::string& scope, const Shell::Run& run,
                                   const FileFacts& facts) {
  constexpr double timeout = 20;
  const std::string query = "kMDItemFSSize >= " + std::to_string(leastFileBytes);
  const std::string text = toolText(run, searchTool, {"-onlyin", scope, query}, timeout);
  const double cutOff = (facts.now ? facts.now() : secondsNow()) - idleSeconds;
  std::vector<LargeOldFile> files;
  for (const std::string_view line : linesOf(text, mostFilesRead)) {
    std::string path(line);
    const FileAccess::Values values = facts.files.valuesOf(path);
    const double modified = values.modified.value_or(distantPast);
    if (!(modified < cutOff)) continue;
    const std::string_view name = lastPathComponent(line);
    files.push_back({.name = std::string(name),
                     .path = std::move(path),
                     .bytes = values.allocated.value_or(values.size.value_or(0)),
                     .kind = std::string(rawText(FileKindRules::classify(name, false))),
                     .mtimeMs = milliseconds(modified)});
  }
  sortLargestFirst(files);
  return files;
}

std::int64_t localSnapshotCount(const Shell::Run& run) {
  constexpr double timeout = 8;
  constexpr std::string_view mark = "com.apple.TimeMachine";
  const std::string text = toolText(run, snapshotTool, {"listlocalsnapshots", "/"}, timeout);
  const std::vector<std::string_view> lines = linesOf(text);
  return std::count_if(lines.begin(), lines.end(), [&](std::string_view line) {
    return line.find(mark) != std::string_view::npos;
  });
}

const std::vector<std::string>& thinArguments() {
  static const std::vector<std::string> arguments = {"thinlocalsnapshots", "/", "21474836480", "4"};
  return arguments;
}

std::string thinLocalSnapshots(const Shell::Run& run) {
  constexpr double timeout = 60;
  return toolText(run, snapshotTool, thinArguments(), timeout);
}

}  // namespace tessaly::BigWinsEngine
