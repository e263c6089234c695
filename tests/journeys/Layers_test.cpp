// Who has the keyboard where one thing lies over another.
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

  // It may come from any program, at any time.
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

  // How many show that they have the keyboard.
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

// What may stand before the search, and how it comes to.
struct Cover {
  const char* name;
  void (*raise)(ScanSession& session);  // null for the settings, which have a key of their own

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

TEST_P(Covers, keep_the_keyboard_when_the_search_opens_behind_them) {
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

TEST_P(Covers, give_the_keyboard_back_to_the_search_that_they_came_before) {
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

TEST_P(Covers, show_where_the_keyboard_is_to_who_works_by_it) {
  raise();
  EXPECT_EQ(rings(), 1U);
  press(Qt::Key_Escape);
  EXPECT_EQ(keyboardAt(), "openMenu");
  EXPECT_EQ(rings(), 1U);
}

TEST_P(Covers, show_no_keyboard_to_who_works_by_the_pointer) {
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

TEST_F(Layers, the_keyboard_finds_back_from_a_search_that_was_asked_for_elsewhere) {
  tabTo("openMenu");
  QWindow elsewhere;
  elsewhere.show();
  elsewhere.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
  settle(window());
  ASSERT_EQ(window().activeFocusItem(), nullptr);
  // The desktop takes its time to bring the window forward.
  session().shown().setSearchOpen(true);
  settle(window());
  window().requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_TRUE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(keyboardAt(), "openMenu");
}

TEST_F(Layers, the_menu_of_commands_makes_room_for_the_search) {
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

TEST_F(Layers, the_search_goes_by_escape_wherever_the_keyboard_is) {
  click("searchField");
  click("showPulse");
  EXPECT_FALSE(hasKeyboard("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  EXPECT_EQ(keyboardAt(), "showPulse");
}

TEST_F(Layers, tab_comes_to_the_search_and_to_nothing_that_lies_under_it) {
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

TEST_F(Layers, a_click_on_a_button_of_the_window_leaves_the_keyboard_where_it_is) {
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

TEST_F(LayersBehindTheGate, have_no_keyboard_before_it_has_gone) {
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

// As on a desktop where the press of a button brings its window forward.
TEST_F(LayersBehindTheGate, lose_no_click_that_brings_the_window_forward) {
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

TEST_F(LayersBehindTheGate, are_not_reached_by_way_of_the_buttons_of_the_window) {
  click("zoomWindow");
  for (int stop = 0; stop < 6; ++stop) {
    EXPECT_TRUE(hasKeyboard("gate")) << keyboardAt();
    press(Qt::Key_Tab);
  }
}

}  // namespace
}  // namespace tessaly
