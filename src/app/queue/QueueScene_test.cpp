#include "app/queue/QueueScene_test.h"

#include <algorithm>

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <QWheelEvent>
#include <QtQml/qqmlextensionplugin.h>

#include "support/WindowItems.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_QueuePlugin)

namespace tessaly {

namespace {

constexpr const char* sceneText = R"(
import QtQuick
import Tessaly.Controls
import Tessaly.Queue

Item {
    id: scene

    required property CleanupQueueState queue
    property int clicksBelow: 0

    width: 700
    height: 500

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: ++scene.clicksBelow
        onDoubleClicked: ++scene.clicksBelow
        onPositionChanged: scene.clicksBelow += 100
        onWheel: ++scene.clicksBelow
    }

    MarrowSecondaryButton { objectName: "before"; x: 20; y: 20; text: "Before" }

    CleanupQueueView {
        objectName: "panel"
        x: 200
        y: 100
        queue: scene.queue
    }

    MarrowSecondaryButton { objectName: "after"; x: 120; y: 20; text: "After" }
})";

}  // namespace

void QueueScene::show() {
  view_ = std::make_unique<QQuickView>();
  QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
    for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
  });
  auto* component = new QQmlComponent(view_->engine(), view_.get());
  component->setData(sceneText, QUrl(QStringLiteral("qrc:/QueueScene.qml")));
  state_ = std::make_unique<CleanupQueueState>(session());
  QObject* root =
      component->createWithInitialProperties({{"queue", QVariant::fromValue(state_.get())}});
  ASSERT_NE(root, nullptr) << component->errorString().toStdString();
  view_->setColor(QColor(0x12, 0x13, 0x18));
  view_->setContent(QUrl(), component, root);
  view_->show();
  view_->requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  update();
}

void QueueScene::queue(const std::vector<DiskNode>& nodes) {
  for (const DiskNode& node : nodes) session().cleanupQueue().addToQueue(node);
  if (view_) update();
}

void QueueScene::queueThree() {
  queue({file("/data/film.mp4", 6LL << 30U), file("/data/caf\xE9\n.mp3", 3LL << 20U),
         file("/data/note", 512)});
}

std::vector<std::string> QueueScene::queued() const {
  std::vector<std::string> paths;
  for (const DiskNode& node : session_->cleanupQueue().queue()) paths.push_back(node.path());
  return paths;
}

QQuickItem* QueueScene::panel() {
  return view_->rootObject()->findChild<QQuickItem*>("panel");
}

QQuickItem* QueueScene::item(const QString& name) {
  QQuickItem* found = itemNamed(*view_, name);
  EXPECT_NE(found, nullptr) << "the window does not show exactly one " << name.toStdString();
  return found;
}

bool QueueScene::shows(const QString& name) {
  return !itemsNamed(view_->contentItem(), name).empty();
}

std::vector<QQuickItem*> QueueScene::rows() {
  std::vector<QQuickItem*> found = itemsNamed(view_->contentItem(), "queueRow");
  std::ranges::sort(found, {}, [](QQuickItem* row) { return rectOf(row).top(); });
  return found;
}

QStringList QueueScene::names() {
  QStringList texts;
  for (QQuickItem* row : rows()) texts << itemNamed(row, "name")->property("text").toString();
  return texts;
}

QQuickItem* QueueScene::removeButton(int row) {
  const auto all = rows();
  if (row >= static_cast<int>(all.size())) {
    ADD_FAILURE() << "there is no row " << row;
    return panel();
  }
  return itemNamed(all[static_cast<std::size_t>(row)], "remove");
}

QRectF QueueScene::rectOf(QQuickItem* item) {
  return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

void QueueScene::update() {
  settle(*view_);
}

void QueueScene::click(QQuickItem* item) {
  if (item != nullptr) clickAt(rectOf(item).center());
}

void QueueScene::clickAt(QPointF point) {
  QTest::mouseClick(view_.get(), Qt::LeftButton, {}, point.toPoint());
  update();
}

void QueueScene::press(Qt::Key key) {
  QTest::keyClick(view_.get(), key);
  update();
}

void QueueScene::backtab() {
  QTest::keyClick(view_.get(), Qt::Key_Backtab, Qt::ShiftModifier);
  update();
}

void QueueScene::wheelAt(QPointF point, int degrees) {
  QWheelEvent event(point, view_->mapToGlobal(point), {}, QPoint(0, degrees * 8), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(view_.get(), &event);
  update();
}

QAccessibleInterface* QueueScene::told(QQuickItem* item) {
  QAccessible::setActive(true);
  return QAccessible::queryAccessibleInterface(item);
}

int QueueScene::clicksBelow() const {
  return view_->rootObject()->property("clicksBelow").toInt();
}

}  // namespace tessaly
