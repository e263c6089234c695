// What Qt says while it starts. Where it cannot draw on the platform that it was told, it says so
// in many lines and aborts; the program is to say it in one, and to leave.
//
// One at a time. Safe from any thread.
#pragma once

#include <functional>

#include <QString>

namespace tessaly {

class StartMessages {
 public:
  // Keeps back all messages of Qt's from now on. For the one by which Qt would abort, `failed` is
  // called instead, which must not return, on the thread that Qt is on.
  explicit StartMessages(std::function<void()> failed);
  // Hands on what was kept back, and lets Qt speak.
  ~StartMessages();
  StartMessages(const StartMessages&) = delete;
  StartMessages& operator=(const StartMessages&) = delete;
};

}  // namespace tessaly
