// The main of tests that need an X server: one of their own, without a screen to look at.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "app/desktop/X11Fixture_test.h"

namespace {
tessaly::XServer* server = nullptr;
}  // namespace

tessaly::XServer& tessaly::sharedXServer() {
  return *server;
}

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  // Only the names of the tests are wanted.
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  tessaly::XServer ownServer({640, 480});
  server = &ownServer;
  qputenv("DISPLAY", ownServer.display().toLatin1());
  qputenv("QT_QPA_PLATFORM", "xcb");
  // Nothing of the session of who runs the tests.
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/none");
  const QApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
