// Which item has the keyboard focus when views overlap.
#include <ostream>

#include <QQuickItem>
#include <QTest>
#include <QWindow>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

constexpr const char* files =
    "Movies/\n"
    "  beach.mp4 6M\n"
    "notes.txt 2M\n";

class Layers : public Journey {
 protected:
  explicit Layers(Lend lend = {}) : Journey(files, std::move(lend)) {
    session().scanHome();
    finishScan();
    window().requestActivate();
    settle(window());
  }

  // The user may press it in any program at any time.
  void pressHotKey() {
    machine_.hotKey.press();
    settle(window());
  }

  bool hasKeyboard(const QString& name) {
    settle(window());
    const auto* const layer = window().findChild<QQuickItem*>(name);
    const QQuickItem* const holder = window().activeFocusItem();
    return layer != nullptr && holder != nullptr &&
           (holder == layer || layer->isAncestorOf(holder));
  }

  // The number of visible focus rings.
  std::size_t rings() {
    settle(window());
    return itemsNamed(window().contentItem(), "focusRing").size();
  }

  std::string keyboardAt() {
    settle(window());
    const QQuickItem* const holder = window().activeFocusItem();
    return holder != nullptr ? holder->objectName().toStdString() : "";
  }
};

// A view that covers the search, and how to open it.
struct Cover {
  const char* name;
  void (*raise)(ScanSession& session);  // null for the settings, which open by a key

  friend std::ostream& operator<<(std::ostream& out, const Cover& cover) {
    return out << cover.name;
  }
};

class Covers : public Layers, public testing::WithParamInterface<Cover> {
 protected:
  void raise() {
    tabTo("openMenu");
    if (GetParam().raise != nullptr) {
      GetParam().raise(session());
    } else {
      press(Qt::Key_Comma, Qt::ControlModifier);
    }
    ASSERT_TRUE(hasKeyboard(GetParam().name));
  }
};

TEST_P(Covers, a_cover_keeps_the_focus_when_the_search_opens_behind_it) {
  raise();
  pressHotKey();
  EXPECT_TRUE(session().shown().searchOpen());
  EXPECT_TRUE(hasKeyboard(GetParam().name));
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows(GetParam().name));
  EXPECT_TRUE(session().shown().searchOpen());
  EXPECT_TRUE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(keyboardAt(), "openMenu");
}

TEST_P(Covers, a_closed_cover_returns_the_focus_to_the_search_behind_it) {
  tabTo("openMenu");
  pressHotKey();
  EXPECT_TRUE(hasKeyboard("search"));
  if (GetParam().raise == nullptr) return;
  GetParam().raise(session());
  EXPECT_TRUE(hasKeyboard(GetParam().name));
  press(Qt::Key_Escape);
  EXPECT_TRUE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_EQ(keyboardAt(), "openMenu");
}

TEST_P(Covers, a_cover_opened_by_the_keyboard_shows_the_focus) {
  raise();
  EXPECT_EQ(rings(), 1U);
  press(Qt::Key_Escape);
  EXPECT_EQ(keyboardAt(), "openMenu");
  EXPECT_EQ(rings(), 1U);
}

TEST_P(Covers, a_cover_opened_by_the_pointer_shows_no_focus) {
  if (GetParam().raise == nullptr) return;
  click("showMap");
  ASSERT_EQ(rings(), 0U);
  GetParam().raise(session());
  EXPECT_EQ(rings(), 0U);
  press(Qt::Key_Escape);
  EXPECT_EQ(keyboardAt(), "showMap");
  EXPECT_EQ(rings(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    All, Covers,
    testing::Values(Cover{"assistant",
                          [](ScanSession& session) { session.shown().setAiOpen(true); }},
                    Cover{"inbox", [](ScanSession& session) { session.shown().setOcrOpen(true); }},
                    Cover{"nodeMenu",
                          [](ScanSession& session) {
                            session.shown().setMenuNode(session.navigation().current());
                          }},
                    Cover{"protectedLocation",
                          [](ScanSession& session) {
                            session.removal().setCriticalWarning(session.navigation().current());
                          }},
                    Cover{"settings", nullptr}),
    [](const auto& cover) { return std::string(cover.param.name); });

TEST_F(Layers, the_focus_returns_after_a_search_requested_from_outside) {
  tabTo("openMenu");
  QWindow elsewhere;
  elsewhere.show();
  elsewhere.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
  settle(window());
  ASSERT_EQ(window().activeFocusItem(), nullptr);
  // The desktop takes a while to activate the window.
  session().shown().setSearchOpen(true);
  settle(window());
  window().requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_TRUE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(keyboardAt(), "openMenu");
}

TEST_F(Layers, the_search_closes_the_menu_of_commands) {
  tabTo("openMenu");
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("menuSettings"));
  pressHotKey();
  EXPECT_FALSE(shows("menuSettings"));
  EXPECT_TRUE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(keyboardAt(), "openMenu");
}

TEST_F(Layers, escape_closes_the_search_wherever_the_focus_is) {
  click("searchField");
  click("showPulse");
  EXPECT_FALSE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  EXPECT_EQ(keyboardAt(), "showPulse");
}

TEST_F(Layers, tab_reaches_the_search_and_nothing_under_it) {
  click("searchField");
  click("diskTreemap");
  const auto* const map = window().findChild<QQuickItem*>("diskMap");
  ASSERT_NE(map, nullptr);
  for (int stop = 0; stop < 200 && !hasKeyboard("search"); ++stop) {
    press(Qt::Key_Tab);
    EXPECT_FALSE(map->isAncestorOf(window().activeFocusItem())) << keyboardAt();
  }
  EXPECT_TRUE(hasKeyboard("search"));
}

TEST_F(Layers, a_click_on_a_button_of_the_window_frame_keeps_the_focus) {
  click("openAssistant");
  click("zoomWindow");
  EXPECT_TRUE(window().windowStates().testFlag(Qt::WindowMaximized));
  EXPECT_TRUE(hasKeyboard("assistant"));
}

struct Closed {
  bool isGranted = false;

  Journey::Lend lend() {
    return
        [this](Application::Services& services) { services.access = [this] { return isGranted; }; };
  }
};

class LayersBehindTheGate : private Closed, public Layers {
 protected:
  LayersBehindTheGate() : Layers(lend()) {}

  void grant() { isGranted = true; }
};

TEST_F(LayersBehindTheGate, layers_behind_the_gate_get_no_focus_until_it_is_closed) {
  EXPECT_EQ(keyboardAt(), "grant");
  pressHotKey();
  EXPECT_EQ(keyboardAt(), "grant");
  press(Qt::Key_Escape);
  EXPECT_TRUE(session().shown().searchOpen());
  grant();
  click("check");
  EXPECT_FALSE(shows("gate"));
  EXPECT_TRUE(hasKeyboard("search"));
}

// Like on a desktop where pressing a button activates its window.
TEST_F(LayersBehindTheGate, a_click_that_activates_the_window_is_not_lost) {
  const QPoint skip = middleOf(itemsNamed(item("gate"), QStringLiteral("skip")).front());
  clickAt(skip);
  ASSERT_FALSE(shows("gate"));
  QWindow elsewhere;
  elsewhere.show();
  elsewhere.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
  click("scanFullMac");
  ASSERT_TRUE(shows("gate"));
  QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, skip);
  window().requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  settle(window());
  EXPECT_TRUE(hasKeyboard("gate"));
  QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, skip);
  EXPECT_FALSE(shows("gate"));
}

TEST_F(LayersBehindTheGate,
       layers_behind_the_gate_are_not_reachable_by_the_buttons_of_the_window_frame) {
  click("zoomWindow");
  for (int stop = 0; stop < 6; ++stop) {
    EXPECT_TRUE(hasKeyboard("gate")) << keyboardAt();
    press(Qt::Key_Tab);
  }
}

}  // namespace
}  // namespace tessaly
