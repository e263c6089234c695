// Qt's messages during its start. If Qt cannot draw on the given platform, it prints many lines and
// aborts; the program prints one line and exits instead.
//
// One at a time. Safe from any thread.
#pragma once

#include <functional>

#include <QString>

namespace tessaly {

class StartMessages {
 public:
  // Holds back all messages of Qt. Instead of the fatal one, `failed` is called on Qt's thread; it
  // must not return.
  explicit StartMessages(std::function<void()> failed);
  // Prints the held messages, and lets later ones pass.
  ~StartMessages();
  StartMessages(const StartMessages&) = delete;
  StartMessages& operator=(const StartMessages&) = delete;
};

}  // namespace tessaly
