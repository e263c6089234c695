// A file that another program writes and that must appear under its name only when it is complete.
// It is written in a private folder beside its target, and moved there in one step.
//
// The folder's name begins with ".tessaly-", and only the user may enter it. The destructor removes
// it with its contents; a killed program leaves it behind.
//
// Use an object on one thread at a time.
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

  // For a file that will be at the absolute `target`, whose folder must exist.
  static Result<StagedFile> beside(const std::string& target);

  StagedFile(StagedFile&& other) noexcept;
  StagedFile& operator=(StagedFile&& other) noexcept;
  ~StagedFile();

  // Path for writing the file, which does not exist at first. It has the extension of the target.
  const std::string& path() const;

  // Syncs the written file to disk, moves it to its target, and returns its path. An existing
  // target is replaced only if it is the file or the link `replaced`, which is then deleted; a link
  // is replaced itself and not followed. If another item is at the target, the file gets a numbered
  // name beside it: "out 2.zip". Call it once. After an error no existing file is lost.
  //
  // If the file system cannot swap two files in one step, an item that appears at the target
  // between the last check and the move is replaced too.
  Result<Placed> place(const std::optional<FileIdentity>& replaced);

 private:
  struct State;
  explicit StagedFile(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
