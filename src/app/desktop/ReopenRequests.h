// Listens for other starts of the program, which ask this one to come to the front. Main thread
// only.
#pragma once

#include <functional>
#include <memory>

#include <QSocketNotifier>

#include "platform/SingleInstance.h"

namespace tessaly {

class ReopenRequests {
 public:
  // `reopen` runs for each start, from the event loop; simultaneous starts count as one.
  ReopenRequests(SingleInstance instance, std::function<void()> reopen);

  // Stops answering: later starts wait until the instance is given up, and then one of them takes
  // over. Call it when the program is about to quit.
  void hold();

  // Call it before starting another instance that takes over.
  void giveUp();

  // Readable when another start asks; -1 if none can.
  int descriptor() const { return instance_.descriptor(); }

 private:
  SingleInstance instance_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tessaly
