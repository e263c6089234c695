#include "app/map/TileElementModel.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QKeyEvent>

#include "app/map/CanvasFixture_test.h"

namespace tessaly {
namespace {

class TileElements : public CanvasFixture {
 protected:
  void SetUp() override {
    CanvasFixture::SetUp();
    QAccessible::setActive(true);
  }
  void TearDown() override { QAccessible::setActive(false); }

  std::vector<QQuickItem*> elements() const {
    const auto found = canvas_->findChildren<QQuickItem*>(QStringLiteral("tileElement"));
    std::vector<QQuickItem*> all(found.begin(), found.end());
    if (all.empty()) {
      // Items of a Repeater are visual children only.
      std::vector<QQuickItem*> waiting = {canvas_.get()};
      while (!waiting.empty()) {
        QQuickItem* const item = waiting.back();
        waiting.pop_back();
        if (item->objectName() == QLatin1String("tileElement")) all.push_back(item);
        for (QQuickItem* const child : item->childItems()) waiting.push_back(child);
      }
    }
    return all;
  }
  QAccessibleInterface* element(const std::string& name) const {
    for (QQuickItem* const item : elements()) {
      QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(item);
      if (face->text(QAccessible::Name).toStdString() == name) return face;
    }
    return nullptr;
  }
};

TEST_F(TileElements, elements_have_name_size_and_share) {
  EXPECT_EQ(elements().size(), canvas_->tiles().all().size());
  QAccessibleInterface* const docs = element("docs");
  ASSERT_NE(docs, nullptr);
  EXPECT_EQ(docs->role(), QAccessible::PushButton);
  EXPECT_EQ(docs->text(QAccessible::Description),
            QStringLiteral("500 B, Folder · 50.0% of parent · 2 items"));
}

TEST_F(TileElements, elements_are_at_the_places_of_their_tiles) {
  const TreemapRect& tile = canvas_->tiles()[canvas_->tiles().find("/r/film.mp4").value()].rect;
  const QRect shown = element("film.mp4")->rect();
  const QPointF corner =
      window_.mapToGlobal(canvas_->mapToScene(QPointF(tile.x, tile.y)).toPoint());
  EXPECT_NEAR(shown.x(), corner.x(), 1);
  EXPECT_NEAR(shown.y(), corner.y(), 1);
  EXPECT_NEAR(shown.width(), tile.width, 1);
  EXPECT_NEAR(shown.height(), tile.height, 1);
}

TEST_F(TileElements, names_that_are_not_utf8_are_shown) {
  EXPECT_NE(element("caf\xEF\xBF\xBD"), nullptr);
}

TEST_F(TileElements, pressing_an_element_opens_it) {
  element("docs")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(opened_, std::vector<std::string>{"/r/docs"});
}

TEST_F(TileElements, toggling_an_element_selects_it) {
  element("docs")->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(session_.selection().selected(), std::set<std::string>{"/r/docs"});
  draw();
  EXPECT_TRUE(element("docs")->state().checked);
  EXPECT_FALSE(element("film.mp4")->state().checked);
}

TEST_F(TileElements, the_element_with_the_keyboard_focus_is_marked) {
  window_.requestActivate();
  canvas_->forceActiveFocus(Qt::TabFocusReason);
  EXPECT_TRUE(element("docs")->state().focused);
  EXPECT_FALSE(element("film.mp4")->state().focused);
}

TEST_F(TileElements, one_element_at_a_time_is_focused_and_none_once_the_pointer_moves) {
  canvas_->forceActiveFocus(Qt::TabFocusReason);
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QCoreApplication::sendEvent(&window_, &down);
  EXPECT_TRUE(element("a.pdf")->state().focused);
  EXPECT_FALSE(element("docs")->state().focused);
  moveTo(on("/r/film.mp4"));
  EXPECT_FALSE(element("a.pdf")->state().focused);
  EXPECT_FALSE(element("film.mp4")->state().focused);
}

TEST_F(TileElements, an_element_keeps_the_focus_during_its_menu) {
  canvas_->forceActiveFocus(Qt::TabFocusReason);
  for (const int pressed : {Qt::Key_Menu, Qt::Key_Escape}) {
    QKeyEvent event(QEvent::KeyPress, pressed, Qt::NoModifier);
    QCoreApplication::sendEvent(&window_, &event);
    EXPECT_EQ(element("docs")->state().focused, pressed == Qt::Key_Escape);
  }
}

TEST_F(TileElements, elements_can_be_focused_selected_and_pressed) {
  const QAccessible::State state = element("film.mp4")->state();
  EXPECT_TRUE(state.focusable);
  EXPECT_TRUE(state.checkable);
  const QStringList actions = element("film.mp4")->actionInterface()->actionNames();
  EXPECT_TRUE(actions.contains(QAccessibleActionInterface::pressAction()));
  EXPECT_TRUE(actions.contains(QAccessibleActionInterface::toggleAction()));
}

TEST_F(TileElements, elements_of_a_remainder_cannot_be_selected) {
  canvas_->setNode(NodeHandle(
      folderNode("/r", 100, {fileNode("/r/left", 60), remainderNode("/r", "+ 6 more", 40)})));
  draw();
  ASSERT_NE(element("+ 6 more"), nullptr);
  EXPECT_FALSE(element("+ 6 more")->state().checkable);
  EXPECT_TRUE(element("left")->state().checkable);
  for (const QString& action :
       {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
    element("+ 6 more")->actionInterface()->doAction(action);
  }
  EXPECT_TRUE(session_.selection().selected().empty());
  EXPECT_TRUE(machine_.workspace.revealed.empty());
}

TEST_F(TileElements, elements_act_on_their_own_node_whatever_has_changed) {
  QAccessibleInterface* const film = element("film.mp4");
  canvas_->setNode(NodeHandle(folderNode("/r", 100, {fileNode("/r/left", 100)})));
  film->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(session_.selection().selected(), std::set<std::string>{"/r/film.mp4"});
}

TEST_F(TileElements, there_is_no_share_if_the_parent_has_no_size) {
  canvas_->setNode(NodeHandle(folderNode("/r", 0, {fileNode("/r/left", 100)})));
  draw();
  ASSERT_NE(element("left"), nullptr);
  EXPECT_EQ(element("left")->text(QAccessible::Description), QStringLiteral("100 B, File"));
}

TEST_F(TileElements, elements_let_the_pointer_through) {
  click(on("/r/docs/a.pdf"));
  EXPECT_EQ(focusedPath(), "/r/docs/a.pdf");
}

TEST_F(TileElements, elements_are_not_created_until_they_are_needed) {
  QAccessible::setActive(false);
  EXPECT_TRUE(elements().empty());
}

TEST_F(TileElements, elements_follow_the_map) {
  canvas_->setNode(NodeHandle(folderNode("/r", 100, {fileNode("/r/left", 100)})));
  draw();
  EXPECT_EQ(elements().size(), 1U);
  EXPECT_NE(element("left"), nullptr);
}

TEST_F(TileElements, elements_pass_the_model_tester) {
  TileElementModel model;
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_EQ(model.rowCount(), 0);
  model.setCanvas(canvas_.get());
  EXPECT_EQ(model.rowCount(), static_cast<int>(canvas_->tiles().all().size()));
  EXPECT_EQ(model.data(model.index(0), Qt::DisplayRole).toString(), QStringLiteral("docs"));
  EXPECT_FALSE(model.data(model.index(0), Qt::UserRole + 99).isValid());
  canvas_.reset();
  EXPECT_GT(model.rowCount(), 0);
}

}  // namespace
}  // namespace tessaly
