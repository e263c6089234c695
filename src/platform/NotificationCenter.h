// The desktop's notifications. Main thread only.
#pragma once

#include <string>

namespace tessaly {

class NotificationCenter {
 public:
  struct Notification {
    std::string identifier;  // a later notification with the same identifier replaces the earlier
                             // one
    std::string title;       // UTF-8, as the body
    std::string body;
    bool hasSound = false;

    friend bool operator==(const Notification&, const Notification&) = default;
  };

  virtual ~NotificationCenter() = default;

  // Asks the user for permission to show notifications, if the system requires it. The answer is
  // not reported.
  virtual void requestAuthorization() = 0;

  // Shows `notification` now, if the user has permitted it. Does not wait or report failures.
  virtual void post(const Notification& notification) = 0;
};

}  // namespace tessaly
