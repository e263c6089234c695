// A folder on disk with items to throw away and a home Trash of its own, and what one can see of
// them.
#pragma once

#include <cstdint>
#include <string>
#include <unistd.h>
#include <vector>

#include "platform/linux/UserTrashCan.h"
#include "platform/linux/trash/UserTrashMover.h"
#include "support/TempTree.h"

namespace tessaly {

// What the info of the item at `trashPath` records as its path; "" where there is no info, or none
// that can be read.
std::string recordedPath(const std::string& trashPath);

std::string infoPathOf(const std::string& trashPath);

// The item that stands in a Trash now, as if our mover had moved it there.
ItemInTrash knownInTrash(const std::string& trashPath);

bool isThere(const std::string& path);  // also a link that leads nowhere

// "" for a success, else why not.
std::string told(const Outcome& outcome);
std::string told(const Result<ItemInTrash>& moved);
std::string told(const EmptiedTrash& emptied);  // "" where nothing has failed

// The clock of the file system, put forward, so that what was made just now is no longer young.
std::int64_t anHourLater(const FileDescriptor& folder);

class TrashOnDisk {
 public:
  explicit TrashOnDisk(std::string_view items = {}) : tree(items) { tree.plant("here/\nhome/\n"); }

  TrashMover& mover() { return mover_; }
  TrashCan& can() { return can_; }  // of the home alone, in an hour
  std::string at(const std::string& below) const { return tree.at("here/" + below); }
  // Of the user of the moment.
  TrashConfig config() const {
    return {.homeTrash = homeTrash(), .mountinfo = "/proc/self/mountinfo", .user = geteuid()};
  }
  // The same, and of all file systems only those mounted at `points`: whoever runs the tests may
  // have a Trash of his own elsewhere.
  TrashConfig configWith(const std::vector<std::string>& points) const;
  std::string homeTrash() const { return tree.at("home/data/Trash"); }

  void put(const std::string& path, const std::string& content);
  static void remove(const std::string& path) { removeTreeOrFile(path); }
  // With its info.
  static void takeOut(const std::string& trashPath);
  static bool has(const std::string& path) { return isThere(path); }
  static std::string contentOf(const std::string& path);

  // Names in "files" and "info" of the home Trash; none where there is no such folder.
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
