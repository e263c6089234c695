// Notes in the support folder that the program is writing a file in some other folder, for the
// lifetime of the object. A killed run leaves the note behind, and the next run uses it to find its
// other leftovers: see Leftovers.h.
//
// A note is a file ".tessaly-place-" plus 16 hexadecimal digits, which contains the path of the
// folder without links. It is not synced to disk: a power cut may lose it, and then the leftovers
// stay.
//
// Use an object on one thread at a time.
#pragma once

#include <memory>
#include <string>

namespace tessaly {

class WriteNote {
 public:
  // For a file that will be at the absolute `target`. `notes` is the folder of the notes. If the
  // note cannot be written, the object does nothing: the file is more important.
  static WriteNote of(const std::string& target, const std::string& notes);

  WriteNote(WriteNote&& other) noexcept;
  WriteNote& operator=(WriteNote&& other) noexcept;
  ~WriteNote();

 private:
  struct State;
  explicit WriteNote(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
