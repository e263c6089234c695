#include "support/SequentialScan.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <unistd.h>

#include "support/Descriptor.h"
#include "support/SequentialTree.h"

namespace tessaly::SequentialScan {
namespace {

namespace fs = std::filesystem;
using Item = FolderEnumerator::Item;

// An absolute path with links resolved as far as it exists, without a trailing "/".
std::string resolved(const std::string& path) {
  std::error_code error;
  std::string canonical = fs::canonical(path, error).native();
  if (!error) return canonical;
  std::string plain = fs::absolute(path).lexically_normal().native();
  while (plain.size() > 1 && plain.ends_with('/')) plain.pop_back();
  return plain;
}

std::string parentOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::optional<std::vector<std::string>> partsBetween(const std::string& root,
                                                     const std::string& path) {
  if (root == path) return std::vector<std::string>{};
  const std::string prefix = root == "/" ? "/" : root + "/";
  if (!path.starts_with(prefix)) return std::nullopt;
  std::vector<std::string> parts;
  std::string piece;
  for (const char character : path.substr(prefix.size()) + "/") {
    if (character != '/') {
      piece += character;
    } else if (!piece.empty()) {
      parts.push_back(std::move(piece));
      piece.clear();
    }
  }
  return parts;
}

bool isDirectory(const Item& item) {
  return item.values && S_ISDIR(item.values->st_mode);
}
bool isLink(const Item& item) {
  return item.values && S_ISLNK(item.values->st_mode);
}

// A directory has no blocks to count, only a length.
std::int64_t allocatedBytes(const Item& item) {
  if (!item.values) return 0;
  if (S_ISDIR(item.values->st_mode)) return item.values->st_size;
  return std::int64_t{item.values->st_blocks} * 512;
}

std::optional<double> modified(const Item& item) {
  if (!item.values) return std::nullopt;
  const timespec& time = item.values->st_mtim;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::int64_t packageSize(const Item& package) {
  FolderEnumerator enumerator(package.name, package.path);
  std::int64_t total = 0;
  if (!enumerator.made()) return 0;
  while (const auto item = enumerator.nextObject()) {
    if (isLink(*item)) {
      enumerator.skipDescendants();
    } else if (!isDirectory(*item)) {
      total += allocatedBytes(*item);
    }
  }
  return total;
}

bool endsInOneOf(const std::string& name, const auto& suffixes) {
  return std::any_of(std::begin(suffixes), std::end(suffixes),
                     [&](const auto& suffix) { return name.ends_with(suffix); });
}

constexpr std::array<const char*, 3> packageSuffixes = {".app", ".photoslibrary", ".sparsebundle"};

class Walk {
 public:
  Walk(const std::string& root, const DiskScanner::Callbacks& callbacks,
       const DiskScanner::Options& options, const Places& places)
      : rootPath_(resolved(root)), callbacks_(callbacks), options_(options), places_(places) {
    acc_.name = rootPath_ == "/" ? "Macintosh HD" : rootPath_.substr(rootPath_.rfind('/') + 1);
    acc_.path = rootPath_;
    acc_.isDir = true;
  }

  DiskNode run(const FolderEnumerator::SiblingOrder& order) {
    FolderEnumerator enumerator(rootPath_, rootPath_, order);
    if (!enumerator.made()) {
      tellPercent(1.0);
      return frozen();
    }
    const auto contents = namesIn(rootPath_);
    topCount_ = std::max<std::size_t>(contents ? contents->size() : 0, 1);
    tellPercent(0.0);
    while (const auto item = enumerator.nextObject()) {
      ++items_;
      if (isCancelled()) {
        tellProgress("Cancelled");
        break;
      }
      take(*item, enumerator);
    }
    finish(current_);
    if (!isCancelled()) {
      tellPercent(1.0);
      tellProgress("Building map…");
    }
    return frozen();
  }

 private:
  void take(const Item& item, FolderEnumerator& enumerator) {
    if (isLink(item)) {
      enumerator.skipDescendants();
      return;
    }
    const std::string lowerName = lowerCased(item.name);
    const bool isTopLevel = parentOf(item.path) == rootPath_;
    if (isSkipped(item, lowerName)) {
      if (isTopLevel) finish(item.name);
      enumerator.skipDescendants();
      return;
    }
    // Links are never entered, so the path of an item has no links below the root.
    const auto parts = partsBetween(rootPath_, item.path);
    if (!parts || parts->empty()) return;
    const std::string& first = parts->front();
    if (!current_ || *current_ != first) {
      finish(current_);
      tellPercent(fraction());
      tellProgress(std::to_string(wholePercent()) + "%  " + first);
      current_ = first;
    }
    if (items_ % 1500 == 0) {
      tellProgress(std::to_string(wholePercent()) + "%  Mapping " + *current_);
    }
    if (rootPath_ == "/" && places_.skipRootNames.contains(first)) {
      finish(first);
      enumerator.skipDescendants();
      return;
    }
    fold(item, *parts, endsInOneOf(lowerName, packageSuffixes), enumerator);
  }

  void fold(const Item& item, const std::vector<std::string>& parts, bool isPackage,
            FolderEnumerator& enumerator) {
    const bool dir = isDirectory(item);
    std::int64_t own = 0;
    if (!dir || (isPackage && !options_.expandPackages)) own = allocatedBytes(item);
    const bool isOpaque = isPackage && !options_.expandPackages;
    const auto mtime = modified(item);
    add(acc_, parts, own, dir || isPackage, rootPath_, mtime, places_.importantFolders);
    if (!isOpaque) return;
    enumerator.skipDescendants();
    if (!dir) return;
    const std::int64_t whole = packageSize(item);
    if (whole > own) {
      add(acc_, parts, whole - own, true, rootPath_, mtime, places_.importantFolders);
    }
  }

  bool isSkipped(const Item& item, const std::string& lowerName) const {
    const auto& paths = places_.skipPaths;
    return places_.skipNames.contains(item.name) || options_.extraNames.contains(item.name) ||
           endsInOneOf(lowerName, options_.extraSuffixes) ||
           isExcluded(item.path, options_.extraPrefixes) ||
           std::find(paths.begin(), paths.end(), item.path) != paths.end();
  }

  double fraction() const {
    const double share = static_cast<double>(finished_.size()) / static_cast<double>(topCount_);
    return std::clamp(share, 0.0, 1.0);
  }
  int wholePercent() const { return static_cast<int>(fraction() * 100); }

  void finish(const std::optional<std::string>& name) {
    if (!name || name->empty()) return;
    if (finished_.insert(*name).second) tellPercent(fraction());
  }

  void tellProgress(const std::string& line) const {
    if (callbacks_.progress) callbacks_.progress(line);
  }
  void tellPercent(double value) const {
    if (callbacks_.percent) callbacks_.percent(value);
  }
  bool isCancelled() const { return callbacks_.isCancelled && callbacks_.isCancelled(); }

  DiskNode frozen() const {
    return freeze(acc_, 0, "", options_.expandPackages, places_.importantFolders);
  }

  std::string rootPath_;
  const DiskScanner::Callbacks& callbacks_;
  const DiskScanner::Options& options_;
  const Places& places_;
  Acc acc_;
  std::set<std::string> finished_;
  std::optional<std::string> current_;
  std::size_t topCount_ = 1;
  std::size_t items_ = 0;
};

}  // namespace

DiskNode scan(const std::string& root, const DiskScanner::Callbacks& callbacks,
              const DiskScanner::Options& options, const Places& places,
              const FolderEnumerator::SiblingOrder& order) {
  Walk walk(root, callbacks, options, places);
  const Descriptor before(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  DiskNode node = walk.run(order);
  if (before && fchdir(before.get()) != 0) fs::current_path("/");
  return node;
}

std::optional<std::vector<std::string>> relativeParts(const std::string& root,
                                                      const std::string& path) {
  return partsBetween(resolved(root), resolved(path));
}

bool isExcluded(const std::string& path, const std::vector<std::string>& prefixes) {
  return std::any_of(prefixes.begin(), prefixes.end(), [&](std::string prefix) {
    if (prefix.empty()) return false;
    if (prefix.ends_with('/')) prefix.pop_back();
    return path == prefix || path.starts_with(prefix + "/");
  });
}

}  // namespace tessaly::SequentialScan
