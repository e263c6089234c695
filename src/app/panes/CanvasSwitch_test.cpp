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
  // Like the view.
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

TEST_F(CanvasSwitchTest, each_folder_gets_a_new_canvas) {
  EXPECT_EQ(made_, 1);
  drillIn();
  EXPECT_EQ(made_, 2);
  session().navigation().back();
  EXPECT_EQ(made_, 3);
  EXPECT_EQ(canvas_->node().node()->path(), "/data");
}

TEST_F(CanvasSwitchTest, scanning_the_same_folder_again_keeps_the_canvas) {
  scanTo(folder("/data", 3, {file("/data/b", 3)}));
  EXPECT_EQ(made_, 1);
}

TEST_F(CanvasSwitchTest, there_is_no_canvas_while_a_list_is_shown) {
  session().shown().setVizMode(VizMode::list);
  EXPECT_EQ(canvas_, nullptr);
  drillIn();
  EXPECT_EQ(canvas_, nullptr);
  session().shown().setVizMode(VizMode::treemap);
  EXPECT_NE(canvas_, nullptr);
  EXPECT_EQ(made_, 2);
}

TEST_F(CanvasSwitchTest, the_new_canvas_takes_over_the_focus_on_a_tile) {
  canvas_->takeKeyboard();
  drillIn();
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_TRUE(canvas_->hasKeyboard());
}

TEST_F(CanvasSwitchTest, the_new_canvas_takes_over_the_focus_without_a_tile) {
  canvas_->forceActiveFocus(Qt::MouseFocusReason);
  ASSERT_FALSE(canvas_->hasKeyboard());
  drillIn();
  EXPECT_TRUE(canvas_->hasActiveFocus());
  EXPECT_FALSE(canvas_->hasKeyboard());
}

TEST_F(CanvasSwitchTest, the_new_canvas_takes_the_focus_if_the_menu_of_the_old_one_is_open) {
  canvas_->setMenuOpen(true);
  drillIn();
  EXPECT_TRUE(canvas_->hasActiveFocus());
}

TEST_F(CanvasSwitchTest, the_new_canvas_does_not_take_the_focus_if_the_old_one_did_not_have_it) {
  drillIn();
  EXPECT_FALSE(canvas_->hasActiveFocus());
}

}  // namespace
}  // namespace tessaly
