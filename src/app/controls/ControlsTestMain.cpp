// The tests of the controls draw off screen, with the software renderer.
#include <gtest/gtest.h>

#include <QGuiApplication>

#include "app/controls/Fonts.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  QGuiApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  tessaly::Fonts::install();
  return RUN_ALL_TESTS();
}
