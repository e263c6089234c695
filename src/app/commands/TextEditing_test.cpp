#include "app/commands/TextEditing.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

#include "app/controls/ControlScene.h"

namespace tessaly {
namespace {

// Runs for both kinds of field.
class TextEditingTest : public testing::TestWithParam<const char*> {
 protected:
  TextEditingTest() {
    QGuiApplication::clipboard()->clear();
    editing_.setTarget(field());
  }

  QQuickItem* field() { return scene_.control(); }
  QString text() { return field()->property("text").toString(); }
  void selectStart() { QMetaObject::invokeMethod(field(), "select", Q_ARG(int, 0), Q_ARG(int, 3)); }

  ControlScene scene_{QStringLiteral("%1 { text: 'one two' }").arg(QLatin1String(GetParam()))};
  TextEditing editing_;
};

TEST_P(TextEditingTest, can_select_all_of_a_text_and_nothing_else_at_first) {
  EXPECT_TRUE(editing_.canSelectAll());
  EXPECT_FALSE(editing_.canCut());
  EXPECT_FALSE(editing_.canCopy());
  EXPECT_FALSE(editing_.canPaste());
  field()->setProperty("text", QString());
  EXPECT_FALSE(editing_.canSelectAll());
}

TEST_P(TextEditingTest, cuts_copies_and_pastes_what_is_selected) {
  selectStart();
  EXPECT_TRUE(editing_.canCopy());
  editing_.copy();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "one");
  EXPECT_TRUE(editing_.canPaste());
  EXPECT_TRUE(editing_.canCut());
  editing_.cut();
  EXPECT_EQ(text(), " two");
  EXPECT_FALSE(editing_.canCut());
  editing_.paste();
  EXPECT_EQ(text(), "one two");
  editing_.selectAll();
  EXPECT_EQ(field()->property("selectedText"), "one two");
}

TEST_P(TextEditingTest, leaves_a_text_alone_that_is_only_read) {
  QGuiApplication::clipboard()->setText("three");
  field()->setProperty("readOnly", true);
  selectStart();
  EXPECT_TRUE(editing_.canCopy());
  EXPECT_FALSE(editing_.canCut());
  EXPECT_FALSE(editing_.canPaste());
  editing_.cut();
  editing_.paste();
  EXPECT_EQ(text(), "one two");
}

TEST_P(TextEditingTest, tells_when_there_may_be_another_answer) {
  const QSignalSpy changes(&editing_, &TextEditing::changed);
  editing_.setTarget(nullptr);
  editing_.setTarget(field());
  editing_.selectAll();
  EXPECT_EQ(changes.count(), 3);
}

INSTANTIATE_TEST_SUITE_P(Fields, TextEditingTest, testing::Values("TextInput", "TextEdit"));

TEST(TextEditingAlone, gives_away_nothing_that_is_hidden) {
  const ControlScene scene("TextInput { text: 'secret'; echoMode: TextInput.Password }");
  QMetaObject::invokeMethod(scene.control(), "selectAll");
  TextEditing editing;
  editing.setTarget(scene.control());
  EXPECT_FALSE(editing.canCopy());
  EXPECT_FALSE(editing.canCut());
}

TEST(TextEditingAlone, can_do_nothing_without_a_field) {
  const ControlScene scene("MarrowButton { text: 'Button' }");
  TextEditing editing;
  for (QQuickItem* target : {static_cast<QQuickItem*>(nullptr), scene.control()}) {
    editing.setTarget(target);
    EXPECT_FALSE(editing.canCut() || editing.canCopy() || editing.canPaste() ||
                 editing.canSelectAll());
    editing.selectAll();
  }
}

TEST(TextEditingAlone, lets_go_of_a_field_that_is_gone) {
  TextEditing editing;
  {
    const ControlScene scene("TextInput { text: 'one' }");
    editing.setTarget(scene.control());
    ASSERT_TRUE(editing.canSelectAll());
  }
  EXPECT_FALSE(editing.canSelectAll());
}

}  // namespace
}  // namespace tessaly
