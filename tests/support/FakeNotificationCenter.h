// A notification centre that records its notifications.
#pragma once

#include <vector>

#include "platform/NotificationCenter.h"

namespace tessaly {

class FakeNotificationCenter final : public NotificationCenter {
 public:
  void requestAuthorization() override { ++authorizationRequests; }
  void post(const Notification& notification) override { posted.push_back(notification); }

  int authorizationRequests = 0;
  std::vector<Notification> posted;
};

}  // namespace tessaly
