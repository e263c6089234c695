#include "app/controls/ControlScene.h"

#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QTest>

namespace tessaly {

ControlScene::ControlScene(const QString& control) : view_(std::make_unique<QQuickView>()) {
  QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
    for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
  });
  const QString scene = QStringLiteral(
                            "import QtQuick\nimport Tessaly.Controls\n"
                            "Item { width: 400; height: 300\n"
                            "  readonly property real giga: 1024 * 1024 * 1024\n"
                            "  Item { objectName: \"holder\"; x: 40; y: 40\n%1\n} }")
                            .arg(control);
  auto* component = new QQmlComponent(view_->engine(), view_.get());
  component->setData(scene.toUtf8(), QUrl(QStringLiteral("qrc:/ControlScene.qml")));
  QObject* root = component->create();
  if (root == nullptr) {
    ADD_FAILURE() << component->errorString().toStdString();
    root = new QQuickItem();
  }
  view_->setColor(QColor(0x12, 0x13, 0x18));
  view_->setContent(QUrl(), component, root);
  view_->resize(400, 300);
}

ControlScene::~ControlScene() = default;

QQuickItem* ControlScene::control() const {
  auto* holder = view_->rootObject()->findChild<QQuickItem*>(QStringLiteral("holder"));
  if (holder != nullptr && !holder->childItems().isEmpty()) return holder->childItems().first();
  ADD_FAILURE() << "the scene has no control";
  return view_->rootObject();
}

QQuickItem* ControlScene::find(const QString& objectName) const {
  if (objectName.isEmpty()) return control();
  auto* item = control()->findChild<QQuickItem*>(objectName);
  if (item != nullptr) return item;
  ADD_FAILURE() << "no item is named " << objectName.toStdString();
  return control();
}

QVariant ControlScene::read(const QString& objectName, const QString& property) const {
  const QQmlProperty found(find(objectName), property, view_->engine());
  EXPECT_TRUE(found.isValid()) << objectName.toStdString() << "." << property.toStdString();
  return found.read();
}

void ControlScene::activate() {
  view_->show();
  view_->requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
}

QImage ControlScene::picture() {
  if (!view_->isVisible()) view_->show();
  return view_->grabWindow();
}

QColor ControlScene::pixel(double x, double y) {
  const QPointF point = control()->mapToScene(QPointF(x, y));
  return picture().pixelColor(static_cast<int>(point.x()), static_cast<int>(point.y()));
}

QPoint ControlScene::center() const {
  return control()->mapToScene(QPointF(control()->width() / 2, control()->height() / 2)).toPoint();
}

QString describe(const QColor& color) {
  return QStringLiteral("%1 at %2")
      .arg(color.name(QColor::HexRgb))
      .arg(static_cast<double>(color.alphaF()), 0, 'f', 2);
}

}  // namespace tessaly
