// The X server that the tests of this program share, and Qt's connection to it.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QWindow>

#include "support/Eventually.h"
#include "support/XServer.h"

namespace tessaly {

// Runs as long as the tests.
XServer& sharedXServer();

class X11Fixture : public testing::Test {
 protected:
  static xcb_connection_t* ofQt() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  }

  // Until Qt has handled all present events of the server.
  static void settle() {
    QWindow marker;
    marker.create();
    Arrival arrival;
    qGuiApp->installNativeEventFilter(&arrival);
    // Otherwise the server might not know of the window yet.
    std::free(xcb_get_input_focus_reply(ofQt(), xcb_get_input_focus(ofQt()), nullptr));
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = static_cast<xcb_window_t>(marker.winId());
    message.type = XCB_ATOM_CUT_BUFFER7;
    xcb_send_event(sharedXServer().connection(), 0, message.window, 0,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(sharedXServer().connection());
    eventually(
        [&] {
          QCoreApplication::processEvents();
          return arrival.hasCome;
        },
        "an event behind all others");
  }

 private:
  class Arrival : public QAbstractNativeEventFilter {
   public:
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
      const auto* event = static_cast<const xcb_client_message_event_t*>(message);
      if ((event->response_type & 0x7fU) != XCB_CLIENT_MESSAGE ||
          event->type != XCB_ATOM_CUT_BUFFER7)
        return false;
      hasCome = true;
      return true;
    }
    bool hasCome = false;
  };
};

}  // namespace tessaly
