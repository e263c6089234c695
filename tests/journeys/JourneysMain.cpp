// The main of the journeys: the program's own look, without a display.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "app/Application.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleMock(&argc, argv);
  const QApplication application(argc, argv);
  tessaly::Application::setUpLook();
  return RUN_ALL_TESTS();
}
