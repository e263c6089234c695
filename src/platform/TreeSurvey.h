// Examines an item and everything in it, so that a later survey can detect any change. Links are
// examined, never followed; a mount point below the item is an error (EBUSY). Safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/FileIdentity.h"
#include "platform/SystemError.h"

namespace tessaly::TreeSurvey {

struct Entry {
  std::string path;  // bytes: the name given for the item, followed by the path below it
  FileIdentity::Kind kind = FileIdentity::Kind::other;
  std::int64_t size = 0;  // bytes
  // 0 if the content can be read, else the errno of the reason: EACCES; EOPNOTSUPP for anything but
  // a file or a folder; for a link, why it does not lead to a file or a folder.
  int obstacle = 0;
};

struct State {
  FileIdentity item;
  // Hash over the item and everything in it: differs after anything was added, removed, replaced,
  // written to or made unreadable.
  std::uint64_t fingerprint = 0;

  friend bool operator==(const State&, const State&) = default;
};

// Passes the item at the absolute `path` to `take` under the name `name`, and then everything in
// it, in no order. A folder that cannot be read is passed without its contents. If `take` returns
// false, the survey ends with ECANCELED.
Result<State> of(const std::string& path, const std::string& name,
                 const std::function<bool(const Entry&)>& take);

}  // namespace tessaly::TreeSurvey
