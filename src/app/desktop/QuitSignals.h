// What other programs, a terminal and the end of a session send to have the program end: SIGTERM,
// SIGINT, SIGHUP. Main thread only; one at a time.
#pragma once

#include <functional>
#include <memory>

#include <QSocketNotifier>

namespace tessaly {

class QuitSignals {
 public:
  // `quit` runs from the event loop for the first of them. The next one of its kind ends the
  // process as if nobody listened, for a program that does not come to its event loop any more.
  // A signal that is ignored, as by nohup, stays so.
  explicit QuitSignals(std::function<void()> quit);
  ~QuitSignals();  // gives the signals their usual meaning again
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tessaly
