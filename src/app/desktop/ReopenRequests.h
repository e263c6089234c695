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

  // Leaves all who ask from now on without an answer: they wait until the instance is given up, and
  // then one of them takes its place. To be called when the program is about to quit.
  void hold();

  // To be called before another instance is started on purpose, which takes the place of this one.
  void giveUp();

  // Readable while somebody asks; -1 where nobody can.
  int descriptor() const { return instance_.descriptor(); }

 private:
  SingleInstance instance_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tessaly
