// A list in a window of its own, between two buttons that Tab reaches. Any warning of the QML
// engine fails the test.
#pragma once

#include <gtest/gtest.h>
#include <memory>

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QTest>
#include <QVariantMap>

#include "support/WindowItems.h"

namespace tessaly {

class ListScene {
 public:
  // `list` is the QML of the list, which fills `place`; `declared` declares the scene's properties,
  // and `properties` sets them.
  void show(const QString& list, const QString& declared = {}, const QVariantMap& properties = {}) {
    view_ = std::make_unique<QQuickView>();
    QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
      for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
    });
    auto* component = new QQmlComponent(view_->engine(), view_.get());
    component->setData(
        QStringLiteral("import QtQuick\nimport Tessaly.Controls\nimport Tessaly.Model\n"
                       "import Tessaly.Panes\n"
                       "FocusScope { id: scene\n%1\n"
                       "MarrowButton { objectName: \"before\"; text: \"b\"; height: 30 }\n"
                       "Item { id: place; y: 30; width: scene.width; height: scene.height - 60\n"
                       "%2\n}\n"
                       "MarrowButton { objectName: \"after\"; text: \"a\"; height: 30\n"
                       "y: scene.height - 30 } }")
            .arg(declared, list)
            .toUtf8(),
        QUrl(QStringLiteral("qrc:/ListScene.qml")));
    QObject* root = component->createWithInitialProperties(properties);
    ASSERT_NE(root, nullptr) << component->errorString().toStdString();
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->resize(800, 460);
    view_->setContent(QUrl(), component, root);
    view_->show();
    view_->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
    update();
  }

  QQuickView& view() { return *view_; }
  void update() { settle(*view_); }
  QQuickItem* item(const QString& name) {
    QQuickItem* found = itemNamed(*view_, name);
    EXPECT_NE(found, nullptr) << "the window does not show exactly one " << name.toStdString();
    return found;
  }
  bool shows(const QString& name) { return !itemsNamed(view_->contentItem(), name).empty(); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(view_.get(), key, modifiers);
    update();
  }
  void backtab() { press(Qt::Key_Backtab, Qt::ShiftModifier); }
  void click(QQuickItem* item, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(view_.get(), button, {}, middleOf(item));
    update();
  }
  void focusOn(const QString& name) {
    item(name)->forceActiveFocus(Qt::TabFocusReason);
    update();
  }
  QQuickItem* focused() { return view_->activeFocusItem(); }
  // The accessible name of the item with the keyboard focus.
  QString focusedName() {
    QAccessibleInterface* const told =
        focused() != nullptr ? QAccessible::queryAccessibleInterface(focused()) : nullptr;
    return told != nullptr ? told->text(QAccessible::Name) : QString();
  }
  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }

 private:
  std::unique_ptr<QQuickView> view_;
};

}  // namespace tessaly
