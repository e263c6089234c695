// Drags over the canvas in a window.
#include <algorithm>
#include <gtest/gtest.h>

#include <QKeyEvent>

#include "app/map/CanvasFixture_test.h"

namespace tessaly {
namespace {

using Paths = std::vector<std::string>;

class RubberBandTest : public CanvasFixture {
 protected:
  const Rect rectOf(std::string_view path) const {
    return canvas_->tiles()[canvas_->tiles().find(path).value()].rect.rect();
  }

  Paths selectedNodes() const {
    Paths paths;
    for (const DiskNode& node : session_.selection().selectedNodes()) paths.push_back(node.path());
    std::ranges::sort(paths);
    return paths;
  }

  // Drags from the middle of one tile to a little beyond that of another, without the release.
  void dragOver(std::string_view from, std::string_view to) {
    press(on(from));
    dragTo(on(from) + QPointF(9, 0));
    dragTo(endOn(to));
  }
  QPointF endOn(std::string_view path) const { return on(path) + QPointF(6, 6); }

  void key(Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&window_, &event);
  }
};

TEST_F(RubberBandTest, the_band_extends_from_the_start_of_the_drag_to_the_pointer) {
  press({100, 120});
  dragTo({104, 120});
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
  dragTo({60, 300});
  draw();
  EXPECT_EQ(canvas_->band().band(), (Rect{60, 120, 40, 180}));
  release({60, 300});
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
}

TEST_F(RubberBandTest, the_band_is_above_the_tiles_and_below_the_tooltip) {
  const QImage plain = window_.grabWindow();
  press({100, 100});
  dragTo({400, 400});
  draw();
  const QImage banded = window_.grabWindow();
  const QPoint inside = canvas_->mapToScene(QPointF(250, 250)).toPoint();
  const QPoint outside = canvas_->mapToScene(QPointF(500, 450)).toPoint();
  EXPECT_GT(qBlue(banded.pixel(inside)), qBlue(plain.pixel(inside)));
  EXPECT_EQ(banded.pixel(outside), plain.pixel(outside));
  const QList<QQuickItem*> layers = canvas_->childItems();
  EXPECT_LT(layers.indexOf(item("tileTexture")), layers.indexOf(item("rubberBand")));
  EXPECT_LT(layers.indexOf(item("hoverOverlay")), layers.indexOf(item("rubberBand")));
  EXPECT_LT(layers.indexOf(item("rubberBand")), layers.indexOf(item("mapTooltip")));
  release({1, 1});
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
}

TEST_F(RubberBandTest, the_band_stays_inside_the_rounded_corners_of_the_canvas) {
  const QImage plain = window_.grabWindow();
  press({300, 300});
  dragTo({-30, -30});
  draw();
  const QImage banded = window_.grabWindow();
  const QPoint corner = canvas_->mapToScene(QPointF(0, 0)).toPoint();
  EXPECT_EQ(banded.pixel(corner), plain.pixel(corner));
  EXPECT_EQ(banded.pixel(corner + QPoint(-2, 100)), plain.pixel(corner + QPoint(-2, 100)));
  EXPECT_NE(banded.pixel(corner + QPoint(1, 100)), plain.pixel(corner + QPoint(1, 100)));
}

TEST_F(RubberBandTest, the_band_selects_the_tiles_it_touches_and_is_not_a_click) {
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  release(endOn("/r/docs/b.pdf"));
  EXPECT_EQ(selectedNodes(), (Paths{"/r/docs/a.pdf", "/r/docs/b.pdf"}));
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(RubberBandTest, shift_at_the_release_decides_between_adding_and_replacing) {
  session_.selection().selectNodes({fileNode("/r/film.mp4", 300, FileKind::video)}, false);
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  releaseHolding(Qt::ShiftModifier, endOn("/r/docs/b.pdf"));
  EXPECT_EQ(selectedNodes(), (Paths{"/r/docs/a.pdf", "/r/docs/b.pdf", "/r/film.mp4"}));

  modifiers_ = Qt::ShiftModifier;
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  modifiers_ = Qt::NoModifier;
  release(endOn("/r/docs/b.pdf"));
  EXPECT_EQ(selectedNodes(), (Paths{"/r/docs/a.pdf", "/r/docs/b.pdf"}));
}

TEST_F(RubberBandTest, a_band_under_four_points_clears_the_selection_unless_shift_is_held) {
  session_.selection().selectNodes({fileNode("/r/film.mp4", 300, FileKind::video)}, false);
  const QPointF point = on("/r/docs/a.pdf");
  press(point);
  dragTo(point + QPointF(60, 3));
  releaseHolding(Qt::ShiftModifier, point + QPointF(60, 3));
  EXPECT_EQ(selectedNodes(), Paths{"/r/film.mp4"});
  press(point);
  dragTo(point + QPointF(60, 3));
  release(point + QPointF(60, 3));
  EXPECT_EQ(selectedNodes(), Paths{});
  press(point);
  dragTo(point + QPointF(60, 4));
  release(point + QPointF(60, 4));
  EXPECT_EQ(selectedNodes(), Paths{"/r/docs/a.pdf"});
}

TEST_F(RubberBandTest, a_band_that_returns_to_its_start_is_not_a_click) {
  press(on("/r/film.mp4"));
  dragTo(on("/r/film.mp4") + QPointF(20, 20));
  release(on("/r/film.mp4"));
  EXPECT_TRUE(machine_.workspace.revealed.empty());
  EXPECT_EQ(selectedNodes(), Paths{});
}

TEST_F(RubberBandTest, a_band_may_begin_between_tiles_and_end_outside_the_canvas) {
  press({1, 1});
  dragTo({400, 300});
  release({2000, 2000});
  EXPECT_EQ(selectedNodes(),
            (Paths{"/r/caf\xE9", "/r/docs/a.pdf", "/r/docs/b.pdf", "/r/empty", "/r/film.mp4"}));
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
}

TEST_F(RubberBandTest, no_tile_is_highlighted_and_no_tooltip_shown_during_a_band) {
  moveTo(on("/r/docs/a.pdf"));
  ASSERT_TRUE(item("mapTooltip")->isVisible());
  press(on("/r/docs/a.pdf"));
  dragTo(on("/r/docs/a.pdf") + QPointF(7, 0));
  EXPECT_EQ(canvas_->hoverPath(), "/r/docs/a.pdf");
  dragTo(on("/r/docs/a.pdf") + QPointF(8, 0));
  for (const char* path : {"/r/docs/a.pdf", "/r/film.mp4", "/r/empty"}) {
    dragTo(on(path));
    draw();
    EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
    EXPECT_TRUE(canvas_->hoverOverlay().isClear());
    EXPECT_FALSE(item("mapTooltip")->isVisible());
    EXPECT_EQ(canvas_->cursor().shape(), Qt::ArrowCursor);
  }
  EXPECT_EQ(focusedPath(), "/r/docs/a.pdf");
}

TEST_F(RubberBandTest, nothing_is_highlighted_after_a_band_until_the_pointer_enters_a_tile) {
  dragOver("/r/docs/a.pdf", "/r/film.mp4");
  release(endOn("/r/film.mp4"));
  draw();
  moveTo(on("/r/film.mp4") + QPointF(3, 3));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  EXPECT_EQ(canvas_->cursor().shape(), Qt::ArrowCursor);
  moveTo({1, 1});
  moveTo(on("/r/film.mp4"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
}

TEST_F(RubberBandTest, the_next_tile_is_highlighted_at_once) {
  dragOver("/r/docs/a.pdf", "/r/film.mp4");
  release(endOn("/r/film.mp4"));
  draw();
  moveTo(on("/r/empty"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/empty");
  moveTo(on("/r/film.mp4"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
}

TEST_F(RubberBandTest, the_pointer_enters_again_after_a_band_that_ended_outside) {
  dragOver("/r/docs/a.pdf", "/r/film.mp4");
  dragTo({-30, 100});
  release({-30, 100});
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  moveTo(on("/r/film.mp4"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
}

TEST_F(RubberBandTest, a_band_selects_nodes_of_a_tree_that_arrived_meanwhile) {
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  const QPointF end = endOn("/r/docs/b.pdf");
  canvas_->setNode(NodeHandle(folderNode("/r", 10, {fileNode("/r/new", 10)})));
  release(end);
  EXPECT_EQ(selectedNodes(), Paths{"/r/new"});
}

TEST_F(RubberBandTest, a_band_continues_when_tree_or_size_change) {
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  canvas_->setNode(NodeHandle(folderNode("/r", 0)));
  draw();
  canvas_->setSize({0, 0});
  draw();
  canvas_->setSize({500, 300});
  canvas_->setNode(NodeHandle(canvasSample()));
  draw();
  EXPECT_TRUE(canvas_->band().band().has_value());
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  release({499, 299});
  EXPECT_FALSE(selectedNodes().empty());
}

TEST_F(RubberBandTest, a_band_ends_with_its_canvas) {
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  canvas_->setParentItem(nullptr);
  EXPECT_TRUE(selectedNodes().empty());
  canvas_->setParentItem(window_.contentItem());
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  canvas_.reset();
  QMouseEvent event(QEvent::MouseButtonRelease, QPointF(80, 80), QPointF(80, 80), Qt::LeftButton,
                    Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window_, &event);
  EXPECT_TRUE(session_.selection().selected().empty());
}

TEST_F(RubberBandTest, a_band_is_dropped_without_selecting_when_the_pointer_is_taken_away) {
  session_.selection().selectNodes({fileNode("/r/film.mp4", 300, FileKind::video)}, false);
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  canvas_->ungrabMouse();
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
  EXPECT_EQ(selectedNodes(), Paths{"/r/film.mp4"});
}

TEST_F(RubberBandTest, escape_drops_a_band_whatever_has_the_keyboard_focus) {
  session_.selection().selectNodes({fileNode("/r/film.mp4", 300, FileKind::video)}, false);
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  draw();
  key(Qt::Key_A);
  EXPECT_TRUE(canvas_->band().band().has_value());
  key(Qt::Key_Escape);
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
  dragTo(on("/r/docs/a.pdf"));
  draw();
  EXPECT_EQ(canvas_->band().band(), std::nullopt);
  release(on("/r/docs/a.pdf"));
  EXPECT_EQ(selectedNodes(), Paths{"/r/film.mp4"});
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(RubberBandTest, escape_reaches_the_window_without_a_band) {
  QKeyEvent before(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
  before.ignore();
  QCoreApplication::sendEvent(&window_, &before);
  EXPECT_FALSE(before.isAccepted());
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  QKeyEvent during(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
  during.ignore();
  QCoreApplication::sendEvent(&window_, &during);
  EXPECT_TRUE(during.isAccepted());
  release(endOn("/r/docs/b.pdf"));
  QKeyEvent after(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
  after.ignore();
  QCoreApplication::sendEvent(&window_, &after);
  EXPECT_FALSE(after.isAccepted());
}

TEST_F(RubberBandTest, a_band_continues_when_another_button_is_pressed_and_released) {
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  const QPointF end = endOn("/r/docs/b.pdf");
  send(QEvent::MouseButtonPress, end, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
  send(QEvent::MouseButtonRelease, end, Qt::RightButton, Qt::LeftButton);
  draw();
  EXPECT_TRUE(canvas_->band().band().has_value());
  EXPECT_EQ(selectedNodes(), Paths{});
  release(end);
  EXPECT_EQ(selectedNodes(), (Paths{"/r/docs/a.pdf", "/r/docs/b.pdf"}));
}

TEST_F(RubberBandTest, a_band_over_its_header_selects_a_whole_folder) {
  const Rect folder = rectOf("/r/docs");
  press({folder.x + 5, folder.y + 3});
  dragTo({folder.x + 60, folder.y + 12});
  release({folder.x + 60, folder.y + 12});
  EXPECT_EQ(selectedNodes(), Paths{"/r/docs"});
}

TEST_F(RubberBandTest, no_tile_is_repainted_during_a_band) {
  draw();
  const int before = canvas_->tileTexture().pictureCount();
  dragOver("/r/docs/a.pdf", "/r/docs/b.pdf");
  draw();
  dragTo(on("/r/film.mp4"));
  draw();
  EXPECT_EQ(canvas_->tileTexture().pictureCount(), before);
}

}  // namespace
}  // namespace tessaly
