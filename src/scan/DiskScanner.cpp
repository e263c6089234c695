#include "scan/DiskScanner.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>

#include "platform/CheckedArithmetic.h"
#include "platform/DirectoryWalk.h"
#include "platform/ResolvedPath.h"
#include "scan/Freeze.h"
#include "scan/Package.h"
#include "scan/ScanAccumulator.h"
#include "scan/ScanLimits.h"
#include "scan/ScanProgress.h"
#include "scan/SkipRules.h"

namespace tessaly::DiskScanner {

namespace {

using Index = ScanAccumulator::Index;
using Item = DirectoryWalk::Item;
using Type = DirectoryWalk::Type;

// Mark for a directory inside a package whose contents count as one item.
constexpr std::uint8_t insidePackage = 1;

std::string rootName(const std::string& root) {
  return root == "/" ? "Macintosh HD" : root.substr(root.rfind('/') + 1);
}

// Size that an item inside a package adds to the package. Skip rules do not apply in there.
std::int64_t sizeInPackage(const Item& item) {
  const bool adds = item.type != Type::directory && item.type != Type::link && item.hasAttributes;
  return adds ? item.allocatedSize : 0;
}

// Folds the items of a walk, which come in pre-order, into the accumulator. Each open directory
// gathers the sizes below it and hands its sum to its parent when it is left, so an item costs the
// same at any depth.
class Folding {
 public:
  Folding(const std::string& name, const NameSet& important)
      : accumulator_(name), important_(important) {
    open_.push_back({.node = ScanAccumulator::root, .keepsSmallFiles = important_.contains(name)});
  }

  // Leaves all open directories that cannot contain an item of this depth.
  void leaveTo(std::uint32_t depth) {
    while (open_.size() > depth) leaveDirectory();
  }

  // Adds an item to the open directory. `isDir` is the flag of its node.
  void add(const Item& item, std::int64_t size, bool isDir) {
    Directory& parent = open_.back();
    const double mtime = item.hasAttributes ? item.mtime : 0;
    parent.size = checkedAdd(parent.size, size);
    parent.mtime = std::max(parent.mtime, mtime);

    Index node = ScanAccumulator::none;
    if (parent.node != ScanAccumulator::none && !parent.isBundle) {
      if (!isDir && size < scanLimits::smallFile && !parent.keepsSmallFiles) {
        parent.smallFiles = checkedAdd(parent.smallFiles, size);
        return;
      }
      if (item.depth <= scanLimits::depth) {
        node = childNode(parent, item, isDir);
        ScanAccumulator::Node& child = accumulator_[node];
        child.size = checkedAdd(child.size, size);
        child.mtime = std::max(child.mtime, mtime);
        child.isDir = isDir;
      }
    }
    last_ = node;
  }

  // Opens the directory that was added last.
  void enter(const Item& item) {
    open_.push_back({.node = last_,
                     .keepsSmallFiles = important_.contains(item.name),
                     .isBundle = isAppName(item.name)});
  }

  // Adds to the size of the item that was added last, a package that is not entered.
  void addToLast(std::int64_t size) {
    Directory& parent = open_.back();
    parent.size = checkedAdd(parent.size, size);
    if (last_ != ScanAccumulator::none) {
      accumulator_[last_].size = checkedAdd(accumulator_[last_].size, size);
    }
  }

  const ScanAccumulator& finish() {
    leaveTo(0);
    return accumulator_;
  }

 private:
  struct Directory {
    Index node = ScanAccumulator::none;  // none inside a bundle or below the deepest level
    bool keepsSmallFiles = false;
    bool isBundle = false;  // all items below count in its size, without nodes
    std::int64_t size = 0;
    std::int64_t smallFiles = 0;  // added once more to the size of this directory
    double mtime = 0;
    // Children by name; only for a directory that was read in several runs, see
    // DirectoryWalk::Item.
    std::unique_ptr<std::unordered_map<std::string_view, Index>> byName = {};
  };

  void leaveDirectory() {
    const Directory left = std::move(open_.back());
    open_.pop_back();
    if (left.node != ScanAccumulator::none) {
      ScanAccumulator::Node& node = accumulator_[left.node];
      node.size = checkedAdd(node.size, checkedAdd(left.size, left.smallFiles));
      node.mtime = std::max(node.mtime, left.mtime);
    }
    if (open_.empty()) return;
    Directory& parent = open_.back();
    parent.size = checkedAdd(parent.size, left.size);
    parent.mtime = std::max(parent.mtime, left.mtime);
  }

  Index childNode(Directory& parent, const Item& item, bool isDir) {
    if (!item.mayComeTwice) return accumulator_.append(parent.node, item.name, isDir);
    if (parent.byName == nullptr) {
      parent.byName = std::make_unique<std::unordered_map<std::string_view, Index>>();
      for (Index at = accumulator_[parent.node].firstChild; at != ScanAccumulator::none;
           at = accumulator_[at].nextSibling) {
        parent.byName->emplace(accumulator_[at].nameView(), at);
      }
    }
    const auto found = parent.byName->find(item.name);
    if (found != parent.byName->end()) return found->second;
    const Index node = accumulator_.append(parent.node, item.name, isDir);
    parent.byName->emplace(accumulator_[node].nameView(), node);
    return node;
  }

  ScanAccumulator accumulator_;
  const NameSet& important_;
  std::vector<Directory> open_;
  Index last_ = ScanAccumulator::none;
};

// One call of scan().
class Scan {
 public:
  Scan(const std::string& root, const Callbacks& callbacks, const Options& options,
       const Places& places)
      : root_(resolvedPath(root)),
        callbacks_(callbacks),
        expandPackages_(options.expandPackages),
        threads_(options.threads),
        rules_(root_, options, places),
        important_(places.importantFolders),
        folding_(rootName(root_), important_) {}

  DiskNode run() {
    DirectoryWalk walk(
        root_, [this](const DirectoryWalk::Candidate& candidate) { return decide(candidate); },
        threads_, nullptr,
        [this](const DirectoryWalk::Candidate& item, int code) { tell(item, code); });
    if (!walk.isOpen()) {
      if (callbacks_.percent) callbacks_.percent(1.0);
      return frozen();
    }
    const std::size_t topCount =
        callbacks_.percent || callbacks_.progress ? DirectoryWalk::countEntries(root_) : 0;
    ScanProgress progress(callbacks_, topCount);
    if (callbacks_.percent) callbacks_.percent(0.0);

    std::uint64_t items = 0;
    while (const Item* item = walk.next()) {
      if (item->mark == insidePackage) {
        packageContents_ = checkedAdd(packageContents_, sizeInPackage(*item));
        continue;
      }
      closePackage();
      ++items;
      if (isCancelled()) {
        // Freezing takes a moment; the readers ahead have no use during it.
        walk.stop();
        if (callbacks_.progress) callbacks_.progress("Cancelled");
        break;
      }
      take(*item, items, progress);
    }
    closePackage();
    progress.finishLastTop();
    if (!isCancelled()) {
      if (callbacks_.percent) callbacks_.percent(1.0);
      if (callbacks_.progress) callbacks_.progress("Building map…");
    }
    return frozen();
  }

 private:
  bool isCancelled() const { return callbacks_.isCancelled && callbacks_.isCancelled(); }

  DiskNode frozen() { return freeze(folding_.finish(), root_, important_, expandPackages_); }

  // Called on the threads that read ahead.
  DirectoryWalk::Descent decide(const DirectoryWalk::Candidate& candidate) const {
    if (candidate.mark == insidePackage) return {.enter = true, .mark = insidePackage};
    if (rules_.skips(candidate.name, [&] { return candidate.path(); }) ||
        rules_.skipsAtRoot(candidate.name, candidate.depth)) {
      return {.enter = false};
    }
    const bool opaque = !expandPackages_ && isPackageName(candidate.name);
    return {.enter = true, .mark = opaque ? insidePackage : std::uint8_t{0}};
  }

  // The walk reads the attributes of a file before it asks whether the file is left out.
  void tell(const DirectoryWalk::Candidate& item, int code) const {
    if (!callbacks_.unreadable || (item.depth > 0 && !decide(item).enter)) return;
    callbacks_.unreadable(SystemError::fromErrno(code, item.path()));
  }

  void take(const Item& item, std::uint64_t items, ScanProgress& progress) {
    if (item.type == Type::link) return;
    folding_.leaveTo(item.depth);
    names_.resize(item.depth - 1);
    const bool top = item.depth == 1;
    if (rules_.skips(item.name, [&] { return path(item); })) {
      if (top) progress.finishTop(item.name);
      return;
    }
    if (top) progress.reachTop(item.name);
    progress.countItem(items);
    if (rules_.skipsAtRoot(item.name, item.depth)) {
      progress.finishTop(item.name);
      return;
    }

    const bool isPackage = isPackageName(item.name);
    if (item.type != Type::directory) {
      folding_.add(item, item.hasAttributes ? item.allocatedSize : 0, isPackage);
      return;
    }
    if (isPackage && !expandPackages_) {
      packageOwn_ = item.hasAttributes ? item.allocatedSize : 0;
      packageContents_ = 0;
      inPackage_ = true;
      folding_.add(item, packageOwn_, true);
      return;
    }
    folding_.add(item, 0, true);
    folding_.enter(item);
    names_.emplace_back(item.name);
  }

  // The package counts as much as its contents if those are larger than its own entry.
  void closePackage() {
    if (!inPackage_) return;
    inPackage_ = false;
    if (packageContents_ > packageOwn_) folding_.addToLast(packageContents_ - packageOwn_);
  }

  std::string path(const Item& item) const {
    std::string text = root_ == "/" ? std::string() : root_;
    for (const std::string& name : names_) text.append("/").append(name);
    return text.append("/").append(item.name);
  }

  const std::string root_;
  const Callbacks& callbacks_;
  const bool expandPackages_;
  const int threads_;
  const SkipRules rules_;
  const NameSet important_;
  Folding folding_;
  std::vector<std::string> names_;  // names of the open directories below the root
  bool inPackage_ = false;
  std::int64_t packageOwn_ = 0;
  std::int64_t packageContents_ = 0;
};

}  // namespace

DiskNode scan(const std::string& root, const Callbacks& callbacks, const Options& options,
              const Places& places) {
  return Scan(root, callbacks, options, places).run();
}

}  // namespace tessaly::DiskScanner
