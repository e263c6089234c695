// The menu of a tile, opened and chosen from in a window.
#include <gtest/gtest.h>

#include <QKeyEvent>

#include "app/map/CanvasFixture_test.h"
#include "app/map/TileMenuState.h"

namespace tessaly {
namespace {

using Paths = std::vector<std::string>;

class TileMenuTest : public CanvasFixture {
 protected:
  void secondaryClick(QPointF point) {
    moveTo(point);
    send(QEvent::MouseButtonPress, point, Qt::RightButton, Qt::RightButton);
    send(QEvent::MouseButtonRelease, point, Qt::RightButton, Qt::NoButton);
    draw();
  }

  bool isOpen() const { return menu()->property("opened").toBool(); }
  QObject* menu() const { return canvas_->findChild<QObject*>("tileMenu"); }
  QQuickItem* row(const char* name) const { return menu()->findChild<QQuickItem*>(name); }

  // What the menu shows, from top to bottom; the divider as "-".
  std::vector<std::string> entries() const {
    std::vector<std::string> all;
    for (const QQuickItem* child : row("tileReveal")->parentItem()->childItems()) {
      if (!child->isVisible()) continue;
      const QVariant text = child->property("text");
      all.push_back(text.isValid() ? text.toString().toStdString() : "-");
    }
    return all;
  }

  void choose(const char* path, const char* entry) {
    secondaryClick(on(path));
    ASSERT_TRUE(isOpen());
    const QQuickItem* chosen = row(entry);
    click(canvas_->mapFromItem(chosen, QPointF(chosen->width() / 2, chosen->height() / 2)));
    draw();
    EXPECT_FALSE(isOpen());
  }
};

TEST_F(TileMenuTest, opens_at_the_pointer_on_a_secondary_click_on_a_tile) {
  secondaryClick({100, 120});
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(menu()->property("x").toDouble(), 100);
  EXPECT_EQ(menu()->property("y").toDouble(), 120);
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(TileMenuTest, stays_away_on_a_secondary_click_between_the_tiles) {
  secondaryClick({1, 1});
  EXPECT_FALSE(isOpen());
}

TEST_F(TileMenuTest, lists_ten_entries_and_a_divider) {
  secondaryClick(on("/r/docs"));
  EXPECT_EQ(entries(), (std::vector<std::string>{"Open folder", "Show in File Manager", "Open",
                                                 "Quick Look", "Copy Path", "Open in Terminal",
                                                 "Open in Editor", "Add to Cleanup Queue",
                                                 "Zip Then Trash…", "-", "Move to Trash"}));
  EXPECT_TRUE(row("tileTrash")->property("destructive").toBool());
  EXPECT_FALSE(row("tileZip")->property("destructive").toBool());
}

TEST_F(TileMenuTest, offers_to_open_a_folder_only_where_something_is_in_it) {
  for (const char* path : {"/r/film.mp4", "/r/empty"}) {
    secondaryClick(on(path));
    EXPECT_EQ(entries().size(), 10U) << path;
    EXPECT_EQ(entries().front(), "Show in File Manager") << path;
    QMetaObject::invokeMethod(menu(), "close");
    draw();
  }
}

TEST_F(TileMenuTest, does_what_is_chosen_to_the_bytes_of_the_path) {
  const char* const odd = "/r/caf\xE9";
  choose(odd, "tileReveal");
  EXPECT_EQ(machine_.workspace.revealed, std::vector<Paths>{{odd}});
  choose(odd, "tileOpen");
  EXPECT_EQ(machine_.workspace.opened, Paths{odd});
  choose(odd, "tileCopyPath");
  EXPECT_EQ(machine_.pasteboard.text, odd);
  choose(odd, "tileQuickLook");
  choose(odd, "tileTerminal");
  choose(odd, "tileEditor");
  EXPECT_EQ(asked_, (Paths{"look /r/caf\xE9", "terminal /r/caf\xE9", "editor /r/caf\xE9"}));
  EXPECT_TRUE(askedAbout_.empty());
  EXPECT_TRUE(opened_.empty());
}

TEST_F(TileMenuTest, opens_the_folder_that_it_was_asked_for) {
  choose("/r/docs", "tileOpenFolder");
  EXPECT_EQ(opened_, Paths{"/r/docs"});
}

TEST_F(TileMenuTest, queues_without_a_word) {
  choose("/r/film.mp4", "tileQueue");
  ASSERT_EQ(session_.cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session_.cleanupQueue().queue().front().path(), "/r/film.mp4");
  EXPECT_EQ(session_.messages().toast(), std::nullopt);
}

TEST_F(TileMenuTest, leaves_the_move_to_the_trash_to_the_owner_of_the_canvas) {
  choose("/r/film.mp4", "tileTrash");
  EXPECT_EQ(askedAbout_, Paths{"/r/film.mp4"});
  EXPECT_EQ(session_.cleanupQueue().queue().size(), 0U);
}

TEST_F(TileMenuTest, acts_on_the_node_that_was_clicked_after_another_tree_has_come) {
  secondaryClick(on("/r/film.mp4"));
  canvas_->setNode(NodeHandle(folderNode("/r", 10, {fileNode("/r/other", 10)})));
  draw();
  const QQuickItem* chosen = row("tileQueue");
  click(canvas_->mapFromItem(chosen, QPointF(20, chosen->height() / 2)));
  ASSERT_EQ(session_.cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session_.cleanupQueue().queue().front().path(), "/r/film.mp4");
  EXPECT_EQ(session_.cleanupQueue().queue().front().size(), 300);
}

TEST_F(TileMenuTest, keeps_the_pointer_from_the_tiles_and_darkens_none) {
  moveTo({1, 1});
  draw();
  const QImage plain = window_.grabWindow();
  secondaryClick(on("/r/film.mp4"));
  moveTo(on("/r/docs/a.pdf"));
  draw();
  EXPECT_EQ(focusedPath(), "/r/film.mp4");
  EXPECT_NE(canvas_->hoverPath(), "/r/docs/a.pdf");
  const QPoint place = canvas_->mapToScene(on("/r/docs/a.pdf")).toPoint();
  EXPECT_EQ(window_.grabWindow().pixel(place), plain.pixel(place));
  QMetaObject::invokeMethod(menu(), "close");
  draw();
  moveTo(on("/r/docs/b.pdf"));
  EXPECT_EQ(canvas_->hoverPath(), "/r/docs/b.pdf");
}

TEST_F(TileMenuTest, leaves_the_highlight_on_its_tile) {
  moveTo(on("/r/film.mp4"));
  draw();
  const QPoint place = canvas_->mapToScene(on("/r/film.mp4") - QPointF(40, 40)).toPoint();
  const QRgb highlighted = window_.grabWindow().pixel(place);
  moveTo({1, 1});
  draw();
  const QRgb plain = window_.grabWindow().pixel(place);
  ASSERT_NE(highlighted, plain);
  secondaryClick(on("/r/film.mp4"));
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(window_.grabWindow().pixel(place), highlighted);
  moveTo(on("/r/docs/a.pdf"));
  draw();
  EXPECT_EQ(window_.grabWindow().pixel(place), highlighted);
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  QMetaObject::invokeMethod(menu(), "close");
  moveTo({1, 1});
  draw();
  EXPECT_EQ(window_.grabWindow().pixel(place), plain);
}

TEST_F(TileMenuTest, leaves_the_highlight_on_its_tile_in_another_tree_too) {
  secondaryClick(on("/r/film.mp4"));
  canvas_->setNode(NodeHandle(folderNode(
      "/r", 900, {fileNode("/r/other", 500), fileNode("/r/film.mp4", 400, FileKind::video)})));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  canvas_->setNode(NodeHandle(folderNode("/r", 500, {fileNode("/r/other", 500)})));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
}

TEST_F(TileMenuTest, leaves_the_highlight_on_the_tile_of_the_item_that_is_asked_about) {
  moveTo(on("/r/docs/a.pdf"));
  session_.shown().setMenuNode(fileNode("/r/film.mp4", 300));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  session_.shown().setMenuNode(std::nullopt);
  draw();
  EXPECT_NE(canvas_->hoverPath(), "/r/film.mp4");
}

TEST_F(TileMenuTest, keeps_a_press_beside_it_from_the_tiles) {
  secondaryClick(on("/r/film.mp4"));
  click(on("/r/docs"));
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(opened_.empty());
}

TEST_F(TileMenuTest, stays_away_while_a_band_is_drawn) {
  press(on("/r/film.mp4"));
  dragTo(on("/r/docs/a.pdf"));
  send(QEvent::MouseButtonPress, on("/r/docs/a.pdf"), Qt::RightButton,
       Qt::LeftButton | Qt::RightButton);
  EXPECT_FALSE(isOpen());
  release(on("/r/docs/a.pdf"));
  EXPECT_FALSE(session_.selection().selected().empty());
}

TEST(TileMenuState, does_nothing_before_there_is_a_node) {
  FakeMachine machine;
  ScanSession session(machine.services("/home"));
  TileMenuState state(session);
  EXPECT_FALSE(state.canOpenFolder());
  state.addToQueue();
  state.zipThenTrash();
  EXPECT_TRUE(session.cleanupQueue().queue().empty());
}

}  // namespace
}  // namespace tessaly
