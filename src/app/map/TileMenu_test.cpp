// The menu of a tile, opened and used in a window.
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

  // The entries of the menu, from top to bottom; the separator is "-".
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

TEST_F(TileMenuTest, a_secondary_click_on_a_tile_opens_the_menu_at_the_pointer) {
  secondaryClick({100, 120});
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(menu()->property("x").toDouble(), 100);
  EXPECT_EQ(menu()->property("y").toDouble(), 120);
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(TileMenuTest, a_secondary_click_between_tiles_opens_no_menu) {
  secondaryClick({1, 1});
  EXPECT_FALSE(isOpen());
}

TEST_F(TileMenuTest, the_menu_has_ten_entries_and_a_separator) {
  secondaryClick(on("/r/docs"));
  EXPECT_EQ(entries(), (std::vector<std::string>{"Open folder", "Show in File Manager", "Open",
                                                 "Quick Look", "Copy Path", "Open in Terminal",
                                                 "Open in Editor", "Add to Cleanup Queue",
                                                 "Zip Then Trash…", "-", "Move to Trash"}));
  EXPECT_TRUE(row("tileTrash")->property("destructive").toBool());
  EXPECT_FALSE(row("tileZip")->property("destructive").toBool());
}

TEST_F(TileMenuTest, only_a_folder_with_children_can_be_opened) {
  for (const char* path : {"/r/film.mp4", "/r/empty"}) {
    secondaryClick(on(path));
    EXPECT_EQ(entries().size(), 10U) << path;
    EXPECT_EQ(entries().front(), "Show in File Manager") << path;
    QMetaObject::invokeMethod(menu(), "close");
    draw();
  }
}

TEST_F(TileMenuTest, each_entry_acts_on_the_bytes_of_the_path) {
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

TEST_F(TileMenuTest, the_first_entry_opens_the_clicked_folder) {
  choose("/r/docs", "tileOpenFolder");
  EXPECT_EQ(opened_, Paths{"/r/docs"});
}

TEST_F(TileMenuTest, queueing_shows_no_message) {
  choose("/r/film.mp4", "tileQueue");
  ASSERT_EQ(session_.cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session_.cleanupQueue().queue().front().path(), "/r/film.mp4");
  EXPECT_EQ(session_.messages().toast(), std::nullopt);
}

TEST_F(TileMenuTest, the_owner_of_the_canvas_handles_the_move_to_the_trash) {
  choose("/r/film.mp4", "tileTrash");
  EXPECT_EQ(askedAbout_, Paths{"/r/film.mp4"});
  EXPECT_EQ(session_.cleanupQueue().queue().size(), 0U);
}

TEST_F(TileMenuTest, the_menu_acts_on_the_clicked_node_after_the_tree_was_replaced) {
  secondaryClick(on("/r/film.mp4"));
  canvas_->setNode(NodeHandle(folderNode("/r", 10, {fileNode("/r/other", 10)})));
  draw();
  const QQuickItem* chosen = row("tileQueue");
  click(canvas_->mapFromItem(chosen, QPointF(20, chosen->height() / 2)));
  ASSERT_EQ(session_.cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session_.cleanupQueue().queue().front().path(), "/r/film.mp4");
  EXPECT_EQ(session_.cleanupQueue().queue().front().size(), 300);
}

TEST_F(TileMenuTest, the_open_menu_keeps_the_pointer_from_the_tiles_and_dims_none) {
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

TEST_F(TileMenuTest, the_clicked_tile_stays_highlighted_while_the_menu_is_open) {
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

TEST_F(TileMenuTest, the_clicked_tile_stays_highlighted_in_a_new_tree) {
  secondaryClick(on("/r/film.mp4"));
  canvas_->setNode(NodeHandle(folderNode(
      "/r", 900, {fileNode("/r/other", 500), fileNode("/r/film.mp4", 400, FileKind::video)})));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  canvas_->setNode(NodeHandle(folderNode("/r", 500, {fileNode("/r/other", 500)})));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), std::nullopt);
}

TEST_F(TileMenuTest, the_tile_of_an_open_question_is_highlighted) {
  moveTo(on("/r/docs/a.pdf"));
  session_.shown().setMenuNode(fileNode("/r/film.mp4", 300));
  draw();
  EXPECT_EQ(canvas_->hoverPath(), "/r/film.mp4");
  EXPECT_FALSE(item("mapTooltip")->isVisible());
  session_.shown().setMenuNode(std::nullopt);
  draw();
  EXPECT_NE(canvas_->hoverPath(), "/r/film.mp4");
}

TEST_F(TileMenuTest, nothing_can_be_moved_while_a_batch_moves_to_the_trash) {
  machine_.trash.put("/r/film.mp4");
  session_.moveBatch({{.location = {.original = "/r/film.mp4", .place = "/r/film.mp4"}}}, {});
  secondaryClick(on("/r/film.mp4"));
  EXPECT_FALSE(row("tileTrash")->isEnabled());
  EXPECT_FALSE(row("tileZip")->isEnabled());
  EXPECT_TRUE(row("tileQueue")->isEnabled());
  machine_.dispatch.drainAll();
  EXPECT_TRUE(row("tileTrash")->isEnabled());
  EXPECT_TRUE(row("tileZip")->isEnabled());
}

TEST_F(TileMenuTest, a_press_beside_the_menu_only_closes_it) {
  secondaryClick(on("/r/film.mp4"));
  click(on("/r/docs"));
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(opened_.empty());
}

TEST_F(TileMenuTest, no_menu_opens_while_a_band_is_drawn) {
  press(on("/r/film.mp4"));
  dragTo(on("/r/docs/a.pdf"));
  send(QEvent::MouseButtonPress, on("/r/docs/a.pdf"), Qt::RightButton,
       Qt::LeftButton | Qt::RightButton);
  EXPECT_FALSE(isOpen());
  release(on("/r/docs/a.pdf"));
  EXPECT_FALSE(session_.selection().selected().empty());
}

TEST(TileMenuState, the_actions_do_nothing_without_a_node) {
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
