// The tile of a remainder, which represents many items, beside files that are named like it.
#include <gtest/gtest.h>

#include <QKeyEvent>

#include "app/map/CanvasFixture_test.h"
#include "scan/Remainder.h"

namespace tessaly {
namespace {

using Paths = std::vector<std::string>;

class RemainderTile : public CanvasFixture {
 protected:
  void SetUp() override {
    window_.resize(900, 600);
    show(folderNode(
        "/r", 1000,
        {folderNode("/r/docs", 400, {fileNode("/r/docs/a.pdf", 400)}), fileNode("/r/__rest__", 250),
         fileNode("/r/+ 6 more", 200), remainderNode("/r", "+ 6 more", 150)}));
  }

  // A point on the tile of the remainder.
  QPointF onRemainder() const {
    for (const CanvasTile& tile : canvas_->tiles().all()) {
      if (!isRemainder(tile.rect.node)) continue;
      return {tile.rect.x + tile.rect.width / 2, tile.rect.y + tile.rect.height / 2};
    }
    ADD_FAILURE() << "there is no remainder";
    return {};
  }
  bool hasFocus() const {
    return session_.selection().focused() && isRemainder(*session_.selection().focused());
  }
  bool isMenuOpen() const {
    return canvas_->findChild<QObject*>("tileMenu")->property("opened").toBool();
  }
  void secondaryClick(QPointF point) {
    moveTo(point);
    send(QEvent::MouseButtonPress, point, Qt::RightButton, Qt::RightButton);
    send(QEvent::MouseButtonRelease, point, Qt::RightButton, Qt::NoButton);
    draw();
  }
  void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&window_, &event);
  }
  Paths queued() const {
    Paths paths;
    for (const DiskNode& node : session_.cleanupQueue().queue()) paths.push_back(node.path());
    return paths;
  }
  void expectNothingDone() {
    EXPECT_TRUE(opened_.empty());
    EXPECT_TRUE(machine_.workspace.revealed.empty());
    EXPECT_TRUE(session_.selection().selected().empty());
    EXPECT_TRUE(session_.cleanupQueue().queue().empty());
    EXPECT_EQ(session_.messages().toast(), std::nullopt);
    EXPECT_FALSE(isMenuOpen());
  }
};

TEST_F(RemainderTile, the_tooltip_describes_a_remainder) {
  moveTo(onRemainder());
  EXPECT_TRUE(hasFocus());
  EXPECT_EQ(textOf("tooltipName"), "+ 6 more");
  EXPECT_EQ(textOf("tooltipSize"), "150 B");
}

TEST_F(RemainderTile, a_remainder_differs_from_the_file_with_its_path) {
  moveTo(on("/r/__rest__"));
  EXPECT_EQ(focusedPath(), "/r/__rest__");
  EXPECT_FALSE(hasFocus());
  moveTo(onRemainder());
  EXPECT_TRUE(hasFocus());
  moveTo(on("/r/__rest__"));
  EXPECT_FALSE(hasFocus());
}

TEST_F(RemainderTile, a_click_on_a_remainder_does_nothing) {
  click(onRemainder());
  for (const auto held : {Qt::ShiftModifier, Qt::ControlModifier}) {
    clickHolding(held, onRemainder());
  }
  expectNothingDone();
  EXPECT_TRUE(hasFocus());
}

TEST_F(RemainderTile, a_remainder_has_no_menu) {
  secondaryClick(onRemainder());
  expectNothingDone();
}

TEST_F(RemainderTile, a_band_does_not_select_a_remainder) {
  moveTo({1, 1});
  press({1, 1});
  dragTo({400, 300});
  release({2000, 2000});
  EXPECT_EQ(session_.selection().selected(),
            (std::set<std::string>{"/r/docs/a.pdf", "/r/__rest__", "/r/+ 6 more"}));
  EXPECT_FALSE(hasFocus());
}

TEST_F(RemainderTile, a_band_that_touches_only_a_remainder_clears_the_selection) {
  session_.selection().selectNodes({fileNode("/r/docs/a.pdf", 400)}, false);
  const QPointF point = onRemainder();
  press(point);
  dragTo(point + QPointF(10, 10));
  release(point + QPointF(10, 10));
  EXPECT_TRUE(session_.selection().selected().empty());
}

TEST_F(RemainderTile, arrows_reach_a_remainder_and_return_does_nothing_on_it) {
  moveTo(onRemainder());
  canvas_->forceActiveFocus(Qt::TabFocusReason);
  ASSERT_TRUE(hasFocus());
  key(Qt::Key_Return);
  key(Qt::Key_Return, Qt::ShiftModifier);
  key(Qt::Key_Return, Qt::ControlModifier);
  key(Qt::Key_Menu);
  draw();
  expectNothingDone();
  key(Qt::Key_Left);
  EXPECT_FALSE(hasFocus());
}

TEST_F(RemainderTile, files_named_like_a_remainder_are_treated_as_files) {
  for (const char* path : {"/r/__rest__", "/r/+ 6 more"}) {
    click(on(path));
    clickHolding(Qt::ShiftModifier, on(path));
    clickHolding(Qt::ControlModifier, on(path));
    secondaryClick(on(path));
    EXPECT_TRUE(isMenuOpen()) << path;
    key(Qt::Key_Escape);
    draw();
  }
  EXPECT_EQ(machine_.workspace.revealed, (std::vector<Paths>{{"/r/__rest__"}, {"/r/+ 6 more"}}));
  EXPECT_EQ(session_.selection().selected(), (std::set<std::string>{"/r/__rest__", "/r/+ 6 more"}));
  EXPECT_EQ(queued(), (Paths{"/r/__rest__", "/r/+ 6 more"}));
  EXPECT_EQ(session_.messages().toast(), "Queued + 6 more");
}

}  // namespace
}  // namespace tessaly
