#include "app/commands/TextEditing.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

#include "app/controls/ControlScene.h"

namespace tessaly {
namespace {

// Runs with both kinds of fields.
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

TEST_P(TextEditingTest, only_select_all_is_available_at_first) {
  EXPECT_TRUE(editing_.canSelectAll());
  EXPECT_FALSE(editing_.canCut());
  EXPECT_FALSE(editing_.canCopy());
  EXPECT_FALSE(editing_.canPaste());
  field()->setProperty("text", QString());
  EXPECT_FALSE(editing_.canSelectAll());
}

TEST_P(TextEditingTest, the_selected_text_is_cut_copied_and_pasted) {
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

TEST_P(TextEditingTest, a_read_only_text_is_not_changed) {
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

TEST_P(TextEditingTest, changed_is_emitted_when_a_property_may_have_changed) {
  const QSignalSpy changes(&editing_, &TextEditing::changed);
  editing_.setTarget(nullptr);
  editing_.setTarget(field());
  editing_.selectAll();
  EXPECT_EQ(changes.count(), 3);
}

INSTANTIATE_TEST_SUITE_P(Fields, TextEditingTest, testing::Values("TextInput", "TextEdit"));

TEST(TextEditingAlone, hidden_text_is_not_copied) {
  const ControlScene scene("TextInput { text: 'secret'; echoMode: TextInput.Password }");
  QMetaObject::invokeMethod(scene.control(), "selectAll");
  TextEditing editing;
  editing.setTarget(scene.control());
  EXPECT_FALSE(editing.canCopy());
  EXPECT_FALSE(editing.canCut());
}

TEST(TextEditingAlone, nothing_is_available_without_a_field) {
  const ControlScene scene("MarrowButton { text: 'Button' }");
  TextEditing editing;
  for (QQuickItem* target : {static_cast<QQuickItem*>(nullptr), scene.control()}) {
    editing.setTarget(target);
    EXPECT_FALSE(editing.canCut() || editing.canCopy() || editing.canPaste() ||
                 editing.canSelectAll());
    editing.selectAll();
  }
}

TEST(TextEditingAlone, a_destroyed_field_is_forgotten) {
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
