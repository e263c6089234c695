#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/panes/ListScene_test.h"
#include "support/Look.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::Lt;
using testing::SizeIs;

// The rows are 40 points high and named by their numbers; `done` logs their actions.
class ListPane : public testing::Test {
 protected:
  void show(int rows) {
    scene_.show(
        "ListPane { id: pane; objectName: 'pane'; anchors.fill: parent; title: 'Some rows'\n"
        "caption: 'What they are'; emptyText: 'There are none.'; model: scene.rows\n"
        "beside: MarrowPill { objectName: 'choose'; text: 'Choose'; active: false }\n"
        "aboveRows: Text { objectName: 'columns'; height: 20; text: 'Row' }\n"
        "delegate: ListPaneRow { id: row; objectName: 'row'; height: 40; label: 'Row ' + index\n"
        "onActivated: scene.done += `open ${index};`\n"
        "onMenuAsked: (place, byKeyboard) => scene.done += `menu ${index} ${byKeyboard};`\n"
        "content: MarrowPill { objectName: 'act'; height: 24; text: 'Act'; active: false\n"
        "x: parent.width - width; Accessible.name: 'Act on ' + row.index\n"
        "focusPolicy: row.isTabStop ? Qt.StrongFocus : Qt.ClickFocus\n"
        "onClicked: scene.done += `act ${row.index};` } } }",
        "property int rows: 0; property string done", {{"rows", rows}});
  }
  QStringList done() {
    return scene_.view().rootObject()->property("done").toString().split(';', Qt::SkipEmptyParts);
  }
  QQuickItem* row(int index) {
    for (QQuickItem* const row : itemsNamed(scene_.view().contentItem(), "row")) {
      if (row->property("index") == index) return row;
    }
    ADD_FAILURE() << "there is no row " << index;
    return nullptr;
  }
  void expectInSight() {
    EXPECT_TRUE(scene_.rectOf(scene_.item("list")).contains(scene_.rectOf(scene_.focused())))
        << scene_.focusedName().toStdString();
  }

  ListScene scene_;
};

TEST_F(ListPane, the_pane_has_a_title_a_caption_and_rows_below_them) {
  show(3);
  expectLook(scene_.item("pane"), {{"listTitle", "text", "Some rows"},
                                   {"listTitle", "font.pixelSize", 16},
                                   {"listTitle", "font.weight", 600},
                                   {"listTitle", "color", "#ffffff at 1.00"},
                                   {"listCaption", "text", "What they are"},
                                   {"listCaption", "font.pixelSize", 12},
                                   {"listCaption", "color", "#9ca3af at 1.00"}});
  EXPECT_GT(scene_.rectOf(scene_.item("listCaption")).top(),
            scene_.rectOf(scene_.item("listTitle")).bottom());
  EXPECT_GT(scene_.rectOf(scene_.item("columns")).top(),
            scene_.rectOf(scene_.item("listCaption")).bottom());
  EXPECT_GE(scene_.rectOf(row(0)).top(), scene_.rectOf(scene_.item("columns")).bottom());
  EXPECT_GT(scene_.rectOf(scene_.item("choose")).left(), 700);
  EXPECT_THAT(itemsNamed(scene_.view().contentItem(), "row"), SizeIs(3));
  EXPECT_FALSE(scene_.shows("emptyMessage"));
}

TEST_F(ListPane, an_empty_pane_has_a_message_in_the_middle_of_the_space_of_the_rows) {
  show(0);
  expectLook(scene_.item("pane"), {{"emptyMessage", "text", "There are none."},
                                   {"emptyMessage", "font.pixelSize", 13},
                                   {"emptyMessage", "color", "#9ca3af at 1.00"}});
  const QRectF message = scene_.rectOf(scene_.item("emptyMessage"));
  const double top = scene_.rectOf(scene_.item("listCaption")).bottom() + 12;
  EXPECT_NEAR(message.center().y(), (top + 430) / 2, 1);
  EXPECT_NEAR(message.center().x(), 400, 1);
  EXPECT_FALSE(scene_.shows("list"));
  EXPECT_FALSE(scene_.shows("columns"));
}

TEST_F(ListPane, tab_visits_only_the_current_row_and_its_button) {
  show(50);
  scene_.focusOn("before");
  QStringList stops;
  for (scene_.press(Qt::Key_Tab); scene_.focused() != scene_.item("after") && stops.size() < 9;
       scene_.press(Qt::Key_Tab)) {
    stops << scene_.focusedName();
    EXPECT_THAT(itemsNamed(scene_.view().contentItem(), "focusRing"), SizeIs(1));
  }
  EXPECT_EQ(stops, (QStringList{"Choose", "Row 0", "Act on 0"}));
  QStringList back;
  for (scene_.backtab(); scene_.focused() != scene_.item("before") && back.size() < 9;
       scene_.backtab())
    back << scene_.focusedName();
  std::reverse(back.begin(), back.end());
  EXPECT_EQ(back, stops);
}

TEST_F(ListPane, arrows_page_keys_home_and_end_move_the_focus_through_the_rows) {
  show(50);
  scene_.focusOn("choose");
  scene_.press(Qt::Key_Tab);
  const struct {
    Qt::Key key;
    int row;
  } steps[] = {{Qt::Key_Up, 0},   {Qt::Key_Down, 1},     {Qt::Key_Down, 2},
               {Qt::Key_Up, 1},   {Qt::Key_PageDown, 7}, {Qt::Key_PageUp, 1},
               {Qt::Key_End, 49}, {Qt::Key_Down, 49},    {Qt::Key_Home, 0}};
  for (const auto& step : steps) {
    scene_.press(step.key);
    EXPECT_EQ(scene_.focusedName(), QStringLiteral("Row %1").arg(step.row));
    expectInSight();
  }
  // From a button of a row to the next row itself.
  scene_.press(Qt::Key_Tab);
  scene_.press(Qt::Key_Down);
  EXPECT_EQ(scene_.focusedName(), "Row 1");
  // Tab returns to the row that had the focus.
  scene_.focusOn("before");
  scene_.press(Qt::Key_Tab);
  scene_.press(Qt::Key_Tab);
  EXPECT_EQ(scene_.focusedName(), "Row 1");
}

TEST_F(ListPane, a_click_return_and_assistive_tools_activate_a_row) {
  show(5);
  scene_.click(row(2));
  scene_.press(Qt::Key_Down);
  scene_.press(Qt::Key_Return);
  scene_.press(Qt::Key_Enter);
  QAccessible::queryAccessibleInterface(scene_.focused())
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(done(), (QStringList{"open 2", "open 3", "open 3", "open 3"}));
  scene_.press(Qt::Key_Space);
  EXPECT_THAT(done(), SizeIs(4));
}

TEST_F(ListPane, the_buttons_of_rows_are_pressed_by_pointer_and_keys) {
  show(5);
  scene_.click(itemNamed(row(1), "act"));
  scene_.press(Qt::Key_Up);
  scene_.press(Qt::Key_Tab);
  scene_.press(Qt::Key_Return);
  scene_.press(Qt::Key_Space);
  EXPECT_EQ(done(), (QStringList{"act 1", "act 0", "act 0"}));
}

TEST_F(ListPane, a_right_click_and_keys_request_the_menu_of_a_row) {
  show(5);
  scene_.click(row(2), Qt::RightButton);
  EXPECT_EQ(scene_.focusedName(), "Row 2");
  EXPECT_FALSE(scene_.shows("focusRing"));
  scene_.press(Qt::Key_Menu);
  scene_.press(Qt::Key_Down);
  scene_.press(Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(done(), (QStringList{"menu 2 false", "menu 2 true", "menu 3 true"}));
}

TEST_F(ListPane, only_the_rows_near_the_visible_part_are_built) {
  show(10000);
  const std::size_t atFirst = itemsNamed(scene_.view().contentItem(), "row").size();
  EXPECT_THAT(atFirst, Lt(20U));
  scene_.focusOn("choose");
  scene_.press(Qt::Key_Tab);
  scene_.press(Qt::Key_End);
  EXPECT_EQ(scene_.focusedName(), "Row 9999");
  expectInSight();
  EXPECT_THAT(itemsNamed(scene_.view().contentItem(), "row").size(), Lt(20U));
  EXPECT_TRUE(scene_.item("scrollBar")->isVisible());
}

TEST_F(ListPane, the_focus_moves_to_another_row_when_its_row_is_removed) {
  scene_.show(
      "ListModel { id: some; ListElement { word: 'one' } ListElement { word: 'two' }\n"
      "ListElement { word: 'three' } }\n"
      "ListPane { objectName: 'pane'; anchors.fill: parent; title: ''; caption: ''\n"
      "emptyText: ''; model: some\n"
      "delegate: ListPaneRow { required property string word; height: 40; label: word } }\n"
      "Connections { target: scene; function onGoneChanged() { some.remove(scene.gone) } }",
      "property int gone: -1");
  scene_.focusOn("before");
  scene_.press(Qt::Key_Tab);
  scene_.press(Qt::Key_Down);
  ASSERT_EQ(scene_.focusedName(), "two");
  for (const auto& [gone, next] : {std::pair(1, "three"), {0, "three"}}) {
    scene_.view().rootObject()->setProperty("gone", gone);
    scene_.update();
    EXPECT_EQ(scene_.focusedName(), next);
    EXPECT_TRUE(scene_.shows("focusRing"));
  }
}

TEST_F(ListPane, the_list_and_its_rows_are_accessible) {
  show(3);
  QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(scene_.item("list"));
  EXPECT_EQ(list->role(), QAccessible::List);
  EXPECT_EQ(list->text(QAccessible::Name), "Some rows");
  scene_.focusOn("choose");
  scene_.press(Qt::Key_Tab);
  QAccessibleInterface* const row = QAccessible::queryAccessibleInterface(scene_.focused());
  EXPECT_EQ(row->role(), QAccessible::Button);
  EXPECT_TRUE(row->state().focusable);
  EXPECT_EQ(row->parent()->role(), QAccessible::ListItem);
  EXPECT_EQ(row->parent()->text(QAccessible::Name), "Row 0");
  EXPECT_THAT(done(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
