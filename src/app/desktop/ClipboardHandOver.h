// Passes the program's clipboard content to the desktop's clipboard manager, so that it can be
// pasted after the program has ended. On X11 the content belongs to the program otherwise, and is
// lost with it.
//
// Main thread only; nothing waits for the X server or the manager. The QGuiApplication must outlive
// it.
#pragma once

#include <cstdint>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

namespace tessaly {

class ClipboardHandOver final : public QAbstractNativeEventFilter {
 public:
  // Asks the manager, if there is one, to fetch the content.
  ClipboardHandOver();
  ~ClipboardHandOver() override;

  // Whether the manager may still need an answer. It may never respond.
  bool isPending() const { return stage_ != Stage::done; }

  // The socket of the connection to the X server while it is pending, else -1.
  int descriptor() const;

  // Answers all requests so far. Does nothing once it is not pending. Runs the event loop, so
  // everything else that this could reach must be closed before. If the connection to the X server
  // has ended, Qt may call exit() in here; if that calls this again, it does nothing.
  void serve();

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  enum class Stage : std::uint8_t {
    names,    // waits for the atoms of two names,
    manager,  // then for the owner of the manager's selection,
    saving,   // then for the manager to save
    done
  };

  // The reply to `sequence`, to be freed; null while it has not arrived. Sets the stage to done
  // after an error.
  void* reply(unsigned sequence);
  void goOn();
  void askWhetherManaged();
  void askToSave();

  xcb_connection_t* connection_ = nullptr;  // Qt's connection
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
