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

TEST(QuickLook, has_nothing_to_show_at_first) {
  FakePreviewPanel panel;
  const QuickLook look(&panel);
  EXPECT_EQ(look.url(), std::nullopt);
  EXPECT_EQ(look.numberOfPreviewItems(), 0);
  EXPECT_EQ(panel.source, nullptr);
  EXPECT_EQ(panel.timesInFront, 0);
}

TEST(QuickLook, answers_with_the_root_of_the_disk_while_it_has_nothing) {
  const QuickLook look(nullptr);
  EXPECT_EQ(look.previewItemAt(0), "file:///");
}

TEST(QuickLook, puts_itself_behind_the_panel_before_it_brings_that_to_the_front) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/home/ada/film.mkv");
  EXPECT_EQ(panel.source, &look);
  EXPECT_EQ(panel.timesInFront, 1);
  EXPECT_THAT(panel.shown, ElementsAre("file:///home/ada/film.mkv"));
}

TEST(QuickLook, has_one_item_whatever_the_index) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/a");
  EXPECT_EQ(look.numberOfPreviewItems(), 1);
  for (const int index : {0, 1, 7, -1}) EXPECT_EQ(look.previewItemAt(index), "file:///a");
}

TEST(QuickLook, shown_twice_with_different_paths_leaves_the_panel_on_the_second) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/first");
  look.show("/second");
  EXPECT_THAT(panel.shown, ElementsAre("file:///first", "file:///second"));
  ASSERT_EQ(panel.source, &look);
  EXPECT_EQ(panel.source->numberOfPreviewItems(), 1);
  EXPECT_EQ(panel.source->previewItemAt(0), "file:///second");
}

TEST(QuickLook, brings_the_panel_to_the_front_again_for_the_same_path) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/a");
  look.show("/a");
  EXPECT_EQ(panel.timesInFront, 2);
}

TEST(QuickLook, keeps_the_bytes_of_a_name_that_is_not_text) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show("/caf\xe9 1%\n");
  EXPECT_EQ(look.url(), "file:///caf%E9%201%25%0A");
}

TEST(QuickLook, remembers_the_item_where_the_desktop_gives_no_panel) {
  QuickLook look(nullptr);
  look.show("/a");
  EXPECT_EQ(look.url(), "file:///a");
  EXPECT_EQ(look.numberOfPreviewItems(), 1);
}

TEST(QuickLook, shows_the_item_of_a_handle) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show(fileAt("/film\xff.mkv"));
  EXPECT_THAT(panel.shown, ElementsAre("file:///film%FF.mkv"));
}

TEST(QuickLook, does_nothing_for_a_handle_without_a_node) {
  FakePreviewPanel panel;
  QuickLook look(&panel);
  look.show(NodeHandle());
  EXPECT_EQ(look.url(), std::nullopt);
  EXPECT_EQ(panel.timesInFront, 0);
}

TEST(QuickLook, takes_itself_from_behind_the_panel_when_it_goes) {
  FakePreviewPanel panel;
  {
    QuickLook look(&panel);
    look.show("/a");
  }
  EXPECT_EQ(panel.source, nullptr);
}

TEST(QuickLook, is_called_by_views) {
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
