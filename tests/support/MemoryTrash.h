// A Trash over a disk that is only a list of paths.
#pragma once

#include <cerrno>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/TrashCan.h"
#include "platform/TrashMover.h"

namespace tessaly {

class MemoryTrash final : public TrashMover, public TrashCan {
 public:
  // Puts a new item there, with the folders above it that are missing. `content` is whatever is to
  // be told apart.
  void put(const std::string& path, const std::string& content = "");
  // Takes away the item and all that is in it.
  void remove(const std::string& path);
  bool has(const std::string& path) const { return items_.contains(path); }
  // "" for an item that is not there.
  std::string contentOf(const std::string& path) const;

  // From now on the item is not moved from where it is, nor deleted there, for this errno.
  void refuse(const std::string& path, int code = EACCES) { refused_[path] = code; }
  // Moves are made, and nobody is told where to.
  void tellNoPlaces() { tellsPlaces_ = false; }

  Result<ItemInTrash> moveToTrash(const std::string& path) override;
  Outcome putBack(const ItemInTrash& item, const std::string& original) override;

  Result<std::int64_t> count() override;
  EmptiedTrash empty() override;

  // The folder that its items go to.
  static constexpr const char* trash = "/home/user/.Trash";

 private:
  struct Item {
    std::string content;
    unsigned number = 0;  // never given again
  };

  void makeFoldersAbove(const std::string& path);
  TrashIdentity identityOf(const std::string& path) const;
  std::vector<std::string> itemsInTrash() const;
  void move(const std::string& from, const std::string& to);

  unsigned last_ = 0;
  std::map<std::string, Item> items_ = {{"/", {}}};
  std::map<std::string, int> refused_;
  bool tellsPlaces_ = true;
};

}  // namespace tessaly
