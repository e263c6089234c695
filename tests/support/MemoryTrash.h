// A Trash for a disk that is a list of paths in memory.
#pragma once

#include <cerrno>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/TrashCan.h"
#include "platform/TrashMover.h"

namespace tessaly {

class MemoryTrash final : public TrashMover, public TrashCan {
 public:
  // Adds a new item, and missing folders above it. `content` distinguishes items.
  void put(const std::string& path, const std::string& content = "");
  // Removes the item and everything in it.
  void remove(const std::string& path);
  bool has(const std::string& path) const { return items_.contains(path); }
  // "" for a missing item.
  std::string contentOf(const std::string& path) const;

  // From now on moving or deleting the item at `path` fails with this errno.
  void refuse(const std::string& path, int code = EACCES) { refused_[path] = code; }
  // From now on called at the start of each move to the Trash, with its path.
  void beforeMoves(std::function<void(const std::string& path)> act) {
    beforeMove_ = std::move(act);
  }
  // From now on moves succeed without reporting where the item went.
  void tellNoPlaces() { tellsPlaces_ = false; }

  Result<ItemInTrash> moveToTrash(const std::string& path) override;
  Outcome putBack(const ItemInTrash& item, const std::string& original) override;

  Result<std::int64_t> count() override;
  EmptiedTrash empty() override;

  // The folder that items are moved to.
  static constexpr const char* trash = "/home/user/.Trash";

 private:
  struct Item {
    std::string content;
    unsigned number = 0;  // never reused
  };

  void makeFoldersAbove(const std::string& path);
  TrashIdentity identityOf(const std::string& path) const;
  std::vector<std::string> itemsInTrash() const;
  void move(const std::string& from, const std::string& to);

  unsigned last_ = 0;
  std::map<std::string, Item> items_ = {{"/", {}}};
  std::map<std::string, int> refused_;
  std::function<void(const std::string& path)> beforeMove_;
  bool tellsPlaces_ = true;
};

}  // namespace tessaly
