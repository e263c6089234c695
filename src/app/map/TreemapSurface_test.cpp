// The canvas in an offscreen window, with simulated moves and clicks.
#include <cmath>
#include <gtest/gtest.h>

#include "app/controls/Fonts.h"
#include "app/map/CanvasFixture_test.h"
#include "look/MarrowTheme.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"
#include "treemap/NodeTint.h"

namespace tessaly {
namespace {

class TreemapSurfaceTest : public CanvasFixture {};

TEST_F(TreemapSurfaceTest, entering_a_tile_focuses_and_highlights_it) {
  moveTo(on("/r/film.mp4"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
  EXPECT_EQ(canvas_->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(TreemapSurfaceTest, the_topmost_tile_under_the_pointer_is_highlighted) {
  moveTo(on("/r/docs/a.pdf"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/docs/a.pdf");
  moveTo(on("/r/docs"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/docs");
}

TEST_F(TreemapSurfaceTest, moving_the_pointer_repaints_only_the_highlight) {
  draw();
  const int before = canvas_->tileTexture().pictureCount();
  const int highlights = canvas_->hoverOverlay().pictureCount();
  for (const char* path : {"/r/film.mp4", "/r/docs", "/r/docs/b.pdf", "/r/empty"}) {
    moveTo(on(path));
    draw();
  }
  EXPECT_EQ(canvas_->tileTexture().pictureCount(), before);
  EXPECT_EQ(canvas_->hoverOverlay().pictureCount(), highlights + 4);
}

TEST_F(TreemapSurfaceTest, moving_within_a_tile_does_not_repaint_its_highlight) {
  moveTo(on("/r/film.mp4"));
  const int before = canvas_->hoverOverlay().pictureCount();
  moveTo(on("/r/film.mp4") + QPointF(5, 5));
  EXPECT_EQ(canvas_->hoverOverlay().pictureCount(), before);
}

TEST_F(TreemapSurfaceTest, the_highlight_is_visible_in_the_window) {
  const QImage plain = window_.grabWindow();
  const QPointF point = on("/r/film.mp4");
  moveTo(point);
  draw();
  const QImage hovered = window_.grabWindow();
  const QPoint place = (canvas_->mapToScene(point) - QPointF(20, 20)).toPoint();
  EXPECT_GT(qGreen(hovered.pixel(place)), qGreen(plain.pixel(place)));
  moveTo({1, 1});
  draw();
  EXPECT_EQ(window_.grabWindow(), plain);
}

TEST_F(TreemapSurfaceTest, leaving_a_tile_clears_the_highlight) {
  moveTo(on("/r/film.mp4"));
  moveTo({1, 1});
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  EXPECT_TRUE(canvas_->hoverOverlay().isClear());
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  EXPECT_EQ(canvas_->cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
}

TEST_F(TreemapSurfaceTest, leaving_the_canvas_clears_the_highlight) {
  moveTo(on("/r/film.mp4"));
  moveTo({-20, 100});
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  EXPECT_FALSE(item("mapTooltip")->isVisible());
}

TEST_F(TreemapSurfaceTest, the_tooltip_describes_the_tile) {
  moveTo(on("/r/docs"));
  EXPECT_TRUE(item("mapTooltip")->isVisible());
  EXPECT_EQ(textOf("tooltipName"), "docs");
  EXPECT_EQ(textOf("tooltipSize"), "500 B");
  EXPECT_EQ(textOf("tooltipFacts"), "Folder · 50.0% of parent · 2 items");
  EXPECT_EQ(textOf("tooltipPath"), "/r/docs");
  EXPECT_FALSE(item("tooltipAge")->isVisible());
}

TEST_F(TreemapSurfaceTest, a_name_that_is_not_utf8_is_displayed_and_its_bytes_are_kept) {
  moveTo(on("/r/caf\xE9"));
  EXPECT_EQ(textOf("tooltipName"), "caf\uFFFD");
  EXPECT_EQ(focusedPath(), "/r/caf\xE9");
  click(on("/r/caf\xE9"));
  EXPECT_EQ(machine_.workspace.revealed, (std::vector<std::vector<std::string>>{{"/r/caf\xE9"}}));
}

TEST_F(TreemapSurfaceTest, the_tooltip_is_beside_the_pointer) {
  moveTo({100, 120});
  draw();
  const QQuickItem* tooltip = item("mapTooltip");
  EXPECT_EQ(tooltip->position(), QPointF(116, 138));
  EXPECT_EQ(tooltip->width(), 270);
  moveTo({780, 590});
  EXPECT_EQ(tooltip->position(), QPointF(498, 460));
}

TEST_F(TreemapSurfaceTest, the_tooltip_has_its_fonts_sizes_and_dot) {
  moveTo(on("/r/film.mp4"));
  const auto font = [&](const char* name) { return item(name)->property("font").value<QFont>(); };
  EXPECT_EQ(font("tooltipName").pixelSize(), 13);
  EXPECT_EQ(font("tooltipName").weight(), QFont::Bold);
  EXPECT_EQ(font("tooltipSize").pixelSize(), 20);
  EXPECT_EQ(font("tooltipSize").weight(), QFont::Bold);
  EXPECT_EQ(font("tooltipFacts").pixelSize(), 11);
  EXPECT_EQ(font("tooltipAge").pixelSize(), 11);
  EXPECT_EQ(font("tooltipPath").pixelSize(), 10);
  EXPECT_EQ(item("tooltipPath")->opacity(), 0.8);
  EXPECT_EQ(item("tooltipDot")->size(), QSizeF(10, 10));
  EXPECT_EQ(item("tooltipDot")->property("color").value<QColor>(), QColor("#3B82F6"));
}

TEST_F(TreemapSurfaceTest, the_lines_of_the_tooltip_are_in_order_on_its_panel) {
  session_.shown().setHeatmap(true);
  draw();
  moveTo(on("/r/film.mp4"));
  draw();
  const QQuickItem* panel = item("mapTooltip");
  const auto colorOf = [](const QQuickItem* of, const char* name) {
    const QColor color = of->property(name).value<QColor>();
    return color.name().toStdString() + " " + std::to_string(std::lround(color.alphaF() * 100));
  };
  EXPECT_EQ(panel->property("radius"), 10);
  EXPECT_EQ(colorOf(panel, "color"), "#181a22 95");
  EXPECT_EQ(colorOf(panel, "outlineColor"), "#ffffff 14");
  EXPECT_EQ(panel->property("outlineWidth"), 1);
  EXPECT_EQ(colorOf(panel, "shadowColor"), "#000000 60");
  EXPECT_EQ(panel->property("shadowRadius"), 18);
  EXPECT_EQ(panel->property("shadowOffset"), 8);

  double below = 12;
  for (const char* name :
       {"tooltipName", "tooltipSize", "tooltipFacts", "tooltipAge", "tooltipPath"}) {
    const QQuickItem* line = item(name);
    const QPointF place = line->mapToItem(panel, QPointF(0, 0));
    EXPECT_GE(place.y(), below) << name;
    EXPECT_EQ(place.x(), line == item("tooltipName") ? 28 : 12) << name;
    EXPECT_LE(place.x() + line->width(), 258) << name;
    below = place.y() + line->height();
  }
  EXPECT_EQ(item("tooltipName")->mapToItem(panel, QPointF(0, 0)).y(), 12);
  EXPECT_EQ(item("tooltipDot")->mapToItem(panel, QPointF(0, 0)).x(), 12);
  EXPECT_EQ(panel->height(), below + 12);

  const auto family = [&](const char* name) {
    return item(name)->property("font").value<QFont>().family();
  };
  for (const char* name : {"tooltipFacts", "tooltipAge", "tooltipPath"})
    EXPECT_EQ(family(name), Fonts::family(Fonts::Voice::mono)) << name;
  EXPECT_EQ(family("tooltipName"), Fonts::family(Fonts::Voice::ui));
  EXPECT_EQ(family("tooltipSize"), Fonts::family(Fonts::Voice::rounded));
  for (const char* name : {"tooltipName", "tooltipSize"})
    EXPECT_EQ(colorOf(item(name), "color"), "#ffffff 100") << name;
  for (const char* name : {"tooltipAge", "tooltipPath"})
    EXPECT_EQ(colorOf(item(name), "color"), "#9ca3af 100") << name;
}

TEST_F(TreemapSurfaceTest, the_tooltip_shows_ages_only_while_the_heat_map_is_on) {
  session_.shown().setHeatmap(true);
  draw();
  moveTo(on("/r/film.mp4"));
  EXPECT_TRUE(item("tooltipAge")->isVisible());
  EXPECT_EQ(textOf("tooltipAge"), "Unknown date");
  session_.shown().setHeatmap(false);
  draw();
  EXPECT_FALSE(item("tooltipAge")->isVisible());
}

TEST_F(TreemapSurfaceTest, the_pointer_passes_through_the_tooltip) {
  moveTo(on("/r/docs/a.pdf"));
  draw();
  const QQuickItem* tooltip = item("mapTooltip");
  const QPointF under = tooltip->position() + QPointF(tooltip->width() / 2, 50);
  const auto beneath = canvas_->tiles().at(under);
  ASSERT_TRUE(beneath.has_value());
  moveTo(under);
  EXPECT_EQ(canvas_->hoverPath(), canvas_->tiles()[*beneath].rect.node.path());
}

TEST_F(TreemapSurfaceTest, a_click_on_a_folder_with_children_opens_it) {
  click(on("/r/docs"));
  EXPECT_EQ(opened_, std::vector<std::string>{"/r/docs"});
  EXPECT_TRUE(machine_.workspace.revealed.empty());
  EXPECT_EQ(focusedPath(), "/r/docs");
}

TEST_F(TreemapSurfaceTest, a_click_on_a_file_or_an_empty_folder_reveals_it) {
  click(on("/r/film.mp4"));
  click(on("/r/empty"));
  EXPECT_TRUE(opened_.empty());
  EXPECT_EQ(machine_.workspace.revealed,
            (std::vector<std::vector<std::string>>{{"/r/film.mp4"}, {"/r/empty"}}));
}

TEST_F(TreemapSurfaceTest, a_click_focuses_the_tile) {
  moveTo(on("/r/film.mp4"));
  session_.selection().setFocused(std::nullopt);
  click(on("/r/film.mp4"));
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
}

TEST_F(TreemapSurfaceTest, a_click_with_shift_selects_or_deselects_the_tile) {
  clickHolding(Qt::ShiftModifier, on("/r/docs"));
  clickHolding(Qt::ShiftModifier, on("/r/film.mp4"));
  draw();
  EXPECT_EQ(session_.selection().selected(), (std::set<std::string>{"/r/docs", "/r/film.mp4"}));
  EXPECT_TRUE(canvas_->tiles()[canvas_->tiles().find("/r/docs").value()].selected);
  clickHolding(Qt::ShiftModifier, on("/r/docs"));
  draw();
  EXPECT_EQ(session_.selection().selected(), std::set<std::string>{"/r/film.mp4"});
  EXPECT_FALSE(canvas_->tiles()[canvas_->tiles().find("/r/docs").value()].selected);
  EXPECT_EQ(focusedPath(), "/r/docs");
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(TreemapSurfaceTest, a_click_with_command_queues_the_tile_with_a_message) {
  clickHolding(Qt::ControlModifier, on("/r/docs"));
  ASSERT_EQ(session_.cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session_.cleanupQueue().queue().front().path(), "/r/docs");
  EXPECT_EQ(session_.messages().toast(), "Queued docs");
  EXPECT_TRUE(session_.selection().selected().empty());
  EXPECT_TRUE(opened_.empty());
}

TEST_F(TreemapSurfaceTest, a_click_with_shift_and_command_selects_and_does_not_queue) {
  clickHolding(Qt::ShiftModifier | Qt::ControlModifier, on("/r/film.mp4"));
  EXPECT_EQ(session_.selection().selected(), std::set<std::string>{"/r/film.mp4"});
  EXPECT_TRUE(session_.cleanupQueue().queue().empty());
}

TEST_F(TreemapSurfaceTest, a_press_that_moves_far_is_no_click) {
  press(on("/r/film.mp4"));
  release(on("/r/film.mp4") + QPointF(8, 0));
  EXPECT_TRUE(machine_.workspace.revealed.empty());
  press(on("/r/film.mp4"));
  release(on("/r/film.mp4") + QPointF(7.5, 0));
  EXPECT_EQ(machine_.workspace.revealed.size(), 1U);
}

TEST_F(TreemapSurfaceTest, a_press_that_ends_on_another_tile_is_no_click) {
  const TreemapRect& folder = canvas_->tiles()[canvas_->tiles().find("/r/docs").value()].rect;
  const TreemapRect& inside = canvas_->tiles()[canvas_->tiles().find("/r/docs/a.pdf").value()].rect;
  ASSERT_LT(inside.y - folder.y, 24);
  press({inside.x + 20, inside.y - 2});
  release({inside.x + 20, inside.y + 2});
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(TreemapSurfaceTest, a_press_whose_tile_was_replaced_is_no_click) {
  press(on("/r/film.mp4"));
  const QPointF point = on("/r/film.mp4");
  canvas_->setNode(NodeHandle(folderNode("/s", 10, {fileNode("/s/one", 10)})));
  draw();
  ASSERT_TRUE(canvas_->tiles().at(point).has_value());
  release(point);
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(TreemapSurfaceTest, a_click_between_tiles_does_nothing) {
  click({1, 1});
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
  EXPECT_EQ(focusedPath(), std::nullopt);
}

TEST_F(TreemapSurfaceTest, a_click_may_replace_the_tree_of_the_canvas) {
  QObject::connect(canvas_.get(), &TreemapSurface::open,
                   [this] { canvas_->setNode(NodeHandle(folderNode("/other", 0))); });
  click(on("/r/docs"));
  draw();
  EXPECT_EQ(opened_, std::vector<std::string>{"/r/docs"});
  EXPECT_TRUE(canvas_->tiles().all().empty());
}

TEST_F(TreemapSurfaceTest, several_changes_before_a_frame_paint_the_tiles_once) {
  const int before = canvas_->tileTexture().pictureCount();
  session_.shown().setHeatmap(true);
  session_.choices().setFilters({});
  canvas_->setNode(NodeHandle(canvasSample()));
  draw();
  EXPECT_EQ(canvas_->tileTexture().pictureCount(), before + 1);
}

TEST_F(TreemapSurfaceTest, switching_a_filter_changes_the_tints) {
  const auto tint = [this] {
    draw();
    return canvas_->tiles()[canvas_->tiles().find("/r/film.mp4").value()].tint;
  };
  const Color plain = tint();
  ASSERT_FALSE(session_.choices().filters().empty());
  const std::string filter = session_.choices().filters().front().id;
  session_.choices().toggleFilter(filter);
  EXPECT_EQ(tint(), plain.atOpacity(0.28));
  session_.choices().toggleFilter(filter);
  EXPECT_EQ(tint(), plain);
}

TEST_F(TreemapSurfaceTest, growth_changes_the_tints) {
  const TempTree tree("film 4M\nnote 2M\n");
  canvas_->setNode(NodeHandle(
      folderNode(tree.path(), 6, {fileNode(tree.at("film"), 4), fileNode(tree.at("note"), 2)})));
  const auto tint = [&](const char* below) {
    draw();
    return canvas_->tiles()[canvas_->tiles().find(tree.at(below)).value()].tint;
  };
  session_.scan(tree.path());
  machine_.dispatch.drainAll();
  session_.rescan();
  machine_.dispatch.drainAll();
  EXPECT_EQ(tint("film"), NodeTint::base(fileNode(tree.at("film"), 4)));
  putFile(tree.at("film"), std::string(8 << 20, 'f'));
  session_.rescan();
  machine_.dispatch.drainAll();
  EXPECT_EQ(tint("film"), MarrowTheme::warning);
  EXPECT_NE(tint("note"), MarrowTheme::warning);
}

TEST_F(TreemapSurfaceTest, another_size_changes_the_layout) {
  canvas_->setSize({500, 300});
  draw();
  ASSERT_EQ(canvas_->tiles().all().size(), 6U);
  for (const CanvasTile& tile : canvas_->tiles().all()) {
    EXPECT_LE(tile.rect.x + tile.rect.width, 496) << tile.rect.node.path();
    EXPECT_LE(tile.rect.y + tile.rect.height, 296) << tile.rect.node.path();
  }
}

TEST_F(TreemapSurfaceTest, a_new_tile_under_the_pointer_is_not_entered_until_it_moves) {
  const QPointF point = on("/r/film.mp4");
  moveTo(point);
  canvas_->setNode(NodeHandle(folderNode("/s", 10, {fileNode("/s/one", 10)})));
  draw();
  draw();
  moveTo(point);
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  EXPECT_EQ(canvas_->cursor().shape(), Qt::ArrowCursor);
  moveTo(point + QPointF(1, 1));
  EXPECT_EQ(focusedPath(), "/s/one");
  EXPECT_EQ(canvas_->hoverPath(), "/s/one");
  EXPECT_EQ(textOf("tooltipName"), "one");
}

TEST_F(TreemapSurfaceTest, the_item_under_the_pointer_stays_highlighted_in_a_new_tree) {
  moveTo(on("/r/film.mp4"));
  session_.selection().setFocused(folderNode("/r/empty", 150));
  canvas_->setNode(NodeHandle(folderNode("/r", 10, {fileNode("/r/film.mp4", 10)})));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  EXPECT_EQ(textOf("tooltipSize"), "10 B");
  EXPECT_EQ(focusedPath(), "/r/empty");
}

TEST_F(TreemapSurfaceTest, the_focused_item_is_highlighted_when_it_appears_under_the_pointer) {
  moveTo(on("/r/film.mp4"));
  session_.selection().setFocused(fileNode("/s/one", 10));
  canvas_->setNode(NodeHandle(folderNode("/s", 10, {fileNode("/s/one", 10)})));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), "/s/one");
  canvas_->setNode(NodeHandle(folderNode("/s", 10)));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  EXPECT_FALSE(item("mapTooltip")->isVisible());
}

TEST_F(TreemapSurfaceTest, tiles_that_move_under_the_pointer_get_no_focus) {
  moveTo(on("/r/film.mp4"));
  for (const double x : {0, 200, 400, -200, 50}) {
    canvas_->setX(x);
    draw();
    draw();
    EXPECT_EQ(focusedPath(), "/r/film.mp4") << x;
  }
  for (const double width : {500, 1200, 800}) {
    canvas_->setWidth(width);
    draw();
    draw();
    EXPECT_EQ(focusedPath(), "/r/film.mp4") << width;
  }
}

TEST_F(TreemapSurfaceTest, removing_an_item_over_the_canvas_does_not_focus_a_tile) {
  QQuickItem cover(window_.contentItem());
  cover.setSize({900, 600});
  cover.setZ(1);
  cover.setAcceptHoverEvents(true);
  draw();
  session_.selection().setFocused(folderNode("/r/empty", 150));
  moveTo(on("/r/film.mp4"));
  ASSERT_EQ(focusedPath(), "/r/empty");
  cover.setVisible(false);
  draw();
  draw();
  EXPECT_EQ(focusedPath(), "/r/empty");
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  moveTo(on("/r/film.mp4") + QPointF(1, 0));
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
}

TEST_F(TreemapSurfaceTest, uncovering_or_moving_the_window_does_not_focus_a_tile) {
  moveTo(on("/r/docs/a.pdf"));
  const QPointF place = canvas_->mapToScene(on("/r/film.mp4"));
  QEnterEvent uncovered(place, place, window_.mapToGlobal(place));
  QCoreApplication::sendEvent(&window_, &uncovered);
  draw();
  EXPECT_EQ(focusedPath(), "/r/docs/a.pdf");
  // The window has moved, but not the pointer.
  const QPointF other = canvas_->mapToScene(on("/r/empty"));
  QMouseEvent told(QEvent::MouseMove, other, window_.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(&window_, &told);
  draw();
  EXPECT_EQ(focusedPath(), "/r/docs/a.pdf");
}

TEST_F(TreemapSurfaceTest, the_tile_of_a_new_canvas_under_the_pointer_gets_no_focus) {
  const QPointF point = on("/r/film.mp4");
  moveTo(point);
  show(folderNode("/s", 10, {fileNode("/s/one", 10)}));
  draw();
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  moveTo(point + QPointF(0, 2));
  EXPECT_EQ(focusedPath(), "/s/one");
}

TEST_F(TreemapSurfaceTest, a_tile_that_is_out_of_date_is_not_entered) {
  const QPointF point = on("/r/film.mp4");
  canvas_->setNode(NodeHandle(folderNode("/s", 10, {fileNode("/s/one", 10)})));
  moveTo(point);
  EXPECT_EQ(focusedPath(), std::nullopt);
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
  moveTo(point + QPointF(1, 0));
  EXPECT_EQ(canvas_->hoverPath(), "/s/one");
  EXPECT_EQ(focusedPath(), "/s/one");
}

TEST_F(TreemapSurfaceTest, no_tile_is_highlighted_while_the_pointer_is_outside) {
  const QPointF point = on("/r/film.mp4");
  moveTo(point);
  moveTo({-20, point.y()});
  canvas_->setNode(NodeHandle(canvasSample()));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
}

TEST_F(TreemapSurfaceTest, an_empty_folder_has_only_the_background) {
  show(folderNode("/r", 0));
  EXPECT_TRUE(canvas_->tiles().all().empty());
  const QImage picture = window_.grabWindow();
  EXPECT_EQ(picture.pixelColor(450, 300), QColor("#121318"));
}

}  // namespace
}  // namespace tessaly
