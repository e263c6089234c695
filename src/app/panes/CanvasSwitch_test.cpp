#include "app/panes/CanvasSwitch.h"

#include <gtest/gtest.h>
#include <memory>

#include <QQmlParserStatus>
#include <QQuickWindow>
#include <QTest>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class CanvasSwitchTest : public SessionFixture {
 protected:
  CanvasSwitchTest() {
    scanTo(folder("/data", 2, {folder("/data/in", 2, {file("/data/in/a", 2)})}));
    window_.show();
    window_.requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    QObject::connect(&switch_, &CanvasSwitch::activeChanged, [this] { load(); });
    switch_.setMap(&map_);
  }
  ~CanvasSwitchTest() override { switch_.disconnect(); }

  void drillIn() { session().open(session().navigation().current()->children().front()); }

  QQuickWindow window_;
  DiskMapState map_{session()};
  CanvasSwitch switch_;
  std::unique_ptr<TreemapSurface> canvas_;
  int made_ = 0;

 private:
  // As the view does.
  void load() {
    if (switch_.isActive() == (canvas_ != nullptr)) return;
    canvas_.reset();
    if (switch_.isActive()) {
      canvas_ = std::make_unique<TreemapSurface>(window_.contentItem());
      canvas_->setProperty("map", QVariant::fromValue(map_.canvas()));
      canvas_->setNode(map_.node());
      canvas_->setSize(QSizeF(400, 300));
      static_cast<QQmlParserStatus&>(*canvas_).componentComplete();
      ++made_;
    }
    switch_.setProperty("canvas", QVariant::fromValue(canvas_.get()));
  }
};

TEST_F(CanvasSwitchTest, makes_one_canvas_a_folder) {
  EXPECT_EQ(made_, 1);
  drillIn();
  EXPECT_EQ(made_, 2);
  session().navigation().back();
  EXPECT_EQ(made_, 3);
  EXPECT_EQ(canvas_->node().node()->path(), "/data");
}

TEST_F(CanvasSwitchTest, keeps_the_canvas_when_the_same_folder_is_scanned_anew) {
  scanTo(folder("/data", 3, {file("/data/b", 3)}));
  EXPECT_EQ(made_, 1);
}

TEST_F(CanvasSwitchTest, has_no_canvas_while_a_list_is_shown) {
  session().shown().setVizMode(VizMode::list);
  EXPECT_EQ(canvas_, nullptr);
  drillIn();
  EXPECT_EQ(canvas_, nullptr);
  session().shown().setVizMode(VizMode::treemap);
  EXPECT_NE(canvas_, nullptr);
  EXPECT_EQ(made_, 2);
}

TEST_F(CanvasSwitchTest, hands_the_keyboard_on_with_its_tile) {
  canvas_->takeKeyboard();
  drillIn();
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_TRUE(canvas_->hasKeyboard());
}

TEST_F(CanvasSwitchTest, hands_the_keyboard_on_where_it_was_on_no_tile) {
  canvas_->forceActiveFocus(Qt::MouseFocusReason);
  ASSERT_FALSE(canvas_->hasKeyboard());
  drillIn();
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_FALSE(canvas_->hasKeyboard());
}

TEST_F(CanvasSwitchTest, hands_the_keyboard_on_that_the_menu_of_the_canvas_has) {
  canvas_->setMenuOpen(true);
  drillIn();
  EXPECT_TRUE(canvas_->hasActiveFocus());
}

TEST_F(CanvasSwitchTest, leaves_the_keyboard_where_it_is_when_the_canvas_has_it_not) {
  drillIn();
  EXPECT_FALSE(canvas_->hasActiveFocus());
}

}  // namespace
}  // namespace tessaly
