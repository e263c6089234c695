#include "app/controls/MenuNavigation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double rowHeight = 20;

class MenuNavigationTest : public testing::Test {
 protected:
  MenuNavigationTest() {
    view_.setHeight(50);
    column_.setParentItem(&view_);
    column_.setFlag(QQuickItem::ItemIsFocusScope);
    navigation_.setColumn(&column_);
    navigation_.setProperty("view", QVariant::fromValue(&view_));
    QObject::connect(&navigation_, &MenuNavigation::chosen,
                     [this](const MenuRow* row) { chosen_.push_back(row->text().toStdString()); });
    QObject::connect(&navigation_, &MenuNavigation::closeAsked, [this] { ++closes_; });
  }

  // Adds a row below the others.
  MenuRow* add(const char* text) {
    auto row = std::make_unique<MenuRow>();
    row->setText(QString::fromLatin1(text));
    place(*row);
    rows_.push_back(std::move(row));
    return rows_.back().get();
  }
  void addLine() {
    line_ = std::make_unique<QQuickItem>();
    place(*line_);
  }
  void press(Qt::Key key, const char* text = "", Qt::KeyboardModifiers modifiers = {}) {
    navigation_.press(key, modifiers.toInt(), QString::fromLatin1(text), false);
  }
  void repeat(Qt::Key key) { navigation_.press(key, 0, {}, true); }
  std::string highlighted() const {
    for (const auto& row : rows_)
      if (row->hasFocus()) return row->text().toStdString();
    return {};
  }
  double scrolled() const { return view_.property("contentY").toDouble(); }

  QQuickItem view_;
  QQuickItem column_;
  MenuNavigation navigation_;
  std::vector<std::unique_ptr<MenuRow>> rows_;
  std::unique_ptr<QQuickItem> line_;
  std::vector<std::string> chosen_;
  int closes_ = 0;

 private:
  void place(QQuickItem& item) {
    item.setY(rowHeight * static_cast<double>(column_.childItems().size()));
    item.setHeight(rowHeight);
    item.setParentItem(&column_);
  }
};

TEST_F(MenuNavigationTest, arrows_home_and_end_skip_rows_that_cannot_be_chosen) {
  add("one");
  addLine();
  add("disabled")->setEnabled(false);
  add("hidden")->setVisible(false);
  add("two");
  navigation_.goToFirst();
  EXPECT_EQ(highlighted(), "one");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "two");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "one");
  press(Qt::Key_Up);
  EXPECT_EQ(highlighted(), "two");
  press(Qt::Key_Home);
  EXPECT_EQ(highlighted(), "one");
  press(Qt::Key_End);
  EXPECT_EQ(highlighted(), "two");
}

TEST_F(MenuNavigationTest, the_first_arrow_highlights_the_first_or_the_last_row) {
  add("one");
  add("two");
  add("three");
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "one");
  navigation_.reset();
  EXPECT_EQ(highlighted(), "");
  press(Qt::Key_Up);
  EXPECT_EQ(highlighted(), "three");
}

TEST_F(MenuNavigationTest, arrows_continue_from_a_row_that_was_disabled) {
  add("one");
  MenuRow* const two = add("two");
  add("three");
  navigation_.goToFirst();
  press(Qt::Key_Down);
  two->setEnabled(false);
  press(Qt::Key_Return);
  EXPECT_THAT(chosen_, IsEmpty());
  press(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "three");
}

TEST_F(MenuNavigationTest, keys_do_nothing_if_no_row_can_be_chosen) {
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_Return}) press(key);
  add("disabled")->setEnabled(false);
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_Return}) press(key);
  press(Qt::Key_D, "d");
  EXPECT_EQ(highlighted(), "");
  EXPECT_THAT(chosen_, IsEmpty());
}

TEST_F(MenuNavigationTest, a_letter_moves_through_the_rows_that_begin_with_it) {
  add("Bilberry");
  add("Apple");
  add("\xC4pple");
  add("Blackberry");
  press(Qt::Key_B, "b");
  EXPECT_EQ(highlighted(), "Bilberry");
  press(Qt::Key_B, "B");
  EXPECT_EQ(highlighted(), "Blackberry");
  press(Qt::Key_B, "b");
  EXPECT_EQ(highlighted(), "Bilberry");
  press(Qt::Key_Adiaeresis, "\xE4");
  EXPECT_EQ(highlighted(), "\xC3\x84pple");
  press(Qt::Key_X, "x");
  press(Qt::Key_A, "a", Qt::ControlModifier);
  press(Qt::Key_A, "a", Qt::AltModifier);
  press(Qt::Key_Shift);
  EXPECT_EQ(highlighted(), "\xC3\x84pple");
}

TEST_F(MenuNavigationTest, each_press_chooses_the_highlighted_row_once) {
  add("one");
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
    navigation_.reset();
    press(key);
    navigation_.goToFirst();
    press(key);
    repeat(key);
  }
  EXPECT_THAT(chosen_, ElementsAre("one", "one", "one"));
}

TEST_F(MenuNavigationTest, escape_and_menu_keys_close_the_menu_unless_they_are_held) {
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_F10, Qt::Key_Menu}) press(key);
  EXPECT_EQ(closes_, 3);
  for (const Qt::Key key : {Qt::Key_F10, Qt::Key_Menu}) repeat(key);
  EXPECT_EQ(closes_, 3);
}

TEST_F(MenuNavigationTest, the_menu_scrolls_only_as_far_as_the_highlighted_row) {
  for (const char* text : {"1", "2", "3", "4"}) add(text);
  press(Qt::Key_Home);
  press(Qt::Key_Down);
  EXPECT_EQ(scrolled(), 0);
  press(Qt::Key_Down);
  EXPECT_EQ(scrolled(), 10);
  press(Qt::Key_Down);
  EXPECT_EQ(scrolled(), 30);
  press(Qt::Key_Up);
  EXPECT_EQ(scrolled(), 30);
  press(Qt::Key_Home);
  EXPECT_EQ(scrolled(), 0);
  press(Qt::Key_End);
  navigation_.reset();
  EXPECT_EQ(scrolled(), 0);
}

TEST_F(MenuNavigationTest, the_top_of_a_row_that_does_not_fit_is_shown) {
  add("one");
  add("two");
  view_.setHeight(0);
  navigation_.goToFirst();
  EXPECT_EQ(scrolled(), 0);
  press(Qt::Key_Down);
  EXPECT_EQ(scrolled(), rowHeight);
}

TEST_F(MenuNavigationTest, picking_a_row_chooses_it_once_whenever_it_was_added) {
  MenuRow* const early = add("early");
  MenuRow* const late = add("late");
  early->pick();
  late->pick();
  EXPECT_THAT(chosen_, ElementsAre("early", "late"));
  early->setEnabled(false);
  early->pick();
  EXPECT_THAT(chosen_, ElementsAre("early", "late"));
}

}  // namespace
}  // namespace tessaly
