#include "app/overlays/OverlayScene_test.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QTest>

namespace tessaly {

namespace {

constexpr const char* sceneText = R"(
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Overlays

Item {
    id: scene

    property AccessGateActions actions: null
    property int clicksBelow: 0
    property int turnsBelow: 0
    property int keysBelow: 0
    property int shortcutsBelow: 0
    property int quits: 0
    property int closes: 0
    property bool hoveredBelow: below.hovered
    property bool overlayShown: true

    Shortcut { sequence: "Ctrl+Backspace"; onActivated: ++scene.shortcutsBelow }
    Shortcut { sequence: "Ctrl+Q"; onActivated: ++scene.quits }
    Keys.onPressed: event => { ++scene.keysBelow }

    MarrowButton {
        id: below

        objectName: "below"
        anchors.fill: parent
        focus: true
        text: "Below"
        onClicked: ++scene.clicksBelow

        WheelHandler { onWheel: ++scene.turnsBelow }
    }

    %1
}
)";

void collect(QQuickItem* item, const QString& name, QList<QQuickItem*>& found) {
  if (!item->isVisible()) return;
  if (item->objectName() == name) found.append(item);
  for (QQuickItem* child : item->childItems()) collect(child, name, found);
}

QQuickItem* itemNamed(QQuickItem* top, const QString& name) {
  QList<QQuickItem*> found;
  collect(top, name, found);
  return found.size() == 1 ? found.front() : nullptr;
}

}  // namespace

OverlayScene::OverlayScene(const QString& overlay, const Setting& setting)
    : view_(std::make_unique<QQuickView>()) {
  QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
    for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
  });
  auto* component = new QQmlComponent(view_->engine(), view_.get());
  component->setData(QString::fromLatin1(sceneText).arg(overlay).toUtf8(),
                     QUrl(QStringLiteral("qrc:/OverlayScene.qml")));
  QObject* root = component->createWithInitialProperties(
      {{QStringLiteral("actions"), QVariant::fromValue(setting.actions)}});
  if (root == nullptr) {
    ADD_FAILURE() << component->errorString().toStdString();
    root = new QQuickItem();
  }
  view_->setColor(QColor(0x12, 0x13, 0x18));
  view_->setResizeMode(QQuickView::SizeRootObjectToView);
  view_->setContent(QUrl(), component, root);
  view_->resize(setting.size);
  view_->show();
  view_->requestActivate();
  EXPECT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  settle();
}

OverlayScene::~OverlayScene() = default;

QVariant OverlayScene::count(const char* name) const {
  QVariant value = view_->rootObject()->property(name);
  EXPECT_TRUE(value.isValid()) << name;
  return value;
}

void OverlayScene::setOverlayShown(bool shown) {
  view_->rootObject()->setProperty("overlayShown", shown);
  settle();
}

QQuickItem* OverlayScene::find(const QString& path) const {
  QQuickItem* found = view_->rootObject();
  for (const QString& name : path.split('/')) {
    found = itemNamed(found, name);
    if (found == nullptr) {
      ADD_FAILURE() << "the window does not have exactly one " << path.toStdString();
      return view_->rootObject();
    }
  }
  return found;
}

bool OverlayScene::shows(const QString& name) const {
  return itemNamed(view_->rootObject(), name) != nullptr;
}

QVariant OverlayScene::read(const QString& path, const QString& property) const {
  const QQmlProperty found(find(path), property, view_->engine());
  EXPECT_TRUE(found.isValid()) << path.toStdString() << "." << property.toStdString();
  return found.read();
}

QString OverlayScene::focused() const {
  const QQuickItem* item = view_->activeFocusItem();
  return item != nullptr ? item->objectName() : QString();
}

QRectF OverlayScene::place(const QString& path) const {
  const QQuickItem* item = find(path);
  return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

QPoint OverlayScene::middle(const QString& path) const {
  return place(path).center().toPoint();
}

void OverlayScene::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(view_.get(), key, modifiers);
  settle();
}

void OverlayScene::click(const QString& path) {
  clickAt(middle(path));
}

void OverlayScene::clickAt(QPoint point) {
  QTest::mouseMove(view_.get(), point);
  QTest::mouseClick(view_.get(), Qt::LeftButton, {}, point);
  settle();
}

void OverlayScene::settle() {
  // Deferred deletions, layouts and polishing can each cause the next.
  for (int round = 0; round < 3; ++round) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    view_->grabWindow();
  }
}

}  // namespace tessaly
