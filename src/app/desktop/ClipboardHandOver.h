// Leaves what the program has put on the clipboard with the desktop's clipboard manager, so that it
// can be pasted once the program has ended. On X11 the content stays with the program otherwise,
// and goes with it.
//
// Main thread only; nothing waits for the X server or the manager. The QGuiApplication outlives it.
#pragma once

#include <cstdint>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

namespace tessaly {

class ClipboardHandOver final : public QAbstractNativeEventFilter {
 public:
  // Asks the manager, where there is one, to come for the content.
  ClipboardHandOver();
  ~ClipboardHandOver() override;

  // Whether the manager may still want something. It may never answer.
  bool isPending() const { return stage_ != Stage::done; }

  // The socket of the connection to the X server while it is pending, else -1.
  int descriptor() const;

  // Answers what has been asked for so far. Does nothing once it is not pending. The event loop
  // runs, so that all else that it may bring should have been closed before. Where the connection
  // to the X server has ended, Qt may leave the program by exit() from here; called again on the
  // way out, this does nothing.
  void serve();

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  enum class Stage : std::uint8_t {
    names,    // the server was asked for the numbers of two names
    manager,  // and then whether there is a manager,
    saving,   // who was then asked to save
    done
  };

  // The reply to `sequence`, to be freed; null while it is on its way. Done after an error.
  void* reply(unsigned sequence);
  void goOn();
  void askWhetherManaged();
  void askToSave();

  xcb_connection_t* connection_ = nullptr;  // of Qt's
  Stage stage_ = Stage::done;
  bool isServing_ = false;
  unsigned managerAsked_ = 0;  // sequence numbers of requests
  unsigned saveAsked_ = 0;
  unsigned ownerAsked_ = 0;
  xcb_atom_t manager_ = XCB_ATOM_NONE;
  xcb_atom_t save_ = XCB_ATOM_NONE;
  xcb_window_t asking_ = XCB_WINDOW_NONE;
};

}  // namespace tessaly
