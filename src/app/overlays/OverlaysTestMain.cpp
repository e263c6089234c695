// The overlays' tests draw in memory, with the software renderer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QtPlugin>
#include <QtQml/qqmlextensionplugin.h>

#include "app/controls/Fonts.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_OverlaysPlugin)

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  const QGuiApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  tessaly::Fonts::install();
  return RUN_ALL_TESTS();
}
