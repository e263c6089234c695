#include "app/desktop/ClipboardHandOver.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include <QClipboard>
#include <QGuiApplication>

#include "app/desktop/QtPasteboard.h"
#include "app/desktop/X11Fixture_test.h"

namespace tessaly {
namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

// A clipboard manager, as far as one that only knows plain text: it saves when it is asked to.
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

  // Goes on with what has come from the server.
  void work() {
    sync();
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      const unsigned type = event->response_type & 0x7fU;
      if (type == XCB_SELECTION_REQUEST)
        save(*reinterpret_cast<const xcb_selection_request_event_t*>(event.get()));
      if (type == XCB_SELECTION_NOTIFY) take();
    }
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
    xcb_selection_notify_event_t done{};
    done.response_type = XCB_SELECTION_NOTIFY;
    done.requestor = asked_.requestor;
    done.selection = asked_.selection;
    done.target = asked_.target;
    done.property = XCB_ATOM_NONE;
    xcb_send_event(connection_, 0, asked_.requestor, 0, reinterpret_cast<const char*>(&done));
  }

  xcb_connection_t* connection_;
  xcb_window_t window_;
  xcb_selection_request_event_t asked_{};
};

class ClipboardHandOverTest : public X11Fixture {
 protected:
  ~ClipboardHandOverTest() override {
    QGuiApplication::clipboard()->clear();
    settle();
  }
};

TEST_F(ClipboardHandOverTest, leaves_the_content_with_the_manager) {
  Manager manager(sharedXServer());
  QtPasteboard().setText("/home/caf\xe9");
  ClipboardHandOver handOver;
  EXPECT_TRUE(handOver.isPending());
  EXPECT_EQ(handOver.descriptor(), xcb_get_file_descriptor(ofQt()));
  while (handOver.isPending()) {
    handOver.serve();
    manager.work();
  }
  EXPECT_TRUE(manager.wasAsked);
  EXPECT_EQ(manager.saved, "/home/caf\xe9");
  EXPECT_EQ(handOver.descriptor(), -1);
}

TEST_F(ClipboardHandOverTest, goes_on_for_as_long_as_the_manager_says_nothing) {
  const Manager manager(sharedXServer());
  QtPasteboard().setText("text");
  ClipboardHandOver handOver;
  for (int turn = 0; turn < 20; ++turn) {
    handOver.serve();
    settle();
  }
  EXPECT_TRUE(handOver.isPending());
}

TEST_F(ClipboardHandOverTest, is_over_where_there_is_no_manager) {
  QtPasteboard().setText("text");
  ClipboardHandOver handOver;
  while (handOver.isPending()) handOver.serve();
}

TEST_F(ClipboardHandOverTest, is_nothing_without_content_of_ours) {
  const Manager manager(sharedXServer());
  const ClipboardHandOver handOver;
  EXPECT_FALSE(handOver.isPending());
}

}  // namespace
}  // namespace tessaly
