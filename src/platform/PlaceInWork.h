// Notes in the support folder that the program is writing a file into some other folder, for as
// long as the object is there. A run that is killed meanwhile leaves the note behind, and the next
// one finds by it what else was left: see Leftovers.h.
//
// A note is a file of its own, ".tessaly-place-" and 16 hexadecimal digits, which holds the path of
// the folder without its links. It is left to the system to write to disk in its time: after a
// power cut it may be lost, and what was left then stays where it is.
//
// One object belongs to one thread at a time.
#pragma once

#include <memory>
#include <string>

namespace tessaly {

class PlaceInWork {
 public:
  // For a file that is to stand at the absolute `target`. `notes` is the folder of the notes. Where
  // none can be written the object stands for nothing: the file is more important.
  static PlaceInWork of(const std::string& target, const std::string& notes);

  PlaceInWork(PlaceInWork&& other) noexcept;
  PlaceInWork& operator=(PlaceInWork&& other) noexcept;
  ~PlaceInWork();

 private:
  struct State;
  explicit PlaceInWork(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
