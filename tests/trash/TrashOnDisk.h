// A folder on disk with items to move to the Trash and a home Trash of its own, and functions to
// examine them.
#pragma once

#include <cstdint>
#include <string>
#include <unistd.h>
#include <vector>

#include "platform/linux/UserTrashCan.h"
#include "platform/linux/trash/UserTrashMover.h"
#include "support/TempTree.h"

namespace tessaly {

// The path in the record of the item at `trashPath`; "" without a readable record.
std::string recordedPath(const std::string& trashPath);

std::string infoPathOf(const std::string& trashPath);

// The item in a Trash, as if our mover had moved it there.
ItemInTrash knownInTrash(const std::string& trashPath);

bool isThere(const std::string& path);  // also a dangling link

// "" for success, else the error.
std::string told(const Outcome& outcome);
std::string told(const Result<ItemInTrash>& moved);
std::string told(const EmptiedTrash& emptied);  // "" if nothing has failed

// The clock of the file system, advanced by an hour, so that new records count as old.
std::int64_t anHourLater(const FileDescriptor& folder);

class TrashOnDisk {
 public:
  explicit TrashOnDisk(std::string_view items = {}) : tree(items) { tree.plant("here/\nhome/\n"); }

  TrashMover& mover() { return mover_; }
  TrashCan& can() { return can_; }  // of the home Trash only, one hour later
  std::string at(const std::string& below) const { return tree.at("here/" + below); }
  // For the present user.
  TrashConfig config() const {
    return {.homeTrash = homeTrash(), .mountinfo = "/proc/self/mountinfo", .user = geteuid()};
  }
  // The same, with only the file systems mounted at `points`: the user who runs the tests may have
  // a Trash elsewhere.
  TrashConfig configWith(const std::vector<std::string>& points) const;
  std::string homeTrash() const { return tree.at("home/data/Trash"); }

  void put(const std::string& path, const std::string& content);
  static void remove(const std::string& path) { removeTreeOrFile(path); }
  // Removes the item with its record.
  static void takeOut(const std::string& trashPath);
  static bool has(const std::string& path) { return isThere(path); }
  static std::string contentOf(const std::string& path);

  // Names in "files" and "info" of the home Trash; empty if there is no such folder.
  std::vector<std::string> files() const { return namesIn(homeTrash() + "/files"); }
  std::vector<std::string> infos() const { return namesIn(homeTrash() + "/info"); }

  static std::vector<std::string> namesIn(const std::string& folder);

  TempTree tree;

 private:
  static void removeTreeOrFile(const std::string& path);

  UserTrashMover mover_ = UserTrashMover(config());
  UserTrashCan can_ = UserTrashCan(configWith({}), anHourLater);
};

}  // namespace tessaly
