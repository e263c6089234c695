// The main function of tests that need an X server: starts one without a physical screen.
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
  // Only lists the names of the tests.
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  tessaly::XServer ownServer({640, 480});
  server = &ownServer;
  qputenv("DISPLAY", ownServer.display().toLatin1());
  qputenv("QT_QPA_PLATFORM", "xcb");
  // Nothing of the session of the user who runs the tests.
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/none");
  const QApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
