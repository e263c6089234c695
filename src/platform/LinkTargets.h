// Where symbolic links and aliases lead, and whether anything is there.
//
// Only asks file systems that answer at once. Below automount points, and on file systems that are
// served by another machine or program, nothing is looked for, also where a link only leads through
// them: such a file system may never answer, and a thread that waits for it cannot be ended.
//
// Use an object on one thread at a time. Paths and names are bytes of any length.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MountSnapshot.h"

namespace tessaly {

class LinkTargets {
 public:
  enum class Target : std::uint8_t {
    exists,
    missing,  // certainly: the path leads to nothing, or the links in it form a loop
    unknown,  // it may not be looked for, or the system does not tell
  };

  struct Link {
    // For a symbolic link its text, which may be relative; for an alias an absolute path, empty if
    // the alias is damaged.
    std::string destination = {};
    Target target = Target::unknown;

    friend bool operator==(const Link&, const Link&) = default;
  };

  // Null `mounts`: the present ones. `isCancelled` is asked while a path is followed; once it is
  // true, targets are unknown.
  explicit LinkTargets(const std::shared_ptr<const MountSnapshot>& mounts = nullptr,
                       std::function<bool()> isCancelled = {});
  ~LinkTargets();
  LinkTargets(const LinkTargets&) = delete;
  LinkTargets& operator=(const LinkTargets&) = delete;

  // The symbolic link `name` in `folder`, an absolute path without links. Absent if nothing can be
  // read there, or it is no link any more.
  std::optional<Link> ofLink(const std::string& folder, const std::string& name);

  // The same for a file that leads to another one, as the desktop makes them. Absent if the file is
  // of another kind, or leads to something that is no file of this machine.
  std::optional<Link> ofAlias(const std::string& folder, const std::string& name);

  // Whether a file of this name can be an alias. Pure, safe from any thread.
  static bool mayBeAlias(std::string_view name);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tessaly
