// The signals by which other programs, a terminal and the end of a session ask the program to end:
// SIGTERM, SIGINT, SIGHUP. Main thread only; one at a time.
#pragma once

#include <functional>
#include <memory>

#include <QSocketNotifier>

namespace tessaly {

class QuitSignals {
 public:
  // `quit` runs from the event loop for the first signal. The next one of the same kind ends the
  // process, in case the program no longer reaches its event loop. A signal that is ignored, as by
  // nohup, stays ignored.
  explicit QuitSignals(std::function<void()> quit);
  ~QuitSignals();  // restores the default actions
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tessaly
