// A file that another program writes and that is to be seen by its name only once it is whole. It
// is written in a private folder beside the place where it is to stand, and moved there in one
// step.
//
// The folder's name begins with ".tessaly-", and nobody but the user may enter it. It goes with the
// object, with all that was written there; a program that is killed leaves it behind.
//
// One object belongs to one thread at a time.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/FileIdentity.h"
#include "platform/SystemError.h"

namespace tessaly {

class StagedFile {
 public:
  struct Placed {
    std::string path;
    FileIdentity identity;
  };

  // For a file that is to stand at the absolute `target`, whose folder is there.
  static Result<StagedFile> beside(const std::string& target);

  StagedFile(StagedFile&& other) noexcept;
  StagedFile& operator=(StagedFile&& other) noexcept;
  ~StagedFile();

  // Where the file is to be written; nothing stands there at first. It has the extension of the
  // target.
  const std::string& path() const;

  // Moves the written file to its place, once it is on disk, and tells where it stands. What stands
  // at the target is replaced only if it is the file or the link `replaced`, and then it is
  // deleted; a link is replaced itself and not followed. Where something else stands there the file
  // gets a name of its own beside it, with a number: "out 2.zip". To be called once. After an error
  // nothing that stood there is lost.
  //
  // Where the file system cannot swap two files in one step, what comes to stand at the target
  // between a last look and the move is replaced too.
  Result<Placed> place(const std::optional<FileIdentity>& replaced);

 private:
  struct State;
  explicit StagedFile(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
