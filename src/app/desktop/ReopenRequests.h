// Listens for other starts of the program, which want this one to come forward. Main thread only.
#pragma once

#include <functional>
#include <memory>

#include <QSocketNotifier>

#include "platform/SingleInstance.h"

namespace tessaly {

class ReopenRequests {
 public:
  // `reopen` runs for each, from the event loop; starts that come at once count as one.
  ReopenRequests(SingleInstance instance, std::function<void()> reopen);

  // To be called before another instance is started on purpose, which takes the place of this one.
  void giveUp();

 private:
  SingleInstance instance_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tessaly
