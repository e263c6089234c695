// Looks at one item and at all that is in it, so that a later look can tell whether anything has
// changed. Links are looked at, never followed; what a file system mounted below holds is an error
// (EBUSY). Safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/FileIdentity.h"
#include "platform/SystemError.h"

namespace tessaly::TreeSurvey {

struct Entry {
  std::string path;  // bytes: the name that was given for the item, and behind it the way below it
  FileIdentity::Kind kind = FileIdentity::Kind::other;
  std::int64_t size = 0;  // bytes
  // 0 where the content can be read, else the errno that says why not: EACCES; EOPNOTSUPP for what
  // is neither a file nor a folder; of a link what keeps it from leading to a file or a folder.
  int obstacle = 0;
};

struct State {
  FileIdentity item;
  // Of the item with all that is in it: another one once anything was added, removed, replaced,
  // written to or closed to readers.
  std::uint64_t fingerprint = 0;

  friend bool operator==(const State&, const State&) = default;
};

// Hands the item at the absolute `path` to `take` under the name `name`, and then everything in it,
// in no order. A folder that cannot be read is handed over without what is in it. When `take`
// returns false the survey ends with ECANCELED.
Result<State> of(const std::string& path, const std::string& name,
                 const std::function<bool(const Entry&)>& take);

}  // namespace tessaly::TreeSurvey
