// The accumulator of the sequential scan, and the pruned tree made from it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly::SequentialScan {

struct Acc {
  std::string name;
  std::string path;
  std::int64_t size = 0;
  bool isDir = false;
  double mtime = 0;
  std::map<std::string, std::unique_ptr<Acc>> children;

  Acc() = default;
  Acc(Acc&&) = default;
  Acc& operator=(Acc&&) = default;
  ~Acc();  // destroys any depth without recursion
};

using FolderNames = std::unordered_set<std::string>;

// Adds one item to `acc`, the root, whose path is `fullRoot`.
void add(Acc& acc, const std::vector<std::string>& parts, std::int64_t size, bool isDir,
         const std::string& fullRoot, std::optional<double> mtime, const FolderNames& important);

DiskNode freeze(const Acc& acc, int depth, const std::string& parentName, bool expandPackages,
                const FolderNames& important);

// `folder` with one component appended.
std::string appended(const std::string& folder, const std::string& component);

// Lower case by Unicode, in any locale; bytes that are not UTF-8 are kept.
std::string lowerCased(const std::string& text);

}  // namespace tessaly::SequentialScan
