// The tests of the map draw off screen, with the software renderer.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include "app/controls/Fonts.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_MapPlugin)

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  const QGuiApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  tessaly::Fonts::install();
  return RUN_ALL_TESTS();
}
