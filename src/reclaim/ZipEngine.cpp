#include "reclaim/ZipEngine.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <ctime>
#include <exception>
#include <filesystem>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/ResolvedPath.h"
#include "platform/StagedFile.h"
#include "platform/TreeSurvey.h"
#include "reclaim/ZipListing.h"
#include "scan/PathName.h"
#include "scan/RelativeParts.h"
#include "system/Shell.h"

namespace tessaly::ZipEngine {

namespace {

namespace fs = std::filesystem;

constexpr const char* zip = "/usr/bin/zip";
constexpr double allowedSeconds = 180;

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

// The path of the item itself, even if it is a link: only the links above it are resolved.
std::string location(const std::string& path) {
  const fs::path plain = standardised(path);
  return standardised(resolvedPath(plain.parent_path().native()) + "/" + plain.filename().native());
}

bool holds(const std::string& folder, const std::string& path) {
  return path == folder || path.starts_with(folder == "/" ? folder : folder + "/");
}

// Whether an archive at `to` would overwrite one of the items at `paths`, or be written into it.
// Paths are compared with links resolved, since both may name the same place differently.
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

// Empty for a path that is not below `parent`.
std::string nameBelow(const std::string& parent, const std::string& path) {
  // A link is archived under its own name, not under that of its target.
  const bool hasOwnName = isLink(path);
  std::optional<std::vector<std::string>> parts =
      DiskScanner::relativeParts(parent, hasOwnName ? parentOf(path) : path);
  if (!parts) return {};
  if (hasOwnName) parts->emplace_back(lastPathComponent(path));
  std::string name;
  for (const std::string& part : *parts) name += name.empty() ? part : "/" + part;
  return name;
}

// Prevents zip from reading the name as an option, or as its standard input.
std::string asArgument(const std::string& name) {
  return name.starts_with('-') ? "./" + name : name;
}

// Limit for the arguments of one run, including the pointers to them. The other half of the
// system's limit is for the environment.
std::size_t argumentRoom() {
  constexpr std::size_t most = std::size_t{1} << 20;
  const long granted = sysconf(_SC_ARG_MAX);
  return granted > 0 ? std::min(static_cast<std::size_t>(granted) / 2, most) : most;
}

// How many of `names` go into one run, at least one.
std::size_t countForOneRun(std::span<const std::string> names, std::size_t room) {
  std::size_t taken = 0;
  const auto end = std::ranges::find_if(names, [&](const std::string& name) {
    taken += name.size() + 1 + sizeof(char*);
    return taken > room;
  });
  return std::max<std::size_t>(static_cast<std::size_t>(end - names.begin()), 1);
}

// Items that would be missing from an archive, with their reasons.
class Losses {
 public:
  bool any() const { return count_ > 0; }

  void add(const std::string& item, const std::string& why) {
    if (++count_ > mostTold) return;
    words_ += (words_.empty() ? "" : ", ") + shortened(item) + " (" + why + ")";
  }

  Archived archived() const {
    const int untold = count_ - std::min(count_, mostTold);
    const std::string more = untold > 0 ? " and " + std::to_string(untold) + " more" : "";
    return {.end = Archived::End::incomplete, .cause = words_ + more};
  }

 private:
  static constexpr int mostTold = 3;

  // The end of a long path, which contains the item's own name.
  static std::string shortened(const std::string& item) {
    constexpr std::size_t longest = 120;
    if (item.size() <= longest) return item;
    std::size_t start = item.size() - longest;
    while (start < item.size() && (static_cast<unsigned char>(item[start]) & 0xc0U) == 0x80U) {
      ++start;
    }
    return "…" + item.substr(start);
  }

  std::string words_;
  int count_ = 0;
};

std::string wordsFor(int obstacle) {
  switch (obstacle) {
    case EACCES:
    case EPERM:
      return "cannot be read";
    case EOPNOTSUPP:
      return "neither a file nor a folder";
    case EBUSY:
      return "a disk is mounted in it";
    default:
      return std::generic_category().message(obstacle);
  }
}

// The reason why an entry will not be in the archive, or "".
std::string wordsFor(const TreeSurvey::Entry& entry) {
  if (entry.obstacle == 0) return {};
  const bool isLink = entry.kind == FileIdentity::Kind::link;
  return isLink && entry.obstacle != EACCES ? "a link that leads to no file or folder"
                                            : wordsFor(entry.obstacle);
}

bool isIn(const ZipListing& listing, const TreeSurvey::Entry& entry) {
  const bool isFolder = listing.sizeOf(entry.path + "/").has_value();
  const std::optional<std::int64_t> size = listing.sizeOf(entry.path);
  switch (entry.kind) {
    case FileIdentity::Kind::folder:
      return isFolder;
    case FileIdentity::Kind::file:
      return size == entry.size;
    case FileIdentity::Kind::link:
      return isFolder || size.has_value();
    case FileIdentity::Kind::other:
      break;
  }
  return false;
}

struct Item {
  std::string path;
  std::string name;  // relative to the common parent
  TreeSurvey::State state = {};
};

Archived notMade(std::string cause) {
  return {.end = Archived::End::notMade, .cause = std::move(cause)};
}

// The first line that is not empty, cut to a useful length.
std::string firstLine(std::string_view words) {
  constexpr std::size_t longest = 200;
  words.remove_prefix(std::min(words.find_first_not_of("\n\t "), words.size()));
  return std::string(words.substr(0, std::min(words.find('\n'), longest)));
}

// One call of archive().
class Work {
 public:
  Work(const Request& request, const Services& services) : request_(request), services_(services) {
    if (!services_.run) {
      services_.run = [](const auto& path, const auto& args, double timeout, const auto& cwd,
                         const auto& isCancelled) {
        return Shell::runToEnd(path, args, timeout, cwd, isCancelled);
      };
    }
    if (!services_.now) services_.now = [] { return std::chrono::steady_clock::now(); };
  }

  Archived done() {
    if (std::optional<Archived> failure = nameItems()) return *std::move(failure);
    if (std::optional<Archived> failure = lookBefore()) return *std::move(failure);
    Result<StagedFile> staged = StagedFile::beside(request_.to);
    if (!staged) return notMade(staged.error().description());
    if (std::optional<Archived> failure = pack(staged.value().path())) return *std::move(failure);
    if (std::optional<Archived> failure = compare(staged.value().path())) {
      return *std::move(failure);
    }
    if (isGivenUp()) return {.end = Archived::End::givenUp};
    Result<StagedFile::Placed> placed = staged.value().place(request_.replaced);
    if (!placed) return notMade(placed.error().description());
    Archived archived{.end = Archived::End::made,
                      .path = std::move(placed.value().path),
                      .identity = placed.value().identity};
    for (Item& item : items_) {
      archived.originals.push_back({std::move(item.path), item.state.item});
    }
    return archived;
  }

 private:
  bool isGivenUp() const { return request_.isGivenUp && request_.isGivenUp(); }

  // Each of these steps returns its failure, if any.

  std::optional<Archived> nameItems() {
    if (request_.paths.empty()) return Archived();
    Losses losses;
    bool isAnyThere = false;
    for (const std::string& path : request_.paths) {
      const Result<FileIdentity> found = FileIdentity::of(path);
      if (found) {
        isAnyThere = true;
      } else {
        losses.add(path, found.error().code == ENOENT ? "gone" : wordsFor(found.error().code));
      }
    }
    if (!isAnyThere) return notMade(losses.archived().cause);
    if (losses.any()) return losses.archived();
    if (wouldSpoilOne(request_.to, request_.paths)) {
      return notMade("the archive would lie at or inside an item");
    }
    parent_ = commonParent(request_.paths);
    for (const std::string& path : request_.paths) {
      std::string name = nameBelow(parent_, path);
      if (name.empty()) {
        losses.add(path, "lies elsewhere, behind a link");
      } else {
        items_.push_back({.path = path, .name = std::move(name)});
      }
    }
    if (items_.empty()) return notMade(losses.archived().cause);
    return losses.any() ? std::optional(losses.archived()) : std::nullopt;
  }

  // Finds what zip would leave out before the minutes that zip takes.
  std::optional<Archived> lookBefore() {
    Losses losses;
    for (Item& item : items_) {
      const auto take = [&](const TreeSurvey::Entry& entry) {
        const std::string words = wordsFor(entry);
        if (!words.empty()) losses.add(entry.path, words);
        return !isGivenUp();
      };
      const Result<TreeSurvey::State> state = TreeSurvey::of(item.path, item.name, take);
      if (isGivenUp()) return Archived{.end = Archived::End::givenUp};
      if (state) {
        item.state = state.value();
      } else {
        losses.add(state.error().path, wordsFor(state.error().code));
      }
    }
    return losses.any() ? std::optional(losses.archived()) : std::nullopt;
  }

  // Runs zip several times if the names do not fit into the arguments of one run.
  std::optional<Archived> pack(const std::string& to) {
    std::vector<std::string> names;
    for (const Item& item : items_) names.push_back(item.name);
    const std::size_t room = argumentRoom();
    const auto start = services_.now();
    for (std::span<const std::string> rest = names; !rest.empty();) {
      const std::span<const std::string> turn = rest.first(countForOneRun(rest, room));
      rest = rest.subspan(turn.size());
      std::vector<std::string> args = {"-r", "-q", to};
      std::ranges::transform(turn, std::back_inserter(args), asArgument);

      const std::chrono::duration<double> passed = services_.now() - start;
      const double left = allowedSeconds - passed.count();
      if (left <= 0) return notMade("it takes too long");
      if (isGivenUp()) return Archived{.end = Archived::End::givenUp};
      const Shell::Ending ending = services_.run(zip, args, left, parent_, request_.isGivenUp);
      if (ending.exit.isSuccess()) continue;
      const bool isRead = ending.exit.signal != 0 || !isLossStatus(ending.exit.status);
      if (isRead) return notMade(firstLine(ending.words));
      return Archived{.end = Archived::End::incomplete, .cause = firstLine(ending.words)};
    }
    return std::nullopt;
  }

  // The statuses with which zip reports that it found nothing (12) or could not open a file (18).
  static bool isLossStatus(int status) { return status == 12 || status == 18; }

  std::optional<Archived> compare(const std::string& archive) {
    const std::optional<ZipListing> listing = ZipListing::at(archive);
    if (!listing) return notMade("zip has left no whole archive");
    Losses losses;
    for (const Item& item : items_) {
      const auto take = [&](const TreeSurvey::Entry& entry) {
        const std::string words = wordsFor(entry);
        if (!words.empty()) {
          losses.add(entry.path, words);
        } else if (!isIn(*listing, entry)) {
          losses.add(entry.path, "zip has left it out, or it has changed meanwhile");
        }
        return !isGivenUp();
      };
      const Result<TreeSurvey::State> state = TreeSurvey::of(item.path, item.name, take);
      if (isGivenUp()) return Archived{.end = Archived::End::givenUp};
      if (!state) {
        losses.add(state.error().path, wordsFor(state.error().code));
      } else if (state.value() != item.state && !losses.any()) {
        losses.add(item.name, "changed while it was archived");
      }
    }
    return losses.any() ? std::optional(losses.archived()) : std::nullopt;
  }

  const Request& request_;
  Services services_;
  std::string parent_;
  std::vector<Item> items_;
};

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

Archived archive(const Request& request, const Services& services) {
  try {
    return Work(request, services).done();
  } catch (const ToolError& error) {
    if (error.isGivenUp()) return {.end = Archived::End::givenUp};
    return notMade(error.isTimeOut() ? "it takes too long" : error.what());
  } catch (const std::exception& error) {
    return notMade(error.what());
  }
}

}  // namespace tessaly::ZipEngine
