// One instance of the program for each user and display. Who starts second has the first one told
// to come forward, and ends.
//
// The first instance holds a lock on a file, which the system takes back when the process ends in
// whatever way, and listens on a socket beside it; a connection is all that is said. So it takes no
// message bus, and nothing that a killed instance leaves behind is in the way of the next. Two
// displays of one user have an instance each, since a window on the other one is of no use to who
// starts the program here.
//
// Main thread only.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace tessaly {

class SingleInstance {
 public:
  // Where instances meet: those with the same folder and name are of a kind.
  struct Place {
    std::string folder;  // absolute; made if it is not there
    std::string name;    // of the files in it, without their endings; at most longestName bytes

    static constexpr std::size_t longestName = 75;

    // Of this process, by its user and the display of its environment.
    static Place usual();
  };

  // Becomes the one instance, or else has it told to come forward, and gives nothing. An instance
  // that does not answer within `patience` seconds will see that it was asked when it looks.
  //
  // Where no instances can meet, because the folder cannot be used or belongs to somebody else,
  // each is the only one it knows.
  static std::optional<SingleInstance> claim(const Place& place, double patience = 5);

  SingleInstance(SingleInstance&& other) noexcept;
  SingleInstance& operator=(SingleInstance&& other) noexcept;
  ~SingleInstance();  // gives up

  // Readable as soon as somebody wants the program to come forward; -1 where nobody can. Valid
  // until the instance is given up.
  int descriptor() const;

  // Answers all who have asked since the last call; true if there was anybody. Does not wait.
  bool takeRequests();

  // Lets another process be the one instance. What is asked from now on goes to that one.
  void giveUp();

 private:
  struct State;
  explicit SingleInstance(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;  // null once given up
};

}  // namespace tessaly
