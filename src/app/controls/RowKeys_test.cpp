#include "app/controls/RowKeys.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(RowKeys, keys_move_to_a_neighbour_by_a_page_and_to_the_ends) {
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Up, 10, 100, 7), 9);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Down, 10, 100, 7), 11);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_PageUp, 10, 100, 7), 3);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_PageDown, 10, 100, 7), 17);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Home, 10, 100, 7), 0);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_End, 10, 100, 7), 99);
}

TEST(RowKeys, keys_stop_at_the_ends) {
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Up, 0, 100, 7), 0);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Down, 99, 100, 7), 99);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_PageUp, 3, 100, 7), 0);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_PageDown, 97, 100, 7), 99);
}

TEST(RowKeys, arrows_start_at_the_first_row_if_there_is_no_current_one) {
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Down, -1, 100, 7), 0);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Up, -1, 100, 7), 0);
}

TEST(RowKeys, other_keys_and_an_empty_list_give_no_row) {
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Left, 10, 100, 7), -1);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Tab, 10, 100, 7), -1);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_Down, -1, 0, 7), -1);
  EXPECT_EQ(RowKeys::rowFor(Qt::Key_End, -1, 0, 7), -1);
}

TEST(RowKeys, the_menu_key_and_shift_f10_request_a_menu) {
  EXPECT_TRUE(RowKeys::asksForMenu(Qt::Key_Menu, Qt::NoModifier));
  EXPECT_TRUE(RowKeys::asksForMenu(Qt::Key_F10, Qt::ShiftModifier));
  EXPECT_FALSE(RowKeys::asksForMenu(Qt::Key_F10, Qt::NoModifier));
  EXPECT_FALSE(RowKeys::asksForMenu(Qt::Key_F10, Qt::ShiftModifier | Qt::ControlModifier));
  EXPECT_FALSE(RowKeys::asksForMenu(Qt::Key_Return, Qt::NoModifier));
}

TEST(RowKeys, a_page_is_one_row_less_than_fit) {
  EXPECT_EQ(RowKeys::rowsOfPage(300, 4000, 100), 6);
  EXPECT_EQ(RowKeys::rowsOfPage(319, 4000, 100), 6);
  EXPECT_EQ(RowKeys::rowsOfPage(50, 4000, 100), 1);
  EXPECT_EQ(RowKeys::rowsOfPage(0, 4000, 100), 1);
}

TEST(RowKeys, a_page_is_one_row_less_than_all_if_all_are_visible) {
  EXPECT_EQ(RowKeys::rowsOfPage(4000, 120, 3), 2);
  EXPECT_EQ(RowKeys::rowsOfPage(4000, 0, 0), 1);
}

}  // namespace
}  // namespace tessaly
