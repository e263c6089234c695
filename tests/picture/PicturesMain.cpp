#include "picture/PicturesMain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "app/Application.h"
#include "fixture/PinnedLook.h"

namespace tessaly {

namespace {

ScratchSession* session = nullptr;

}  // namespace

ScratchSession& scratchSession() {
  return *session;
}

}  // namespace tessaly

int main(int argc, char** argv) {
  tessaly::pinLook();
  tessaly::ScratchSession user;
  tessaly::session = &user;
  testing::InitGoogleMock(&argc, argv);
  const QApplication application(argc, argv);
  tessaly::Application::setUpLook();
  return RUN_ALL_TESTS();
}
