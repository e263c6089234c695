#include "reclaim/ZipEngine.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <iterator>
#include <optional>
#include <span>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

#include "platform/FileAccess.h"
#include "platform/ResolvedPath.h"
#include "scan/PathName.h"
#include "scan/RelativeParts.h"
#include "system/Shell.h"

namespace tessaly::ZipEngine {

namespace {

namespace fs = std::filesystem;

constexpr const char* zip = "/usr/bin/zip";
constexpr double allowedSeconds = 180;

bool isThere(const std::string& path) {
  return FileAccess::ofMachine().kindOf(path) != FileAccess::Kind::nothing;
}

std::string withoutSlashAtItsEnd(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string parentOf(const std::string& path) {
  return fs::path(withoutSlashAtItsEnd(path)).parent_path().native();
}

std::string standardised(const std::string& path) {
  return withoutSlashAtItsEnd(fs::path(path).lexically_normal().native());
}

// Where the item itself lies, be it a link or not.
std::string location(const std::string& path) {
  const fs::path plain = standardised(path);
  return standardised(resolvedPath(plain.parent_path().native()) + "/" + plain.filename().native());
}

bool holds(const std::string& folder, const std::string& path) {
  return path == folder || path.starts_with(folder == "/" ? folder : folder + "/");
}

// Whether an archive at `to` would be written over one of the items at `paths`, or into it. The two
// may be told by different ways to the same place.
bool wouldSpoilOne(const std::string& to, const std::vector<std::string>& paths) {
  const std::array targets = {standardised(to), location(to)};
  const auto isInTheWay = [&](const std::string& item) {
    return std::ranges::any_of(targets,
                               [&](const std::string& target) { return holds(item, target); });
  };
  return std::ranges::any_of(paths, [&](const std::string& path) {
    return isInTheWay(standardised(path)) || isInTheWay(location(path)) ||
           isInTheWay(resolvedPath(path));
  });
}

bool isLink(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

// Empty for a path that does not lie below `parent`.
std::string nameBelow(const std::string& parent, const std::string& path) {
  // A link is called what it is called, not what it leads to.
  const bool hasOwnName = isLink(path);
  std::optional<std::vector<std::string>> parts =
      DiskScanner::relativeParts(parent, hasOwnName ? parentOf(path) : path);
  if (!parts) return {};
  if (hasOwnName) parts->emplace_back(lastPathComponent(path));
  std::string name;
  for (const std::string& part : *parts) name += name.empty() ? part : "/" + part;
  return name;
}

// As an argument that zip does not take for an option, or for its standard input.
std::string asArgument(const std::string& name) {
  return name.starts_with('-') ? "./" + name : name;
}

// What all arguments of one run may take up, with the pointers to them. The other half of what the
// system grants is for the environment.
std::size_t argumentRoom() {
  constexpr std::size_t most = std::size_t{1} << 20;
  const long granted = sysconf(_SC_ARG_MAX);
  return granted > 0 ? std::min(static_cast<std::size_t>(granted) / 2, most) : most;
}

// How many of `names`, one at least, go into one run.
std::size_t countForOneRun(std::span<const std::string> names, std::size_t room) {
  std::size_t taken = 0;
  const auto end = std::ranges::find_if(names, [&](const std::string& name) {
    taken += name.size() + 1 + sizeof(char*);
    return taken > room;
  });
  return std::max<std::size_t>(static_cast<std::size_t>(end - names.begin()), 1);
}

// Tells one state of the file at a path from another: zip puts a new file in the place of the
// archive that it adds to. Absent where there is no file.
using FileState = std::tuple<dev_t, ino_t, off_t, time_t, long>;
std::optional<FileState> stateOf(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return FileState(status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                   status.st_mtim.tv_nsec);
}

// Runs zip as often as it takes to hand it all of `names`. False when not everything got its turn.
bool packAll(const std::vector<std::string>& names, const std::string& parent,
             const std::string& to, const Machine& machine) {
  const std::vector<std::string> leading = {"-r", "-q", to};
  const std::size_t room = argumentRoom();
  const auto start = machine.now();
  std::optional<FileState> state = stateOf(to);  // of a file that could not be removed
  bool isWritten = false;
  for (std::span<const std::string> rest = names; !rest.empty();) {
    const std::span<const std::string> turn = rest.first(countForOneRun(rest, room));
    rest = rest.subspan(turn.size());
    std::vector<std::string> args = leading;
    std::ranges::transform(turn, std::back_inserter(args), asArgument);

    const std::chrono::duration<double> passed = machine.now() - start;
    const double left = allowedSeconds - passed.count();
    if (left <= 0) return false;
    machine.run(zip, args, left, parent);

    const std::optional<FileState> before = std::exchange(state, stateOf(to));
    if (state && state != before) {
      isWritten = true;
    } else if (std::ranges::any_of(
                   turn, [&](const std::string& name) { return isThere(parent + "/" + name); })) {
      // The disk is full, say. An archive of earlier turns must not pass for one of everything.
      return false;
    }
  }
  return isWritten;
}

}  // namespace

std::string suggestedName(std::chrono::system_clock::time_point now) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm local{};
  localtime_r(&seconds, &local);
  std::array<char, 64> text{};
  const std::size_t length =
      std::strftime(text.data(), text.size(), "Tessaly-%Y-%m-%d-%H%M.zip", &local);
  return {text.data(), length};
}

std::string commonParent(const std::vector<std::string>& paths) {
  if (paths.empty()) return "/";
  std::string common = parentOf(paths.front());
  for (const std::string& path : paths) {
    const std::string parent = parentOf(path);
    while (!holds(common, parent)) {
      std::string above = parentOf(common);
      if (above.empty() || above == common) return "/";
      common = std::move(above);
    }
  }
  return common.empty() ? "/" : common;
}

bool archive(const std::vector<std::string>& paths, const std::string& to, const Machine& machine) {
  std::vector<std::string> present;
  std::ranges::copy_if(paths, std::back_inserter(present), isThere);
  if (present.empty() || wouldSpoilOne(to, present)) return false;
  const std::string parent = commonParent(present);
  std::vector<std::string> names;
  for (const std::string& path : present) {
    std::string name = nameBelow(parent, path);
    if (!name.empty()) names.push_back(std::move(name));
  }
  if (names.empty()) return false;

  unlink(to.c_str());
  Machine whole = machine;
  if (!whole.run) whole.run = Shell::run;
  if (!whole.now) whole.now = [] { return std::chrono::steady_clock::now(); };
  try {
    return packAll(names, parent, to, whole);
  } catch (...) {
    return false;
  }
}

}  // namespace tessaly::ZipEngine
