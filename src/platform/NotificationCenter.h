// The desktop's notifications. Main thread only.
#pragma once

#include <string>

namespace tessaly {

class NotificationCenter {
 public:
  struct Notification {
    std::string identifier;  // a later one of the same identifier takes the place of the earlier
    std::string title;       // UTF-8, as is the body
    std::string body;
    bool hasSound = false;

    friend bool operator==(const Notification&, const Notification&) = default;
  };

  virtual ~NotificationCenter() = default;

  // Asks the user, where the system wants that, for leave to show notifications. Nobody is told of
  // the answer.
  virtual void requestAuthorization() = 0;

  // Shows `notification` now, if the user has given leave. Does not wait, and tells of no failure.
  virtual void post(const Notification& notification) = 0;
};

}  // namespace tessaly
