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

TEST(QuitSignals, have_the_program_quit_from_its_event_loop) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    int quits = 0;
    const QuitSignals quitSignals([&] { ++quits; });
    ASSERT_FALSE(isUsual(signal));
    std::raise(signal);
    EXPECT_EQ(quits, 0);
    eventuallyByEvents([&] { return quits > 0; }, "the signal");
    EXPECT_EQ(quits, 1);
  }
}

TEST(QuitSignals, end_the_process_at_the_second_time) {
  const QuitSignals quitSignals([] {});
  std::raise(SIGTERM);
  EXPECT_TRUE(isUsual(SIGTERM));
  EXPECT_FALSE(isUsual(SIGINT));
}

TEST(QuitSignals, stay_ignored_where_they_are) {
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

TEST(QuitSignals, have_their_usual_meaning_afterwards) {
  {
    const QuitSignals quitSignals([] {});
  }
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) EXPECT_TRUE(isUsual(signal));
}

}  // namespace
}  // namespace tessaly
