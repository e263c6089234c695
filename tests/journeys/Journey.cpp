#include "journeys/Journey.h"

#include <utility>

#include <QTest>

#include "journeys/Seams.h"
#include "support/WindowItems.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {

Journey::Journey(std::string_view tree, Lend lend) : tree_(tree), lend_(std::move(lend)) {
  start();
}

void Journey::make() {
  Application::Seams seams = seamsOf(machine_, tree_.path());
  if (lend_) lend_(seams);
  application_ = std::make_unique<Application>(seams);
}

void Journey::start() {
  make();
  window().show();
  settle(window());
}

void Journey::restart() {
  application_.reset();
  start();
}

void Journey::relaunch() {
  application_.reset();
  make();
  application_->launch();
}

QQuickItem* Journey::item(const QString& name) {
  settle(window());
  QQuickItem* found = itemNamed(window(), name);
  EXPECT_NE(found, nullptr) << "the window shows no single " << name.toStdString();
  return found;
}

bool Journey::shows(const QString& name) {
  settle(window());
  return !itemsNamed(window().contentItem(), name).empty();
}

QString Journey::text(const QString& name) {
  QQuickItem* found = item(name);
  return found != nullptr ? found->property("text").toString() : QString();
}

QPoint Journey::tilePoint(std::string_view below) {
  QQuickItem* canvas = item("canvas");
  const auto current = session().current();
  if (canvas == nullptr || !current) return {};
  const std::string path = tree_.at(below);
  for (const TreemapRect& rect :
       TreemapLayout::layout(*current, {0, 0, canvas->width(), canvas->height()})) {
    if (rect.node.path() != path) continue;
    const double down = rect.nested ? 10 : rect.height / 2;
    return canvas->mapToScene(QPointF(rect.x + rect.width / 2, rect.y + down)).toPoint();
  }
  ADD_FAILURE() << "no tile for " << path;
  return {};
}

void Journey::click(const QString& name) {
  if (QQuickItem* found = item(name)) clickAt(middleOf(found));
}

void Journey::clickAt(QPoint point) {
  clickHolding(Qt::NoModifier, point);
}

void Journey::clickHolding(Qt::KeyboardModifiers modifiers, QPoint point) {
  QTest::mouseClick(&window(), Qt::LeftButton, modifiers, point);
  settle(window());
}

void Journey::hoverAt(QPoint point) {
  // A pointer that already stands there would not move, and an earlier test may have left it there.
  QTest::mouseMove(&window(), QPoint(1, 1));
  QTest::mouseMove(&window(), point);
  settle(window());
}

void Journey::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&window(), key, modifiers);
  settle(window());
}

void Journey::tabTo(const QString& name) {
  constexpr int stopsOfAWindow = 200;
  for (int stop = 0; stop < stopsOfAWindow; ++stop) {
    press(Qt::Key_Tab);
    const QQuickItem* const focused = window().activeFocusItem();
    if (focused != nullptr && focused->objectName() == name) return;
  }
  ADD_FAILURE() << "Tab does not come to " << name.toStdString();
}

void Journey::walk() {
  ASSERT_TRUE(dispatch_.step(Dispatch::Queue::userInitiated));
}

void Journey::comeHome() {
  dispatch_.drain(Dispatch::Queue::main);
  settle(window());
}

void Journey::finishScan() {
  walk();
  comeHome();
}

}  // namespace tessaly
