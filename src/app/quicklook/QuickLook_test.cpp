#include "app/quicklook/QuickLook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQmlEngine>

#include "support/FakePreviewPanel.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

NodeHandle fileAt(const std::string& path) {
  return NodeHandle(DiskNode({.name = "film.mkv",
                              .path = path,
                              .size = 1,
                              .isDir = false,
                              .kind = FileKind::video,
                              .mtime = {}}));
}

TEST(QuickLook, there_is_no_item_at_first) {
  FakePreviewPanel panel;
  const QuickLook look(&panel);
  EXPECT_EQ(look.url(), std::nullopt);
  EXPECT_EQ(look.numberOfPreviewItems(), 0);
  EXPECT_EQ(panel.source, nullptr);
  EXPECT_EQ(panel.timesInFront, 0);
}

TEST(QuickLook, the_url_is_that_of_the_root_before_the_first_item) {
  const QuickLook look(nullptr);
  EXPECT_EQ(look.previewItemAt(0), "file:///");
}

TEST(QuickLook, the_source_is_set_before_the_panel_comes_to_the_front) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/home/ada/film.mkv");
  EXPECT_EQ(panel.source, &look);
  EXPECT_EQ(panel.timesInFront, 1);
  EXPECT_THAT(panel.shown, ElementsAre("file:///home/ada/film.mkv"));
}

TEST(QuickLook, there_is_one_item_for_any_index) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/a");
  EXPECT_EQ(look.numberOfPreviewItems(), 1);
  for (const int index : {0, 1, 7, -1}) EXPECT_EQ(look.previewItemAt(index), "file:///a");
}

TEST(QuickLook, the_second_of_two_paths_is_shown) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/first");
  look.show("/second");
  EXPECT_THAT(panel.shown, ElementsAre("file:///first", "file:///second"));
  ASSERT_EQ(panel.source, &look);
  EXPECT_EQ(panel.source->numberOfPreviewItems(), 1);
  EXPECT_EQ(panel.source->previewItemAt(0), "file:///second");
}

TEST(QuickLook, the_same_path_brings_the_panel_to_the_front_again) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/a");
  look.show("/a");
  EXPECT_EQ(panel.timesInFront, 2);
}

TEST(QuickLook, bytes_of_a_name_that_is_not_utf8_are_kept) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/caf\xe9 1%\n");
  EXPECT_EQ(look.url(), "file:///caf%E9%201%25%0A");
}

TEST(QuickLook, the_item_is_remembered_without_a_panel) {
  QuickLook look(nullptr);
  look.show("/a");
  EXPECT_EQ(look.url(), "file:///a");
  EXPECT_EQ(look.numberOfPreviewItems(), 1);
}

TEST(QuickLook, the_item_of_a_handle_is_shown) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show(fileAt("/film\xff.mkv"));
  EXPECT_THAT(panel.shown, ElementsAre("file:///film%FF.mkv"));
}

TEST(QuickLook, a_handle_without_a_node_shows_nothing) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show(NodeHandle());
  EXPECT_EQ(look.url(), std::nullopt);
  EXPECT_EQ(panel.timesInFront, 0);
}

TEST(QuickLook, the_destructor_removes_the_source_from_the_panel) {
  FakePreviewPanel panel;
  {
    QuickLook look(&panel);
    look.show("/a");
  }
  EXPECT_EQ(panel.source, nullptr);
}

TEST(QuickLook, views_can_call_it) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  QQmlEngine engine;
  QQmlComponent component(&engine);
  component.setData(
      "import QtQml\nimport Tessaly.Model\nimport Tessaly.QuickLook\n"
      "QtObject {\n"
      "  required property QuickLook look\n"
      "  required property nodeHandle node\n"
      "  Component.onCompleted: look.show(node)\n"
      "}",
      QUrl());
  const std::unique_ptr<QObject> view(component.createWithInitialProperties(
      {{"look", QVariant::fromValue(&look)}, {"node", QVariant::fromValue(fileAt("/a b"))}}));
  ASSERT_NE(view, nullptr) << component.errorString().toStdString();
  EXPECT_THAT(panel.shown, ElementsAre("file:///a%20b"));
}

}  // namespace
}  // namespace tessaly
