// The main function of the journeys: the program's own look, without a display; warnings of views
// are failures.
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "app/Application.h"

namespace {

// A warning of a view is an error in the view, even if the picture is right.
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
  tessaly::Application::setUpLook();
  qInstallMessageHandler(failOnComplaints);
  return RUN_ALL_TESTS();
}
