// A small set of names, searched once for each item of a walk. Most answers are "no", and most of
// those need only the first byte. Immutable; safe from any thread.
#pragma once

#include <algorithm>
#include <bitset>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class NameSet {
 public:
  NameSet() = default;

  template <typename Names>
  explicit NameSet(const Names& names) {
    add(names);
  }

  template <typename Names>
  void add(const Names& names) {
    for (const std::string& name : names) {
      if (!name.empty()) firstBytes_.set(static_cast<unsigned char>(name.front()));
      names_.push_back(name);
    }
    std::sort(names_.begin(), names_.end());
  }

  bool contains(std::string_view name) const {
    if (!name.empty() && !firstBytes_.test(static_cast<unsigned char>(name.front()))) return false;
    return std::binary_search(names_.begin(), names_.end(), name);
  }

  bool empty() const { return names_.empty(); }

 private:
  std::bitset<256> firstBytes_;
  std::vector<std::string> names_;
};

}  // namespace tessaly
