// The target of the commands in a window with two rows of a list, a row that offers nothing, and a
// button beside them.
#include "app/commands/CommandTarget.h"

#include <gmock/gmock.h>
#include <memory>
#include <string>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class CommandTargetTest : public SessionFixture {
 protected:
  CommandTargetTest() {
    QObject::connect(view_.engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
      for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
    });
    auto* component = new QQmlComponent(view_.engine(), &view_);
    component->setData(
        "import QtQuick\nimport QtQuick.Templates as T\nimport Tessaly.Model\n"
        "Item { id: root; property nodeHandle first; property nodeHandle second\n"
        "Loader { objectName: 'list'; sourceComponent: Item {\n"
        "FocusScope { objectName: 'firstRow'; CommandRow.node: root.first\n"
        "Item { objectName: 'button'; focus: true } }\n"
        "Item { objectName: 'secondRow'; CommandRow.node: root.second }\n"
        "Item { objectName: 'keptRow'; CommandRow.node: root.first; CommandRow.removable: false }\n"
        "Item { objectName: 'plainRow' } } }\n"
        "Item { objectName: 'elsewhere' }\n"
        "T.Popup { objectName: 'menu'; focus: true; contentItem: Item { objectName: 'entry' } } }",
        QUrl(QStringLiteral("qrc:/CommandTarget.qml")));
    QObject* root = component->create();
    if (root == nullptr) ADD_FAILURE() << component->errorString().toStdString();
    view_.setContent(QUrl(), component, root);
    view_.show();
    view_.requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&view_));
    target_.follow(view_);

    for (const char* path : {"/data/a", "/data/b", "/data/film"}) machine_.trash.put(path, path);
    scanTo(folder("/data", 60, {file("/data/film", 30), file("/data/a", 20), file("/data/b", 10)}));
    offer("first", "/data/a");
    offer("second", "/data/b");
    session().selection().setFocused(file("/data/film", 30));
  }

  QQuickItem* item(const char* name) {
    return view_.rootObject()->findChild<QQuickItem*>(QLatin1String(name));
  }
  void focusOn(const char* name) { item(name)->forceActiveFocus(); }
  void offer(const char* row, const std::string& path) {
    view_.rootObject()->setProperty(row, QVariant::fromValue(NodeHandle(file(path, 20))));
  }
  void showList() { session().shown().setVizMode(VizMode::largest); }
  std::string target() {
    return target_.node().isValid() ? target_.node().node()->path() : std::string();
  }
  QObject* menu() { return view_.rootObject()->findChild<QObject*>(QStringLiteral("menu")); }
  bool has(const char* path) { return machine_.trash.has(path); }

  QQuickView view_;
  CommandTarget target_{session()};
};

TEST_F(CommandTargetTest, on_the_map_it_is_the_focused_item_wherever_the_keyboard_is) {
  EXPECT_EQ(target(), "/data/film");
  focusOn("secondRow");
  EXPECT_EQ(target(), "/data/film");
  const QSignalSpy changes(&target_, &CommandTarget::changed);
  session().selection().setFocused(std::nullopt);
  EXPECT_EQ(target(), "");
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(CommandTargetTest, in_a_list_it_is_the_row_with_the_keyboard) {
  showList();
  EXPECT_EQ(target(), "");
  focusOn("button");
  EXPECT_EQ(target(), "/data/a");
  focusOn("secondRow");
  EXPECT_EQ(target(), "/data/b");
  for (const char* other : {"plainRow", "elsewhere"}) {
    focusOn("secondRow");
    focusOn(other);
    EXPECT_EQ(target(), "") << other;
  }
  const QSignalSpy changes(&target_, &CommandTarget::changed);
  session().shown().setVizMode(VizMode::treemap);
  EXPECT_EQ(target(), "/data/film");
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(CommandTargetTest, it_follows_the_item_of_the_row) {
  showList();
  focusOn("secondRow");
  const QSignalSpy changes(&target_, &CommandTarget::changed);
  offer("second", "/data/caf\xe9");
  EXPECT_EQ(target(), "/data/caf\xe9");
  EXPECT_EQ(changes.count(), 1);
  view_.rootObject()->setProperty("second", QVariant::fromValue(NodeHandle()));
  EXPECT_EQ(target(), "");
}

TEST_F(CommandTargetTest, a_row_that_the_keyboard_has_left_changes_nothing) {
  showList();
  focusOn("button");
  focusOn("secondRow");
  const QSignalSpy changes(&target_, &CommandTarget::changed);
  offer("first", "/data/film");
  item("firstRow")->setVisible(false);
  EXPECT_EQ(target(), "/data/b");
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(CommandTargetTest, a_row_stays_the_target_while_a_menu_is_open) {
  showList();
  focusOn("button");
  QMetaObject::invokeMethod(menu(), "open");
  QTRY_VERIFY(menu()->property("opened").toBool());
  ASSERT_FALSE(item("button")->hasActiveFocus());
  EXPECT_EQ(target(), "/data/a");
  QMetaObject::invokeMethod(menu(), "close");
  focusOn("elsewhere");
  EXPECT_EQ(target(), "");
}

TEST_F(CommandTargetTest, a_row_that_is_destroyed_while_a_menu_is_open_is_no_target) {
  showList();
  focusOn("secondRow");
  QMetaObject::invokeMethod(menu(), "open");
  QTRY_VERIFY(menu()->property("opened").toBool());
  ASSERT_EQ(target(), "/data/b");
  const QSignalSpy changes(&target_, &CommandTarget::changed);
  delete item("secondRow");
  EXPECT_EQ(target(), "");
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(CommandTargetTest, a_row_stays_the_target_while_the_window_is_inactive) {
  showList();
  focusOn("button");
  QQuickView other;
  other.show();
  other.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  ASSERT_FALSE(item("button")->hasActiveFocus());
  EXPECT_EQ(target(), "/data/a");
}

TEST_F(CommandTargetTest, a_hidden_or_destroyed_row_is_no_target) {
  showList();
  focusOn("secondRow");
  QSignalSpy changes(&target_, &CommandTarget::changed);
  item("list")->setVisible(false);
  EXPECT_EQ(target(), "");
  EXPECT_GE(changes.count(), 1);
  item("list")->setVisible(true);
  focusOn("secondRow");
  ASSERT_EQ(target(), "/data/b");
  changes.clear();
  item("list")->setProperty("active", false);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(target(), "");
  EXPECT_GE(changes.count(), 1);
}

TEST_F(CommandTargetTest, the_row_is_queued_copied_and_moved_to_the_trash_with_a_record) {
  showList();
  focusOn("button");
  target_.addToQueue();
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue()[0].path(), "/data/a");
  target_.copyPath();
  EXPECT_EQ(machine_.pasteboard.text, "/data/a");
  target_.moveToTrash();
  EXPECT_FALSE(has("/data/a"));
  EXPECT_TRUE(has("/data/film"));
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_EQ(session().removal().lastTrashed()[0].original, "/data/a");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(CommandTargetTest, a_critical_row_is_not_moved_without_a_warning) {
  machine_.trash.put("/etc/passwd");
  offer("first", "/etc/passwd");
  showList();
  focusOn("button");
  target_.moveToTrash();
  EXPECT_TRUE(has("/etc/passwd"));
  ASSERT_TRUE(session().removal().criticalWarning());
  EXPECT_EQ(session().removal().criticalWarning()->path(), "/etc/passwd");
}

TEST_F(CommandTargetTest, a_row_that_is_not_removable_is_only_copied) {
  showList();
  focusOn("keptRow");
  EXPECT_EQ(target(), "/data/a");
  target_.addToQueue();
  target_.moveToTrash();
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_TRUE(has("/data/a"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  target_.copyPath();
  EXPECT_EQ(machine_.pasteboard.text, "/data/a");
}

TEST_F(CommandTargetTest, nothing_is_done_in_a_list_without_such_a_row) {
  showList();
  focusOn("plainRow");
  target_.addToQueue();
  target_.copyPath();
  target_.moveToTrash();
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_FALSE(machine_.pasteboard.text.has_value());
  EXPECT_TRUE(has("/data/film"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(CommandTargetTest, selected_paths_are_copied_before_that_of_the_row) {
  session().selection().selectNodes({file("/data/b", 10)}, false);
  showList();
  focusOn("button");
  target_.copyPath();
  EXPECT_EQ(machine_.pasteboard.text, "/data/b");
}

TEST_F(CommandTargetTest, the_focused_item_is_moved_on_the_map_or_else_the_folder_on_screen) {
  target_.moveToTrash();
  EXPECT_FALSE(has("/data/film"));
  dispatch().drainAll();
  session().selection().setFocused(std::nullopt);
  machine_.trash.put("/data");
  target_.moveToTrash();
  EXPECT_FALSE(has("/data"));
}

}  // namespace
}  // namespace tessaly
