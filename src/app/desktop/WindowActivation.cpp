#include "app/desktop/WindowActivation.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

#include <QGuiApplication>

namespace tessaly {

namespace {

// Window managers ignore activation requests of applications and accept those in the name of the
// user. Qt sends the first kind.
void activateForUser(const QWindow& window) {
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  xcb_connection_t* const connection = x11 != nullptr ? x11->connection() : nullptr;
  if (connection == nullptr) return;
  constexpr const char* name = "_NET_ACTIVE_WINDOW";
  const auto asked =
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> atom(
      xcb_intern_atom_reply(connection, asked, nullptr), std::free);
  if (!atom) return;
  constexpr std::uint32_t byTheUser = 2;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = static_cast<xcb_window_t>(window.winId());
  message.type = atom->atom;
  message.data.data32[0] = byTheUser;
  for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0;
       xcb_screen_next(&screens))
    xcb_send_event(connection, 0, screens.data->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
  xcb_flush(connection);
}

}  // namespace

void WindowActivation::add(QWindow& window) {
  windows_.emplace_back(&window);
}

void WindowActivation::showMainWindow() const {
  for (const QPointer<QWindow>& window : windows_) {
    if (!window) continue;
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    // Unlike show(), which would reset a maximised window.
    window->setVisible(true);
    window->raise();
    window->requestActivate();
    activateForUser(*window);
  }
}

}  // namespace tessaly
