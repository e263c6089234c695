#include "app/desktop/ClipboardHandOver.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include <QClipboard>
#include <QGuiApplication>
#include <QMetaObject>

#include "app/desktop/QtPasteboard.h"
#include "app/desktop/X11Fixture_test.h"
#include "platform/Deadline.h"

namespace tessaly {
namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

// A clipboard manager for plain text: it saves the content on request.
class Manager {
 public:
  explicit Manager(const XServer& server)
      : connection_(xcb_connect(server.display().toLatin1().constData(), nullptr)),
        window_(xcb_generate_id(connection_)) {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection_, window_, atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
    sync();
  }
  ~Manager() { xcb_disconnect(connection_); }
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  // Whether an event has come from the server.
  bool hasWork() {
    sync();
    if (!next_) next_.reset(xcb_poll_for_event(connection_));
    return next_ != nullptr;
  }

  // Handles the events so far.
  void work() {
    for (; hasWork(); next_.reset()) {
      const unsigned type = next_->response_type & 0x7fU;
      if (type == XCB_SELECTION_REQUEST)
        save(*reinterpret_cast<const xcb_selection_request_event_t*>(next_.get()));
      if (type == XCB_SELECTION_NOTIFY) take();
    }
    xcb_flush(connection_);
  }

  // Tells a window that saving is done.
  void answer(xcb_window_t window) {
    xcb_selection_notify_event_t done{};
    done.response_type = XCB_SELECTION_NOTIFY;
    done.requestor = window;
    done.selection = atom("CLIPBOARD_MANAGER");
    done.target = atom("SAVE_TARGETS");
    done.property = XCB_ATOM_NONE;
    xcb_send_event(connection_, 0, window, 0, reinterpret_cast<const char*>(&done));
    xcb_flush(connection_);
  }

  std::string saved;
  bool wasAsked = false;

 private:
  xcb_atom_t atom(std::string_view name) {
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply->atom;
  }
  void sync() {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }

  void save(const xcb_selection_request_event_t& request) {
    wasAsked = request.target == atom("SAVE_TARGETS");
    asked_ = request;
    xcb_convert_selection(connection_, window_, atom("CLIPBOARD"), atom("text/plain"),
                          atom("SAVED"), XCB_CURRENT_TIME);
  }

  void take() {
    const Owned<xcb_get_property_reply_t> content(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, window_, atom("SAVED"), XCB_ATOM_ANY, 0, 1000), nullptr));
    saved.assign(static_cast<const char*>(xcb_get_property_value(content.get())),
                 static_cast<std::size_t>(xcb_get_property_value_length(content.get())));
    answer(asked_.requestor);
  }

  xcb_connection_t* connection_;
  xcb_window_t window_;
  Owned<xcb_generic_event_t> next_;
  xcb_selection_request_event_t asked_{};
};

class ClipboardHandOverTest : public X11Fixture {
 protected:
  ~ClipboardHandOverTest() override {
    QGuiApplication::clipboard()->clear();
    settle();
  }

  // Serves until `fact` is true, for a minute at most. Nothing else runs the event loop.
  static bool serveUntil(ClipboardHandOver& handOver, const std::function<bool()>& fact) {
    const Deadline over = Deadline::after(60);
    while (!over.hasPassed()) {
      handOver.serve();
      if (fact()) return true;
    }
    return false;
  }

  static bool comesToItsEnd(ClipboardHandOver& handOver, Manager* manager = nullptr) {
    return serveUntil(handOver, [&] {
      if (manager != nullptr) manager->work();
      return !handOver.isPending();
    });
  }
};

TEST_F(ClipboardHandOverTest, the_content_is_passed_to_the_manager) {
  Manager manager(sharedXServer());
  QtPasteboard().setText("/home/caf\xe9");
  ClipboardHandOver handOver;
  EXPECT_TRUE(handOver.isPending());
  EXPECT_EQ(handOver.descriptor(), xcb_get_file_descriptor(ofQt()));
  ASSERT_TRUE(comesToItsEnd(handOver, &manager));
  EXPECT_TRUE(manager.wasAsked);
  EXPECT_EQ(manager.saved, "/home/caf\xe9");
  EXPECT_EQ(handOver.descriptor(), -1);
}

// An answer to another window does not end it either.
TEST_F(ClipboardHandOverTest, the_hand_over_stays_pending_while_the_manager_is_silent) {
  Manager manager(sharedXServer());
  QtPasteboard().setText("text");
  QWindow another;
  another.create();
  ClipboardHandOver handOver;
  ASSERT_TRUE(serveUntil(handOver, [&] { return manager.hasWork(); }));
  manager.answer(static_cast<xcb_window_t>(another.winId()));
  for (int turn = 0; turn < 20; ++turn) {
    handOver.serve();
    settle();
  }
  EXPECT_TRUE(handOver.isPending());
  manager.work();
  EXPECT_TRUE(comesToItsEnd(handOver, &manager));
}

TEST_F(ClipboardHandOverTest, the_hand_over_is_done_without_a_manager) {
  QtPasteboard().setText("text");
  ClipboardHandOver handOver;
  EXPECT_TRUE(handOver.isPending());
  EXPECT_TRUE(comesToItsEnd(handOver));
}

// The event loop inside serve() may call it again.
TEST_F(ClipboardHandOverTest, serve_does_nothing_within_itself) {
  const Manager manager(sharedXServer());
  QtPasteboard().setText("text");
  ClipboardHandOver handOver;
  ASSERT_TRUE(handOver.isPending());
  std::string order;
  const auto post = [](const std::function<void()>& act) {
    QMetaObject::invokeMethod(qGuiApp, act, Qt::QueuedConnection);
  };
  post([&] {
    post([&] { order += "second"; });
    handOver.serve();
    order += "first ";
  });
  EXPECT_TRUE(serveUntil(handOver, [&] { return order.find("second") != std::string::npos; }));
  EXPECT_EQ(order, "first second");
}

TEST_F(ClipboardHandOverTest, the_hand_over_is_done_without_own_content) {
  const Manager manager(sharedXServer());
  const ClipboardHandOver handOver;
  EXPECT_FALSE(handOver.isPending());
}

}  // namespace
}  // namespace tessaly
