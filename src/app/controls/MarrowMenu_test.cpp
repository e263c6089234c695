#include <functional>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>

#include "app/controls/PropertyTable.h"
#include "support/PointerMoves.h"

namespace tessaly {
namespace {

class MarrowMenu : public testing::Test {
 public:
  // For expectProperties(): `path` is "row/part".
  QVariant read(const QString& path, const QString& property) const {
    const QStringList names = path.split('/');
    QQuickItem* item = row(names.front());
    if (names.size() > 1) item = item->findChild<QQuickItem*>(names.back());
    return item->property(property.toUtf8().constData());
  }

 protected:
  MarrowMenu() { scene_.activate(); }

  QObject* menu() const { return scene_.control()->findChild<QObject*>("menu"); }
  QQuickItem* rows() const { return menu()->property("contentItem").value<QQuickItem*>(); }
  QQuickItem* row(const QString& name) const {
    auto* found = rows()->findChild<QQuickItem*>(name);
    if (found != nullptr) return found;
    // The objects that a Repeater creates are its children.
    for (QQuickItem* item : column()->childItems())
      if (item->objectName() == name) return item;
    ADD_FAILURE() << "no row is named " << name.toStdString();
    return rows();
  }
  QQuickItem* column() const { return rows()->findChild<QQuickItem*>("menuColumn"); }
  bool isOpen() const { return menu()->property("opened").toBool(); }
  void openAt(double x, double y, bool byKeyboard) {
    EXPECT_TRUE(QMetaObject::invokeMethod(menu(), "openAt", Q_ARG(double, x), Q_ARG(double, y),
                                          Q_ARG(bool, byKeyboard)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    settle();
  }
  void open() { openAt(0, 30, true); }
  void settle() { scene_.picture(); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&scene_.view(), key, modifiers);
  }
  // The text of the highlighted row; "" if there is none.
  QString highlighted() const {
    for (QQuickItem* item : column()->childItems())
      if (item->property("highlighted").toBool()) return item->property("text").toString();
    return {};
  }
  QString log() const { return scene_.read("", "log").toString(); }
  QQuickItem* focusItem() { return scene_.view().activeFocusItem(); }
  QPoint middleOf(QQuickItem* item) const {
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
  }

  ControlScene scene_{
      "FocusScope { id: holder; width: 320; height: 220; property string log: ''\n"
      "property int presses: 0; property int escapes: 0; property bool canLock: false\n"
      "property int more: 2\n"
      "Shortcut { sequence: 'Escape'; onActivated: ++holder.escapes }\n"
      "MarrowButton { objectName: 'opener'; text: 'Open'; focus: true\n"
      "  onClicked: ++holder.presses }\n"
      "MarrowMenu { objectName: 'menu'; name: 'Tools'\n"
      "  MarrowMenuItem { objectName: 'archive'; text: 'Archive'; shortcut: 'Ctrl+E'\n"
      "    onTriggered: holder.log += 'archive;' }\n"
      "  MarrowMenuItem { objectName: 'locked'; text: 'Locked'; enabled: holder.canLock\n"
      "    shortcut: 'Ctrl+L'; onTriggered: holder.log += 'locked;' }\n"
      "  MarrowMenuSeparator { objectName: 'line' }\n"
      "  Repeater { model: holder.more\n"
      "    MarrowMenuItem { required property int index; objectName: 'berry' + index\n"
      "      text: index === 0 ? 'Bilberry' : 'Blackberry ' + index\n"
      "      onTriggered: holder.log += 'berry' + index + ';' } }\n"
      "  MarrowMenuHeading { objectName: 'heading'; text: 'Danger' }\n"
      "  MarrowMenuItem { objectName: 'remove'; text: 'Remove'; destructive: true\n"
      "    onTriggered: holder.log += 'remove;' } } }"};
};

TEST_F(MarrowMenu, a_menu_looks_as_designed) {
  open();
  press(Qt::Key_Down);
  settle();
  expectProperties(*this, {{"archive", "height", 26},
                           {"archive/menuLabel", "text", "Archive"},
                           {"archive/menuLabel", "x", 8},
                           {"archive/menuLabel", "color", "#ffffff at 1.00"},
                           {"archive/menuKeys", "text", "Ctrl+E"},
                           {"archive/menuKeys", "color", "#9ca3af at 1.00"},
                           {"archive/menuFill", "color", "#000000 at 0.00"},
                           {"locked/menuLabel", "color", "#9ca3af at 1.00"},
                           {"line", "height", 9},
                           {"line/menuRule", "height", 1},
                           {"line/menuRule", "color", "#ffffff at 0.08"},
                           {"berry0/menuFill", "color", "#007aff at 1.00"},
                           {"berry0/menuFill", "radius", 5},
                           {"heading", "height", 22},
                           {"heading/menuHeading", "color", "#9ca3af at 1.00"},
                           {"remove/menuLabel", "color", "#ff3b30 at 1.00"}});
  EXPECT_EQ(row("archive")
                ->findChild<QQuickItem*>("menuLabel")
                ->property("font")
                .value<QFont>()
                .pixelSize(),
            12);
  const auto* ground = menu()->property("background").value<QQuickItem*>();
  EXPECT_EQ(describe(ground->property("color").value<QColor>()), "#232530 at 1.00");
  EXPECT_EQ(describe(ground->property("outlineColor").value<QColor>()), "#ffffff at 0.14");
  EXPECT_EQ(ground->property("radius"), 8);
}

TEST_F(MarrowMenu, the_shortcut_is_at_the_right_end_of_its_row) {
  open();
  for (const char* name : {"archive", "locked"}) {
    const QQuickItem* keys = row(name)->findChild<QQuickItem*>("menuKeys");
    const QQuickItem* label = row(name)->findChild<QQuickItem*>("menuLabel");
    EXPECT_EQ(keys->x() + keys->width(), row(name)->width() - 8);
    EXPECT_LE(label->x() + label->width(), keys->x());
    EXPECT_FALSE(label->property("truncated").toBool());
  }
}

TEST_F(MarrowMenu, arrows_wrap_around_and_skip_rows_that_cannot_be_chosen) {
  open();
  EXPECT_EQ(highlighted(), "Archive");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "Bilberry");
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "Remove");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "Archive");
  press(Qt::Key_Up);
  EXPECT_EQ(highlighted(), "Remove");
}

TEST_F(MarrowMenu, home_and_end_highlight_the_first_and_the_last_row) {
  open();
  press(Qt::Key_End);
  EXPECT_EQ(highlighted(), "Remove");
  press(Qt::Key_Home);
  EXPECT_EQ(highlighted(), "Archive");
}

TEST_F(MarrowMenu, a_letter_highlights_the_next_row_that_begins_with_it) {
  open();
  press(Qt::Key_B);
  EXPECT_EQ(highlighted(), "Bilberry");
  press(Qt::Key_B);
  EXPECT_EQ(highlighted(), "Blackberry 1");
  press(Qt::Key_B);
  EXPECT_EQ(highlighted(), "Bilberry");
  press(Qt::Key_L);
  press(Qt::Key_X);
  EXPECT_EQ(highlighted(), "Bilberry");
}

TEST_F(MarrowMenu, no_row_is_highlighted_if_the_pointer_opens_the_menu) {
  openAt(0, 30, false);
  EXPECT_EQ(highlighted(), "");
  press(Qt::Key_Return);
  EXPECT_TRUE(isOpen());
  press(Qt::Key_Up);
  EXPECT_EQ(highlighted(), "Remove");
  press(Qt::Key_Escape);
  openAt(0, 30, false);
  EXPECT_EQ(highlighted(), "");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "Archive");
}

TEST_F(MarrowMenu, return_enter_and_space_choose_the_row_and_close_the_menu) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
    open();
    press(Qt::Key_Up);
    press(key);
    EXPECT_FALSE(isOpen());
  }
  EXPECT_EQ(log(), "remove;remove;remove;");
}

TEST_F(MarrowMenu, the_hovered_row_is_highlighted_and_a_click_chooses_it) {
  open();
  const QPoint berry = middleOf(row("berry1"));
  QTest::mouseMove(&scene_.view(), berry - QPoint(0, 26));
  QTest::mouseMove(&scene_.view(), berry);
  EXPECT_EQ(highlighted(), "Blackberry 1");
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, berry);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(log(), "berry1;");
}

TEST_F(MarrowMenu, a_click_on_a_row_that_cannot_be_chosen_keeps_the_menu_open) {
  open();
  for (const char* name : {"locked", "line", "heading"})
    QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, middleOf(row(name)));
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(log(), "");
}

TEST_F(MarrowMenu, the_focus_stays_on_a_row_that_is_disabled) {
  scene_.control()->setProperty("canLock", true);
  open();
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "Locked");
  scene_.control()->setProperty("canLock", false);
  EXPECT_EQ(highlighted(), "");
  press(Qt::Key_Return);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(log(), "");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "Bilberry");
}

TEST_F(MarrowMenu, a_press_outside_only_closes_the_menu) {
  openAt(100, 60, true);
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, middleOf(scene_.find("opener")));
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(scene_.read("", "presses").toInt(), 0);
}

TEST_F(MarrowMenu, escape_closes_the_menu_and_reaches_no_other_shortcut) {
  open();
  press(Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(log(), "");
  EXPECT_EQ(scene_.read("", "escapes").toInt(), 0);
  press(Qt::Key_Escape);
  EXPECT_EQ(scene_.read("", "escapes").toInt(), 1);
}

TEST_F(MarrowMenu, the_keys_that_open_menus_close_the_menu) {
  for (const Qt::Key key : {Qt::Key_F10, Qt::Key_Menu}) {
    open();
    // The auto-repeat of the key that has opened the menu.
    QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&scene_.view(), &repeated);
    EXPECT_TRUE(isOpen());
    press(key);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(log(), "");
  }
}

TEST_F(MarrowMenu, no_key_passes_through_the_open_menu) {
  open();
  press(Qt::Key_Tab);
  press(Qt::Key_Backtab);
  press(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(highlighted(), "Archive");
}

TEST_F(MarrowMenu, the_focus_returns_to_its_item_when_the_menu_closes) {
  QQuickItem* opener = scene_.find("opener");
  press(Qt::Key_Tab);
  ASSERT_EQ(focusItem(), opener);
  ASSERT_TRUE(opener->property("visualFocus").toBool());
  const auto leave = [this](const std::function<void()>& act) {
    open();
    EXPECT_NE(focusItem(), scene_.find("opener"));
    act();
    EXPECT_FALSE(isOpen());
    return focusItem();
  };
  EXPECT_EQ(leave([this] { press(Qt::Key_Escape); }), opener);
  EXPECT_TRUE(opener->property("visualFocus").toBool());
  EXPECT_EQ(leave([this] { press(Qt::Key_Return); }), opener);
  EXPECT_EQ(
      leave([this] { QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, QPoint(390, 290)); }),
      opener);
}

TEST_F(MarrowMenu, the_menu_stays_inside_the_window) {
  openAt(350, 250, true);
  const auto* ground = menu()->property("background").value<QQuickItem*>();
  const QRectF place = ground->mapRectToScene(QRectF(0, 0, ground->width(), ground->height()));
  EXPECT_TRUE(QRectF(8, 8, 384, 284).contains(place)) << place.right() << " " << place.bottom();
}

TEST_F(MarrowMenu, the_menu_scrolls_to_the_highlighted_row_in_a_low_window) {
  scene_.control()->setProperty("more", 20);
  open();
  const auto* ground = menu()->property("background").value<QQuickItem*>();
  EXPECT_EQ(ground->height(), 300 - 16);
  const QRectF frame = ground->mapRectToScene(QRectF(0, 0, ground->width(), ground->height()));
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down}) {
    press(key);
    settle();
    const QQuickItem* here = focusItem();
    EXPECT_TRUE(frame.contains(here->mapRectToScene(QRectF(0, 0, here->width(), here->height()))))
        << highlighted().toStdString();
  }
}

TEST_F(MarrowMenu, the_menu_opens_with_its_first_row_visible_in_a_low_window) {
  scene_.control()->setProperty("more", 20);
  open();
  EXPECT_EQ(highlighted(), "Archive");
  EXPECT_EQ(rows()->findChild<QQuickItem*>("menuPlace")->property("contentY"), 0);
}

TEST_F(MarrowMenu, wheel_and_finger_scroll_the_menu_and_dragging_with_the_mouse_does_not) {
  scene_.control()->setProperty("more", 20);
  open();
  auto* const place = rows()->findChild<QQuickItem*>("menuPlace");
  const QPoint middle = middleOf(place);
  const auto scrolled = [place] { return place->property("contentY").toDouble(); };
  const double longest = place->property("contentHeight").toDouble() - place->height();
  ASSERT_GT(longest, 100);
  turnWheel(scene_.view(), middle, {0, 12000});
  pullByMouse(scene_.view(), middle, {0, -100});
  EXPECT_EQ(scrolled(), 0);
  turnWheel(scene_.view(), middle, {0, -120});
  EXPECT_EQ(scrolled(), 60);
  turnWheel(scene_.view(), middle, {0, -12000});
  EXPECT_EQ(scrolled(), longest);
  turnWheel(scene_.view(), middle, {0, 12000});
  EXPECT_EQ(scrolled(), 0);
  pullByFinger(scene_.view(), middle, {0, -100});
  EXPECT_GT(scrolled(), 20);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(log(), "");
}

TEST_F(MarrowMenu, the_menu_and_its_rows_are_accessible) {
  QAccessible::setActive(true);
  open();
  const QAccessibleInterface* list = QAccessible::queryAccessibleInterface(rows());
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->role(), QAccessible::PopupMenu);
  EXPECT_EQ(list->text(QAccessible::Name), "Tools");
  QAccessibleInterface* archive = QAccessible::queryAccessibleInterface(row("archive"));
  ASSERT_NE(archive, nullptr);
  EXPECT_EQ(archive->role(), QAccessible::MenuItem);
  EXPECT_EQ(archive->text(QAccessible::Name), "Archive");
  EXPECT_EQ(archive->text(QAccessible::Description), "Ctrl+E");
  EXPECT_TRUE(archive->state().focused);
  QAccessibleInterface* locked = QAccessible::queryAccessibleInterface(row("locked"));
  EXPECT_FALSE(locked->state().focusable);
  locked->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(isOpen());
  archive->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(log(), "archive;");
}

}  // namespace
}  // namespace tessaly
