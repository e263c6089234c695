// One instance of the program per user and display. A second instance asks the first one to show
// its window, and ends.
//
// The first instance holds a lock on a file, which the system releases when the process ends in any
// way, and listens on a socket beside it; a connection is the whole message. So no message bus is
// needed, and leftovers of a killed instance do not block the next. Two displays of one user have
// one instance each, since a window on the other display is of no use here.
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
  // Where instances find each other: those with the same folder and name belong together.
  struct Address {
    std::string folder;  // absolute; created if it does not exist
    std::string name;    // base name of the files in it; at most longestName bytes

    static constexpr std::size_t longestName = 75;

    // For this process, by its user and the display in its environment.
    static Address usual();
  };

  // Becomes the one instance, or else asks the existing one to show its window and returns nothing.
  // An instance that does not answer within `patience` seconds sees the request later.
  //
  // If the folder cannot be used or belongs to another user, each instance acts as if it were the
  // only one.
  static std::optional<SingleInstance> claim(const Address& address, double patience = 5);

  SingleInstance(SingleInstance&& other) noexcept;
  SingleInstance& operator=(SingleInstance&& other) noexcept;
  ~SingleInstance();  // gives up the role

  // Becomes readable when another instance asks; -1 if that is impossible. Valid until giveUp().
  int descriptor() const;

  // Answers all requests since the last call; true if there were any. Does not wait.
  bool takeRequests();

  // Lets another process become the one instance. Later requests go to that one.
  void giveUp();

 private:
  struct State;
  explicit SingleInstance(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;  // null after giveUp()
};

}  // namespace tessaly
