// The main function of tests that need a QApplication: without a display, drawn by the software
// renderer, so that all machines draw alike.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleMock(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
