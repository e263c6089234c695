#include "app/desktop/QuitSignals.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace tessaly {

namespace {

constexpr int quitSignals[] = {SIGTERM, SIGINT, SIGHUP};

// A handler can access nothing else. Never closed, since a handler may still be running.
std::atomic<int> bell = -1;

void ring(int) {
  const int before = errno;
  constexpr eventfd_t once = 1;
  [[maybe_unused]] const ssize_t rung = ::write(bell, &once, sizeof once);
  errno = before;
}

bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

QuitSignals::QuitSignals(std::function<void()> quit) {
  if (bell < 0) bell = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  // Out of descriptors: the signals keep their default actions.
  if (bell < 0) return;
  // Signals for an earlier listener do not count for this one.
  eventfd_t earlier = 0;
  ::eventfd_read(bell, &earlier);
  notifier_ = std::make_unique<QSocketNotifier>(bell, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [quit = std::move(quit)] {
                     eventfd_t rings = 0;
                     ::eventfd_read(bell, &rings);
                     quit();
                   });
  struct sigaction action {};
  action.sa_handler = ring;
  action.sa_flags = static_cast<int>(static_cast<unsigned>(SA_RESTART) | SA_RESETHAND);
  for (const int signal : quitSignals) {
    if (!isIgnored(signal)) sigaction(signal, &action, nullptr);
  }
}

QuitSignals::~QuitSignals() {
  if (!notifier_) return;
  for (const int signal : quitSignals) {
    if (!isIgnored(signal)) std::signal(signal, SIG_DFL);
  }
}

}  // namespace tessaly
