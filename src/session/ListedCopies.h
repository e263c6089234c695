// Guards the copies that are in the cleanup queue because a list shows them as duplicates: each may
// be moved only if it still is what it was when it was compared. Another program may have changed
// it since, and then it has no copy any more.
//
// A queued item keeps its guard when a later list does not have it, and gets a new one if it has.
// Items that were in no list when they were queued have none.
//
// Main thread only. check(), note() and renew() read the disk.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/FileIdentity.h"
#include "platform/SystemError.h"
#include "scan/DiskNode.h"

namespace tessaly {

class ListedCopies {
 public:
  using Identities = std::unordered_map<std::string, FileIdentity>;  // by path

  // The copies of a new list, as they were compared.
  void take(const Identities& listed);

  // To be called with each new state of the queue.
  void follow(const std::vector<DiskNode>& queue);

  // Whether a queued item may move. Fails if it has changed since it was compared (`changed`), or
  // is another item (`stale`). One that cannot be examined may try: its move fails and says why.
  // To be called for all items before the first of them moves.
  Outcome check(const std::string& path);

  // To be called before an item of a list moves that is not in the queue.
  void note(const std::string& path);

  // To be called after items have moved to the Trash or back that were checked or noted before.
  // The move has changed the time of their last change, also for their other hard links, which may
  // be listed, too.
  void renew(const std::vector<std::string>& paths);

 private:
  Identities listed_;
  Identities queued_;
  Identities unchanged_;  // that were checked or noted, and may move to the Trash or back
};

}  // namespace tessaly
