// The canvas operated by the keyboard.
#include <QKeyEvent>

#include "app/map/CanvasFixture_test.h"
#include "app/map/TileNeighbour.h"
#include "app/map/TooltipPlacement.h"

namespace tessaly {
namespace {

class CanvasKeysTest : public CanvasFixture {
 protected:
  void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, modifiers);
      QCoreApplication::sendEvent(&window_, &event);
      isTaken_ = event.isAccepted();
      if (type == QEvent::KeyPress) wasTaken_ = isTaken_;
    }
  }
  // Presses a key, with the repetitions of a held key.
  void hold(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const bool isRepeat : {false, true, true}) {
      QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), isRepeat);
      QCoreApplication::sendEvent(&window_, &event);
      wasTaken_ = event.isAccepted();
    }
  }
  void comeByTab() { canvas_->forceActiveFocus(Qt::TabFocusReason); }
  // The middle of the visible part of the tile itself.
  QPointF middleOf(std::string_view path) const {
    const Rect face =
        TileNeighbour::faceOf(canvas_->tiles()[canvas_->tiles().find(path).value()].rect);
    return {face.x + face.width / 2, face.y + face.height / 2};
  }
  double tooltipHeight() const { return item("mapTooltip")->height(); }
  // The path of the highlighted tile.
  std::string highlighted() const { return canvas_->hoverPath().value_or(""); }

  bool isTaken_ = false;
  bool wasTaken_ = false;
};

TEST_F(CanvasKeysTest, focus_starts_on_the_first_tile) {
  EXPECT_TRUE(canvas_->activeFocusOnTab());
  comeByTab();
  EXPECT_EQ(highlighted(), "/r/docs");
  EXPECT_EQ(focusedPath(), "/r/docs");
  EXPECT_EQ(canvas_->keyboardTile(), 0);
  EXPECT_EQ(textOf("tooltipName"), "docs");
}

TEST_F(CanvasKeysTest, focus_starts_on_a_tile_by_shift_tab_as_well) {
  canvas_->forceActiveFocus(Qt::BacktabFocusReason);
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, the_tooltip_is_beside_the_middle_of_the_visible_part_of_the_tile) {
  comeByTab();
  EXPECT_TRUE(item("mapTooltip")->isVisible());
  EXPECT_EQ(item("mapTooltip")->position(),
            TooltipPlacement::topLeft(middleOf("/r/docs"), canvas_->size(), tooltipHeight()));
  key(Qt::Key_Down);
  EXPECT_EQ(item("mapTooltip")->position(),
            TooltipPlacement::topLeft(middleOf("/r/docs/a.pdf"), canvas_->size(), tooltipHeight()));
}

TEST_F(CanvasKeysTest, focus_does_not_match_a_tile_whose_path_is_only_a_prefix) {
  session_.selection().setFocused(fileNode("/r/film.mp4.part", 3));
  comeByTab();
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, focus_starts_on_the_focused_item) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  comeByTab();
  EXPECT_EQ(highlighted(), "/r/film.mp4");
}

TEST_F(CanvasKeysTest, focus_starts_on_the_tile_around_the_focused_item) {
  session_.selection().setFocused(fileNode("/r/docs/old/letter", 3));
  comeByTab();
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, arrows_move_from_tile_to_tile) {
  comeByTab();
  key(Qt::Key_Down);
  EXPECT_EQ(highlighted(), "/r/docs/a.pdf");
  EXPECT_EQ(focusedPath(), "/r/docs/a.pdf");
  key(Qt::Key_Up);
  EXPECT_EQ(highlighted(), "/r/docs");
  key(Qt::Key_Right);
  EXPECT_EQ(highlighted(), "/r/film.mp4");
  key(Qt::Key_Left);
  EXPECT_NE(highlighted(), "/r/film.mp4");
}

TEST_F(CanvasKeysTest, arrows_of_the_keypad_move_too) {
  comeByTab();
  key(Qt::Key_Down, Qt::KeypadModifier);
  EXPECT_EQ(highlighted(), "/r/docs/a.pdf");
}

TEST_F(CanvasKeysTest, the_first_arrow_only_shows_the_focused_tile) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  canvas_->forceActiveFocus(Qt::MouseFocusReason);
  ASSERT_EQ(highlighted(), "");
  key(Qt::Key_Left);
  EXPECT_EQ(highlighted(), "/r/film.mp4");
  key(Qt::Key_Left);
  EXPECT_NE(highlighted(), "/r/film.mp4");
}

TEST_F(CanvasKeysTest, keys_act_on_the_current_tiles_and_not_on_the_drawn_ones) {
  comeByTab();
  canvas_->setNode(NodeHandle(
      folderNode("/s", 100, {folderNode("/s/new", 100, {fileNode("/s/new/one", 100)})})));
  key(Qt::Key_Return);
  EXPECT_TRUE(opened_.empty());
  EXPECT_EQ(highlighted(), "/s/new");
  key(Qt::Key_Return);
  EXPECT_EQ(opened_, std::vector<std::string>{"/s/new"});
}

TEST_F(CanvasKeysTest, keys_act_at_once_on_the_focused_item) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  canvas_->forceActiveFocus(Qt::MouseFocusReason);
  ASSERT_EQ(highlighted(), "");
  key(Qt::Key_Return);
  EXPECT_EQ(machine_.workspace.revealed.size(), 1U);
}

TEST_F(CanvasKeysTest, arrows_stop_at_the_border) {
  comeByTab();
  key(Qt::Key_Up);
  EXPECT_TRUE(wasTaken_);
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, arrows_with_modifiers_are_not_taken) {
  comeByTab();
  key(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_FALSE(wasTaken_);
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, return_opens_a_folder) {
  comeByTab();
  key(Qt::Key_Return);
  EXPECT_EQ(opened_, std::vector<std::string>{"/r/docs"});
}

TEST_F(CanvasKeysTest, return_reveals_a_file_in_the_file_viewer) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  comeByTab();
  key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(machine_.workspace.revealed.size(), 1U);
  EXPECT_TRUE(opened_.empty());
}

TEST_F(CanvasKeysTest, shift_return_selects_and_command_return_queues) {
  comeByTab();
  key(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(session_.selection().selected(), std::set<std::string>{"/r/docs"});
  EXPECT_TRUE(session_.cleanupQueue().queue().empty());
  key(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_EQ(session_.cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session_.cleanupQueue().queue()[0].path(), "/r/docs");
}

TEST_F(CanvasKeysTest, held_return_acts_once) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  comeByTab();
  hold(Qt::Key_Return);
  EXPECT_TRUE(wasTaken_);
  EXPECT_EQ(machine_.workspace.revealed.size(), 1U);
  hold(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(session_.selection().selected(), std::set<std::string>{"/r/film.mp4"});
  hold(Qt::Key_Enter, Qt::ShiftModifier);
  EXPECT_TRUE(session_.selection().selected().empty());
}

TEST_F(CanvasKeysTest, a_held_arrow_moves_on) {
  comeByTab();
  hold(Qt::Key_Right);
  const std::string there = highlighted();
  key(Qt::Key_Right);
  EXPECT_EQ(highlighted(), there);
  EXPECT_NE(there, "/r/docs");
}

TEST_F(CanvasKeysTest, keys_do_nothing_while_a_band_is_drawn) {
  comeByTab();
  press(on("/r/film.mp4"));
  dragTo(on("/r/docs/a.pdf"));
  ASSERT_EQ(highlighted(), "");
  for (const int pressed : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Menu}) {
    key(pressed);
    EXPECT_TRUE(wasTaken_);
    EXPECT_EQ(highlighted(), "");
  }
  QQuickItem other(window_.contentItem());
  other.forceActiveFocus(Qt::TabFocusReason);
  comeByTab();
  EXPECT_EQ(highlighted(), "");
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_TRUE(opened_.empty());
  release(on("/r/docs/a.pdf"));
  EXPECT_FALSE(session_.selection().selected().empty());
}

TEST_F(CanvasKeysTest, the_menu_key_requests_the_menu_of_the_tile) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  comeByTab();
  std::vector<std::string> asked;
  QObject::connect(canvas_.get(), &TreemapSurface::tileMenuAsked,
                   [&](const NodeHandle& node, QPointF place, bool byKeyboard) {
                     EXPECT_TRUE(byKeyboard);
                     EXPECT_EQ(canvas_->tiles().at(place), canvas_->tiles().find("/r/film.mp4"));
                     asked.push_back(node.node()->path());
                   });
  key(Qt::Key_F10);
  EXPECT_FALSE(wasTaken_);
  EXPECT_TRUE(asked.empty());
  key(Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(asked, std::vector<std::string>{"/r/film.mp4"});
}

TEST_F(CanvasKeysTest, the_menu_of_a_folder_is_requested_in_its_header) {
  comeByTab();
  std::optional<QPointF> asked;
  QObject::connect(canvas_.get(), &TreemapSurface::tileMenuAsked,
                   [&](const NodeHandle&, QPointF place) { asked = place; });
  key(Qt::Key_Menu);
  EXPECT_EQ(asked, middleOf("/r/docs"));
}

TEST_F(CanvasKeysTest, the_menu_opens_and_returns_the_keyboard_focus) {
  comeByTab();
  key(Qt::Key_Menu);
  EXPECT_FALSE(canvas_->hasActiveFocus());
  key(Qt::Key_Escape);
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, escape_goes_back_if_possible) {
  comeByTab();
  key(Qt::Key_Escape);
  EXPECT_FALSE(wasTaken_);
}

TEST_F(CanvasKeysTest, arrows_start_at_the_tile_under_the_pointer) {
  canvas_->forceActiveFocus(Qt::MouseFocusReason);
  EXPECT_EQ(highlighted(), "");
  moveTo(on("/r/docs/a.pdf"));
  key(Qt::Key_Up);
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, the_pointer_takes_over_when_it_moves) {
  comeByTab();
  moveTo(on("/r/film.mp4"));
  EXPECT_EQ(highlighted(), "/r/film.mp4");
  EXPECT_FALSE(canvas_->hasKeyboard());
  EXPECT_EQ(canvas_->keyboardTile(), -1);
}

TEST_F(CanvasKeysTest, a_pointer_that_rests_does_not_move_the_focus) {
  moveTo(on("/r/film.mp4"));
  comeByTab();
  key(Qt::Key_Left);
  const std::string there = highlighted();
  EXPECT_NE(there, "/r/film.mp4");
  moveTo(on("/r/film.mp4"));
  EXPECT_EQ(highlighted(), there);
}

TEST_F(CanvasKeysTest, nothing_is_highlighted_without_the_keyboard_focus) {
  QQuickItem other(window_.contentItem());
  comeByTab();
  other.forceActiveFocus(Qt::TabFocusReason);
  EXPECT_EQ(highlighted(), "");
  EXPECT_FALSE(canvas_->hasKeyboard());
}

TEST_F(CanvasKeysTest, the_focused_tile_is_kept_during_a_menu) {
  QQuickItem menu(window_.contentItem());
  comeByTab();
  menu.forceActiveFocus(Qt::PopupFocusReason);
  canvas_->forceActiveFocus(Qt::PopupFocusReason);
  EXPECT_EQ(highlighted(), "/r/docs");
}

TEST_F(CanvasKeysTest, the_focused_tile_is_kept_during_the_menu_of_the_window) {
  QQuickItem menu(window_.contentItem());
  comeByTab();
  key(Qt::Key_Down);
  menu.forceActiveFocus(Qt::MenuBarFocusReason);
  EXPECT_EQ(highlighted(), "/r/docs/a.pdf");
}

TEST_F(CanvasKeysTest, the_focused_tile_is_kept_while_another_program_is_active) {
  comeByTab();
  key(Qt::Key_Down);
  for (const auto type : {QEvent::FocusOut, QEvent::FocusIn}) {
    QFocusEvent event(type, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(&window_, &event);
    EXPECT_EQ(canvas_->hasActiveFocus(), type == QEvent::FocusIn);
    EXPECT_EQ(highlighted(), "/r/docs/a.pdf");
  }
}

TEST_F(CanvasKeysTest, the_focus_stays_on_its_tile_when_the_map_is_rebuilt) {
  comeByTab();
  key(Qt::Key_Down);
  session_.shown().setHeatmap(true);
  draw();
  EXPECT_EQ(highlighted(), "/r/docs/a.pdf");
  EXPECT_EQ(textOf("tooltipName"), "a.pdf");
}

TEST_F(CanvasKeysTest, rebuilding_the_map_does_not_change_the_focused_item) {
  comeByTab();
  key(Qt::Key_Down);
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  session_.shown().setHeatmap(true);
  draw();
  EXPECT_EQ(highlighted(), "/r/docs/a.pdf");
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
}

TEST_F(CanvasKeysTest, no_tile_is_focused_after_it_is_gone_until_a_key_is_pressed) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  comeByTab();
  ASSERT_EQ(highlighted(), "/r/film.mp4");
  canvas_->setNode(NodeHandle(folderNode("/r", 100, {fileNode("/r/left", 100)})));
  draw();
  EXPECT_EQ(highlighted(), "");
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  EXPECT_EQ(canvas_->keyboardTile(), -1);
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
  key(Qt::Key_Left);
  EXPECT_EQ(highlighted(), "/r/left");
  EXPECT_EQ(canvas_->keyboardTile(), 0);
  EXPECT_EQ(focusedPath(), "/r/left");
}

TEST_F(CanvasKeysTest, a_tile_that_reappears_is_focused_again) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  comeByTab();
  canvas_->setNode(NodeHandle(folderNode("/r", 100, {fileNode("/r/left", 100)})));
  draw();
  canvas_->setNode(NodeHandle(canvasSample()));
  draw();
  EXPECT_EQ(highlighted(), "/r/film.mp4");
  EXPECT_EQ(item("mapTooltip")->position(),
            TooltipPlacement::topLeft(middleOf("/r/film.mp4"), canvas_->size(), tooltipHeight()));
}

TEST_F(CanvasKeysTest, the_focused_item_stays_when_the_canvas_loses_the_keyboard_focus) {
  QQuickItem other(window_.contentItem());
  moveTo(on("/r/film.mp4"));
  comeByTab();
  key(Qt::Key_Left);
  const auto there = focusedPath();
  ASSERT_NE(there, "/r/film.mp4");
  other.forceActiveFocus(Qt::TabFocusReason);
  draw();
  EXPECT_EQ(focusedPath(), there);
  EXPECT_EQ(highlighted(), "");
}

TEST_F(CanvasKeysTest, a_new_canvas_starts_only_at_the_focused_item) {
  session_.selection().setFocused(fileNode("/r/film.mp4", 300));
  canvas_->takeKeyboard();
  draw();
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_EQ(highlighted(), "/r/film.mp4");

  session_.selection().setFocused(folderNode("/r", 1000));
  show(canvasSample());
  canvas_->takeKeyboard();
  draw();
  EXPECT_EQ(highlighted(), "");
  EXPECT_TRUE(canvas_->hasKeyboard());
  EXPECT_EQ(focusedPath(), "/r");
}

TEST_F(CanvasKeysTest, keys_do_nothing_on_an_empty_map) {
  canvas_->setNode(NodeHandle(folderNode("/r", 0)));
  draw();
  comeByTab();
  for (const int pressed : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Menu}) key(pressed);
  EXPECT_EQ(highlighted(), "");
  EXPECT_TRUE(opened_.empty());
  EXPECT_EQ(canvas_->keyboardTile(), -1);
}

}  // namespace
}  // namespace tessaly
