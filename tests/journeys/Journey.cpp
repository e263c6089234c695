#include "journeys/Journey.h"

#include <utility>

#include "support/WindowItems.h"

namespace tessaly {

Journey::Journey(std::string_view tree, Lend lend)
    : tree_(tree), fixture_(machine_, tree_.path(), std::move(lend)) {}

QQuickItem* Journey::item(const QString& name) {
  QQuickItem* const found = fixture_.item(name);
  EXPECT_NE(found, nullptr) << "the window does not show exactly one " << name.toStdString();
  return found;
}

QString Journey::text(const QString& name) {
  QQuickItem* found = item(name);
  return found != nullptr ? found->property("text").toString() : QString();
}

QPoint Journey::tilePoint(std::string_view below) {
  const auto point = fixture_.tilePoint(tree_.at(below));
  if (!point) ADD_FAILURE() << "no tile for " << below;
  return point.value_or(QPoint());
}

void Journey::click(const QString& name) {
  if (QQuickItem* found = item(name)) clickAt(middleOf(found));
}

void Journey::tabTo(const QString& name) {
  if (!fixture_.tabTo(name)) ADD_FAILURE() << "Tab does not reach " << name.toStdString();
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
