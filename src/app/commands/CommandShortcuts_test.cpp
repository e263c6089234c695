// The keys of the commands in a window with a text field and another focusable item.
#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include "app/commands/MenuCommands.h"
#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class CommandShortcuts : public SessionFixture {
 protected:
  CommandShortcuts()
      : actions_({.workspace = machine_.workspace,
                  .pasteboard = machine_.pasteboard,
                  .quickLook = [](const std::string& /*path*/) {},
                  .openTerminal = [](const std::string& /*path*/) {},
                  .openInEditor = [](const std::string& /*path*/) {}}),
        commands_({.session = session(), .target = target_, .actions = actions_, .quit = [] {}}) {
    QObject::connect(view_.engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
      for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
    });
    auto* component = new QQmlComponent(view_.engine(), &view_);
    component->setData(
        "import QtQuick\nimport Tessaly.Commands\n"
        "Item { id: root; required property MenuCommands commands; property bool allowed: true\n"
        "Item { objectName: 'map'; focus: true }\n"
        "TextInput { objectName: 'field'; text: 'one two' }\n"
        "CommandShortcuts { commands: root.commands; allowed: root.allowed\n"
        "focusItem: root.Window.activeFocusItem } }",
        QUrl(QStringLiteral("qrc:/CommandShortcuts.qml")));
    QObject* root = component->createWithInitialProperties(
        {{QStringLiteral("commands"), QVariant::fromValue(&commands_)}});
    if (root == nullptr) ADD_FAILURE() << component->errorString().toStdString();
    view_.setContent(QUrl(), component, root);
    view_.resize(400, 300);
    view_.show();
    view_.requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&view_));
    scanTo(folder("/data", 5, {file("/data/a", 3), file("/data/b", 2)}));
  }

  QQuickItem* item(const char* name) {
    return view_.rootObject()->findChild<QQuickItem*>(QLatin1String(name));
  }
  void type(const char* name) { item(name)->forceActiveFocus(); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    QTest::keyClick(&view_, key, modifiers);
  }

  CommandTarget target_{session()};
  NodeActions actions_;
  MenuCommands commands_;
  QQuickView view_;
};

TEST_F(CommandShortcuts, shortcuts_trigger_their_commands) {
  press(Qt::Key_A);
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
  press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(2));
}

TEST_F(CommandShortcuts, shortcuts_do_nothing_while_not_allowed) {
  view_.rootObject()->setProperty("allowed", false);
  press(Qt::Key_A);
  press(Qt::Key_F);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_FALSE(session().shown().searchOpen());
}

TEST_F(CommandShortcuts, a_text_field_keeps_the_keys_that_edit_its_text) {
  machine_.trash.put("/data/a");
  session().selection().setFocused(session().navigation().current()->children()[0]);
  type("field");
  QMetaObject::invokeMethod(item("field"), "deselect");
  press(Qt::Key_A);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(item("field")->property("selectedText"), "one two");
  press(Qt::Key_C);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "one two");
  press(Qt::Key_End, Qt::NoModifier);
  press(Qt::Key_Backspace);
  EXPECT_EQ(item("field")->property("text"), "one ");
  EXPECT_TRUE(machine_.trash.has("/data/a"));
}

TEST_F(CommandShortcuts, other_shortcuts_trigger_in_a_text_field_too) {
  type("field");
  session().selection().setFocused(session().navigation().current()->children()[0]);
  press(Qt::Key_L);
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(item("field")->property("text"), "one two");
}

TEST_F(CommandShortcuts, held_keys_trigger_a_command_once) {
  machine_.trash.put("/data/a");
  session().selection().setFocused(session().navigation().current()->children()[0]);
  press(Qt::Key_Backspace);
  ASSERT_FALSE(machine_.trash.has("/data/a"));
  machine_.trash.put("/data/b");
  session().selection().setFocused(session().navigation().current()->children()[1]);
  // Repeats a key like a keyboard on which it is held.
  qt_sendShortcutOverrideEvent(&view_, 0, Qt::Key_Backspace, Qt::ControlModifier, {}, true);
  EXPECT_TRUE(machine_.trash.has("/data/b"));
}

}  // namespace
}  // namespace tessaly
