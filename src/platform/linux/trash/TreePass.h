// Visits a folder and everything below it, each folder after its contents. Never follows a link and
// never leaves its mount. Needs few descriptors at any depth, and no recursion; it returns only to
// the folder that it came from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

class TreePass {
 public:
  virtual ~TreePass() = default;
  TreePass(const TreePass&) = delete;
  TreePass& operator=(const TreePass&) = delete;

  // Visits the folder `name` in `above`, whose path is `path`. Returns the first error. Entries
  // that vanish meanwhile are no error; a mount point below is one (EBUSY).
  Outcome run(const FileDescriptor& above, const std::string& name, const std::string& path);

  // The same, but ESTALE if another folder than `item` has that name.
  Outcome run(const FileDescriptor& above, const std::string& name, const ItemIdentity& item,
              const std::string& path);

 protected:
  enum class AfterError { goOn, stop };

  explicit TreePass(AfterError afterError) : afterError_(afterError) {}

  // Return values are errno values, 0 for success.

  // Opens `held`, which is open with O_PATH, for reading. An empty descriptor, with errno set,
  // skips the folder.
  virtual FileDescriptor open(const FileDescriptor& held) = 0;

  // Called for each entry of an opened folder. Sets `isFolder` if the entry is to be visited.
  virtual int meet(const FileDescriptor& folder, std::string_view name, unsigned char type,
                   bool& isFolder) = 0;

  // Called after the contents of the folder `name` were visited without an error. If it returns
  // ENOTEMPTY, the folder is visited again, a few times at most.
  virtual int leave(const FileDescriptor& above, const std::string& name) = 0;

  // The path of the entry passed to meet().
  std::string pathOfEntry(const std::string& name) const;

 private:
  struct Level {
    std::string name;
    ItemIdentity identity;
    std::vector<std::string> folders;  // still to be visited; the last one is current
    int rounds = 0;                    // number of visits of the last one
    bool hasFailed = false;
  };

  void goDown();
  bool goUp();
  void finishFolder(int code);
  void fail(int code, const std::string& name);
  void read();

  const AfterError afterError_;
  std::string path_;
  std::optional<ItemIdentity> item_;  // folder that the pass must start with
  std::vector<Level> levels_;
  FileDescriptor current_;  // folder of the last level
  std::optional<SystemError> error_;
};

}  // namespace tessaly
