#include "app/desktop/ClipboardHandOver.h"

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcbext.h>

#include <QClipboard>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>

namespace tessaly {

namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

xcb_connection_t* connectionOfQt() {
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr ? x11->connection() : nullptr;
}

unsigned askForName(xcb_connection_t* connection, std::string_view name) {
  return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data())
      .sequence;
}

}  // namespace

ClipboardHandOver::ClipboardHandOver() : connection_(connectionOfQt()) {
  if (connection_ == nullptr || !QGuiApplication::clipboard()->ownsClipboard()) return;
  managerAsked_ = askForName(connection_, "CLIPBOARD_MANAGER");
  saveAsked_ = askForName(connection_, "SAVE_TARGETS");
  xcb_flush(connection_);
  stage_ = Stage::names;
  qGuiApp->installNativeEventFilter(this);
}

ClipboardHandOver::~ClipboardHandOver() {
  if (asking_ == XCB_WINDOW_NONE) return;
  xcb_destroy_window(connection_, asking_);
  xcb_flush(connection_);
}

int ClipboardHandOver::descriptor() const {
  return isPending() ? xcb_get_file_descriptor(connection_) : -1;
}

void ClipboardHandOver::serve() {
  if (!isPending() || isServing_) return;
  isServing_ = true;
  // Qt answers the manager's requests for the content.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  isServing_ = false;
  if (isPending()) goOn();
}

void* ClipboardHandOver::reply(unsigned sequence) {
  void* found = nullptr;
  xcb_generic_error_t* error = nullptr;
  if (xcb_poll_for_reply(connection_, sequence, &found, &error) == 0) return nullptr;
  std::free(error);
  if (found == nullptr) stage_ = Stage::done;
  return found;
}

void ClipboardHandOver::goOn() {
  if (stage_ == Stage::names) {
    if (manager_ == XCB_ATOM_NONE) {
      const Owned<void> answer(reply(managerAsked_));
      if (!answer) return;
      manager_ = static_cast<const xcb_intern_atom_reply_t*>(answer.get())->atom;
    }
    const Owned<void> answer(reply(saveAsked_));
    if (!answer) return;
    save_ = static_cast<const xcb_intern_atom_reply_t*>(answer.get())->atom;
    askWhetherManaged();
  }
  if (stage_ == Stage::manager) {
    const Owned<void> answer(reply(ownerAsked_));
    if (!answer) return;
    const auto owner = static_cast<const xcb_get_selection_owner_reply_t*>(answer.get())->owner;
    if (owner == XCB_WINDOW_NONE) {
      stage_ = Stage::done;
    } else {
      askToSave();
    }
  }
}

void ClipboardHandOver::askWhetherManaged() {
  ownerAsked_ = xcb_get_selection_owner(connection_, manager_).sequence;
  xcb_flush(connection_);
  stage_ = Stage::manager;
}

// The request needs a window and a property. The property would name the formats to save; without
// it, all are saved.
void ClipboardHandOver::askToSave() {
  asking_ = xcb_generate_id(connection_);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, asking_, root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_convert_selection(connection_, asking_, manager_, save_, save_, XCB_CURRENT_TIME);
  xcb_flush(connection_);
  stage_ = Stage::saving;
}

bool ClipboardHandOver::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t" || stage_ != Stage::saving) return false;
  const auto& event = *static_cast<const xcb_selection_notify_event_t*>(message);
  constexpr unsigned sentByAClient = 0x80;
  if ((event.response_type & ~sentByAClient) != XCB_SELECTION_NOTIFY || event.requestor != asking_)
    return false;
  stage_ = Stage::done;
  return true;
}

}  // namespace tessaly
