// A canvas with a few tiles in an off-screen window.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include "app/map/CanvasState.h"
#include "app/map/SampleTiles_test.h"
#include "app/map/TreemapSurface.h"
#include "app/model/NodeActions.h"
#include "support/FakeMachine.h"

namespace tessaly {

inline DiskNode canvasSample() {
  return folderNode("/r", 1000,
                    {folderNode("/r/docs", 500,
                                {fileNode("/r/docs/a.pdf", 300, FileKind::document),
                                 fileNode("/r/docs/b.pdf", 200, FileKind::document)}),
                     fileNode("/r/film.mp4", 300, FileKind::video), folderNode("/r/empty", 150),
                     fileNode("/r/caf\xE9", 50)});
}

class CanvasFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    window_.resize(900, 600);
    show(canvasSample());
  }

  // Puts a new canvas for `node` into the window and draws it.
  void show(const DiskNode& node) {
    canvas_.reset();
    QQmlComponent component(&engine_);
    component.setData("import Tessaly.Map\nTreemapCanvas { x: 50; width: 800; height: 600 }",
                      QUrl());
    canvas_.reset(qobject_cast<TreemapSurface*>(
        component.createWithInitialProperties({{"map", QVariant::fromValue(&map_)},
                                               {"actions", QVariant::fromValue(&actions_)},
                                               {"node", QVariant::fromValue(NodeHandle(node))}})));
    ASSERT_TRUE(canvas_) << component.errorString().toStdString();
    QObject::connect(canvas_.get(), &TreemapSurface::open, [this](const NodeHandle& opened) {
      opened_.push_back(opened.node()->path());
    });
    QObject::connect(canvas_.get(), &TreemapSurface::menu, [this](const NodeHandle& asked) {
      askedAbout_.push_back(asked.node()->path());
    });
    canvas_->setParentItem(window_.contentItem());
    window_.show();
    draw();
  }

  // Renders the next frame with all changes.
  void draw() {
    QEventLoop loop;
    QObject::connect(&window_, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    window_.update();
    loop.exec();
  }

  void send(QEvent::Type type, QPointF point, Qt::MouseButton button, Qt::MouseButtons buttons) {
    const QPointF place = canvas_->mapToScene(point);
    QMouseEvent event(type, place, window_.mapToGlobal(place), button, buttons, modifiers_);
    QCoreApplication::sendEvent(&window_, &event);
  }
  void moveTo(QPointF point) { send(QEvent::MouseMove, point, Qt::NoButton, Qt::NoButton); }
  void press(QPointF point) {
    send(QEvent::MouseButtonPress, point, Qt::LeftButton, Qt::LeftButton);
  }
  void release(QPointF point) {
    send(QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton);
  }
  void dragTo(QPointF point) { send(QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton); }
  void releaseHolding(Qt::KeyboardModifiers modifiers, QPointF point) {
    modifiers_ = modifiers;
    release(point);
    modifiers_ = Qt::NoModifier;
  }
  void click(QPointF point) {
    moveTo(point);
    press(point);
    release(point);
  }

  void clickHolding(Qt::KeyboardModifiers modifiers, QPointF point) {
    modifiers_ = modifiers;
    click(point);
    modifiers_ = Qt::NoModifier;
  }

  // A point on the tile that no other tile covers.
  QPointF on(std::string_view path) const {
    const TreemapRect& rect = canvas_->tiles()[canvas_->tiles().find(path).value()].rect;
    return {rect.x + rect.width / 2, rect.y + (rect.nested ? 10 : rect.height / 2)};
  }

  NodeActions::OnPath note(const std::string& door) {
    return [this, door](const std::string& path) { asked_.push_back(door + " " + path); };
  }

  QQuickItem* item(const char* name) const {
    return canvas_->findChild<QQuickItem*>(QString::fromLatin1(name));
  }
  std::string textOf(const char* name) const {
    return item(name)->property("text").toString().toStdString();
  }
  std::optional<std::string> focusedPath() const {
    if (!session_.selection().focused()) return std::nullopt;
    return session_.selection().focused()->path();
  }

  FakeMachine machine_;
  ScanSession session_{machine_.services("/home")};
  CanvasState map_{session_};
  std::vector<std::string> asked_;  // calls of functions without a fake
  NodeActions actions_{{.workspace = machine_.workspace,
                        .pasteboard = machine_.pasteboard,
                        .quickLook = note("look"),
                        .openTerminal = note("terminal"),
                        .openInEditor = note("editor")}};
  QQmlEngine engine_;
  QQuickWindow window_;
  std::unique_ptr<TreemapSurface> canvas_;
  std::vector<std::string> opened_;
  std::vector<std::string> askedAbout_;
  Qt::KeyboardModifiers modifiers_ = Qt::NoModifier;  // pressed during every event of the pointer
};

}  // namespace tessaly
