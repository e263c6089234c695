#include "app/desktop/StartMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include <QtGlobal>

#include "support/ForkedChild.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string>& heard() {
  static std::vector<std::string> messages;
  return messages;
}

void hear(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  const std::string kind = type == QtWarningMsg ? "warning" : type == QtInfoMsg ? "info" : "other";
  heard().push_back(kind + " of " + context.category + ": " + text.toStdString());
}

TEST(StartMessages, messages_are_printed_after_the_start) {
  heard().clear();
  const QtMessageHandler before = qInstallMessageHandler(hear);
  {
    const StartMessages messages([] {});
    qWarning("one");
    qInfo("two");
    EXPECT_THAT(heard(), IsEmpty());
  }
  qWarning("three");
  qInstallMessageHandler(before);
  EXPECT_THAT(heard(), ElementsAre("warning of default: one", "info of default: two",
                                   "warning of default: three"));
}

TEST(StartMessages, messages_of_a_failed_start_are_dropped) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              qInstallMessageHandler(
                  [](QtMsgType, const QMessageLogContext&, const QString&) { _exit(3); });
              const StartMessages messages([] { _exit(7); });
              qWarning("one");
              qFatal("two");
            }),
            "child left with 7");
}

}  // namespace
}  // namespace tessaly
