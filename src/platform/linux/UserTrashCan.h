// The Trash of one user by the freedesktop.org Trash specification, version 1.0: a folder in the
// user's data directory for the home, and one at the top of each other file system.
#pragma once

#include <string>
#include <sys/types.h>

#include "platform/TrashCan.h"

namespace tessaly {

class UserTrashCan : public TrashCan {
 public:
  struct Place {
    std::string homeTrash;  // absolute path
    std::string mountinfo;  // path of the list of mounts, in the kernel's form
    uid_t user = 0;

    // Of the user that this process runs as.
    static Place current();
  };

  explicit UserTrashCan(Place place = Place::current()) : place_(std::move(place)) {}

  // Fails when a Trash of the user is there and cannot be read. A file system that does not let the
  // user look at its top has none.
  Result<std::int64_t> count() override;

  // Not to be had so far: an error of the kind notSupported. Nothing is deleted.
  Outcome empty() override;

 private:
  Place place_;
};

}  // namespace tessaly
