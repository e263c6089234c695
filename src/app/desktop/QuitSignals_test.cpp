#include "app/desktop/QuitSignals.h"

#include <csignal>
#include <gtest/gtest.h>

#include <QCoreApplication>

#include "support/EventuallyByEvents.h"

namespace tessaly {
namespace {

bool isUsual(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL;
}

TEST(QuitSignals, a_signal_quits_the_program_from_its_event_loop) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    // A caller such as nohup may have it ignored.
    std::signal(signal, SIG_DFL);
    int quits = 0;
    const QuitSignals quitSignals([&] { ++quits; });
    ASSERT_FALSE(isUsual(signal));
    std::raise(signal);
    EXPECT_EQ(quits, 0);
    eventuallyByEvents([&] { return quits > 0; }, "the signal");
    EXPECT_EQ(quits, 1);
  }
}

TEST(QuitSignals, the_second_signal_ends_the_process) {
  const QuitSignals quitSignals([] {});
  std::raise(SIGTERM);
  EXPECT_TRUE(isUsual(SIGTERM));
  EXPECT_FALSE(isUsual(SIGINT));
}

TEST(QuitSignals, ignored_signals_stay_ignored) {
  std::signal(SIGHUP, SIG_IGN);
  int quits = 0;
  {
    const QuitSignals quitSignals([&] { ++quits; });
    std::raise(SIGHUP);
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(quits, 0);
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(QuitSignals, the_destructor_restores_the_default_actions) {
  std::signal(SIGHUP, SIG_DFL);
  {
    const QuitSignals quitSignals([] {});
  }
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) EXPECT_TRUE(isUsual(signal));
}

}  // namespace
}  // namespace tessaly
