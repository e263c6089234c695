// The main function of the preview's tests: windows drawn off screen by the software renderer;
// warnings of views are failures.
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QtPlugin>
#include <QtQml/qqmlextensionplugin.h>

#include "app/controls/Fonts.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_QuickLookPlugin)

namespace {

void failOnComplaints(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  const bool ofView = message.startsWith(QLatin1String("qrc:")) ||
                      QLatin1String(context.category) == QLatin1String("qml");
  if (ofView && type != QtDebugMsg)
    ADD_FAILURE() << message.toStdString();
  else
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleMock(&argc, argv);
  const QApplication application(argc, argv);
  tessaly::Fonts::install();
  qInstallMessageHandler(failOnComplaints);
  return RUN_ALL_TESTS();
}
