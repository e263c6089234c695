// Goes through a folder with all that is below it, each folder after what is in it. It never
// follows a link and never leaves the mount that it started on. Few descriptors are open whatever
// the depth, and the stack does not grow; a way up is taken only to the folder that the way down
// came from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"

namespace tessaly {

class TreePass {
 public:
  virtual ~TreePass() = default;
  TreePass(const TreePass&) = delete;
  TreePass& operator=(const TreePass&) = delete;

  // Goes through the folder `name` in `above`, whose path is `path`. Gives the first error. What
  // vanishes meanwhile is none; a file system mounted below is one (EBUSY).
  Outcome run(const FileDescriptor& above, const std::string& name, const std::string& path);

  // The same, but ESTALE when another folder than `item` has that name.
  Outcome run(const FileDescriptor& above, const std::string& name, const ItemIdentity& item,
              const std::string& path);

 protected:
  enum class AfterError { goOn, stop };

  explicit TreePass(AfterError afterError) : afterError_(afterError) {}

  // Errors are errno values, and 0 for none.

  // Opens `held`, which is open with O_PATH, for reading. An empty descriptor leaves it out, and
  // then errno has the error.
  virtual FileDescriptor open(const FileDescriptor& held) = 0;

  // An entry of a folder that was opened. Sets `isFolder` when it is to be gone through.
  virtual int meet(const FileDescriptor& folder, std::string_view name, unsigned char type,
                   bool& isFolder) = 0;

  // All in the folder `name` has been met without an error. ENOTEMPTY has it gone through again, a
  // few times.
  virtual int leave(const FileDescriptor& above, const std::string& name) = 0;

  // The path of an entry that is being met.
  std::string pathOfEntry(const std::string& name) const;

 private:
  struct Level {
    std::string name;
    ItemIdentity identity;
    std::vector<std::string> folders;  // still to be gone through, the last of them now
    int rounds = 0;                    // that the last of them has had
    bool hasFailed = false;
  };

  void goDown();
  bool goUp();
  void finishFolder(int code);
  void fail(int code, const std::string& name);
  void read();

  const AfterError afterError_;
  std::string path_;
  std::optional<ItemIdentity> item_;  // that the pass is to start with
  std::vector<Level> levels_;
  FileDescriptor current_;  // of the last level
  std::optional<SystemError> error_;
};

}  // namespace tessaly
