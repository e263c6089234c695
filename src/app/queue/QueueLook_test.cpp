// Every size, colour, font and opacity of the panel, read from its items.
#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetricsF>

#include "app/queue/QueueScene_test.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using QueueLook = QueueScene;

TEST_F(QueueLook, the_open_panel_looks_as_designed) {
  show();
  queueThree();
  EXPECT_EQ(rectOf(panel()), QRectF(200, 100, 420, 360));
  expectLook(panel(), {{"surface", "width", 420},
                       {"surface", "height", 360},
                       {"surface", "radius", 12},
                       {"surface", "color", "#181a22 at 1.00"},
                       {"surface", "outlineColor", "#ffffff at 0.10"},
                       {"surface", "outlineWidth", 1},
                       {"surface", "shadowColor", "#000000 at 0.45"},
                       {"surface", "shadowRadius", 20},
                       {"surface", "shadowOffset", 0},
                       {"queueHeader", "width", 420},
                       {"queueHeader", "height", 44},
                       {"divider", "height", 1},
                       {"divider", "color", "#ffffff at 0.08"}});
  EXPECT_EQ(rectOf(item("divider")).top(), rectOf(item("queueHeader")).bottom());
  EXPECT_EQ(rectOf(item("queueList")).top(), rectOf(item("divider")).bottom());
  EXPECT_EQ(rectOf(item("queueList")).bottom(), rectOf(item("queueFooter")).top());
  EXPECT_EQ(rectOf(item("queueFooter")).bottom(), 460);
}

TEST_F(QueueLook, the_collapsed_panel_looks_as_designed) {
  show();
  queueThree();
  session().cleanupQueue().setQueueMinimized(true);
  update();
  EXPECT_EQ(rectOf(panel()), QRectF(200, 100, 420, 44));
  expectLook(panel(), {{"surface", "width", 420},
                       {"surface", "height", 44},
                       {"chevron", "name", "chevron.up"},
                       {"chevron", "color", "#9ca3af at 1.00"}});
  for (const char* name : {"divider", "queueList", "queueRow", "queueFooter", "clear"})
    EXPECT_FALSE(shows(name)) << name;
}

TEST_F(QueueLook, the_header_looks_as_designed) {
  show();
  queueThree();
  expectLook(item("queueHeader"), {{"trashSymbol", "name", "trash"},
                                   {"title", "text", "Cleanup Queue"},
                                   {"title", "color", "#ffffff at 1.00"},
                                   {"title", "font.pixelSize", 13},
                                   {"title", "font.weight", QFont::DemiBold},
                                   {"badge", "color", "#ff3b30 at 0.12"},
                                   {"badge/count", "text", "3"},
                                   {"badge/count", "color", "#ff3b30 at 1.00"},
                                   {"badge/count", "font.pixelSize", 11},
                                   {"badge/count", "font.weight", QFont::Bold},
                                   {"chevron", "name", "chevron.down"},
                                   {"chevron", "color", "#9ca3af at 1.00"}});
  EXPECT_EQ(item("badge")->property("radius").toDouble(), item("badge")->height() / 2);
  const QRectF header = rectOf(item("queueHeader"));
  double right = header.left();
  for (const char* name : {"trashSymbol", "title", "badge", "chevron"}) {
    const QRectF rect = rectOf(itemNamed(item("queueHeader"), name));
    EXPECT_GE(rect.left(), right) << name;
    EXPECT_NEAR(rect.center().y(), header.center().y(), 1) << name;
    right = rect.right();
  }
  EXPECT_EQ(header.right() - right, 14);
}

TEST_F(QueueLook, the_rows_look_as_designed) {
  show();
  queueThree();
  EXPECT_EQ(names(), (QStringList{"film.mp4", QStringLiteral("caf\uFFFD\uFFFD.mp3"), "note"}));
  const char* const sizes[] = {"6.0 GB", "3.0 MB", "512 B"};
  const auto all = rows();
  ASSERT_EQ(all.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    expectLook(all[i], {{"name", "color", "#ffffff at 1.00"},
                        {"name", "font.pixelSize", 12},
                        {"name", "maximumLineCount", 1},
                        {"size", "text", sizes[i]},
                        {"size", "color", "#e5e7eb at 1.00"},
                        {"size", "font.pixelSize", 11},
                        {"remove/symbol", "name", "xmark"},
                        {"remove/symbol", "size", 10},
                        {"remove/symbol", "bold", true},
                        {"remove/symbol", "color", "#9ca3af at 1.00"}});
    EXPECT_EQ(rectOf(all[i]).left(), 201);
    EXPECT_EQ(rectOf(all[i]).width(), 418);
    EXPECT_EQ(rectOf(all[i]).top(), 145 + 40 * static_cast<double>(i));
    EXPECT_GE(rectOf(itemNamed(all[i], "size")).top(),
              rectOf(itemNamed(all[i], "name")).bottom() - 1);
    EXPECT_LE(rectOf(itemNamed(all[i], "size")).bottom(), rectOf(all[i]).bottom());
  }
}

TEST_F(QueueLook, a_long_name_is_elided_in_the_middle) {
  show();
  queue({file("/data/" + std::string(120, 'a') + std::string(120, 'z') + ".mp4", 1)});
  QQuickItem* const name = itemNamed(rows()[0], "name");
  EXPECT_TRUE(name->property("truncated").toBool());
  EXPECT_EQ(name->property("elide").toInt(), static_cast<int>(Qt::ElideMiddle));
  EXPECT_LE(rectOf(name).right(), rectOf(removeButton(0)).left());
}

TEST_F(QueueLook, the_footer_looks_as_designed) {
  show();
  queueThree();
  expectLook(item("queueFooter"),
             {{"clear", "text", "Clear"},
              {"zipThenTrash", "text", "Zip then Trash"},
              {"moveToTrash", "text", QStringLiteral("Move 3 to Trash · 6.0 GB")},
              {"moveToTrash/background", "color", "#007aff at 1.00"},
              {"moveToTrash/background", "endColor", "#0056b3 at 1.00"},
              {"moveToTrash/label", "text", QStringLiteral("Move 3 to Trash · 6.0 GB")},
              {"moveToTrash/label", "font.pixelSize", 13},
              {"moveToTrash/label", "font.weight", QFont::DemiBold},
              {"moveToTrash/label", "color", "#ffffff at 1.00"}});
  double right = 200;
  for (const char* name : {"clear", "zipThenTrash", "moveToTrash"}) {
    const QRectF rect = rectOf(item(name));
    EXPECT_GT(rect.left(), right) << name;
    EXPECT_EQ(rect.top() - rectOf(item("queueFooter")).top(), 12) << name;
    EXPECT_EQ(rectOf(item("queueFooter")).bottom() - rect.bottom(), 12) << name;
    right = rect.right();
  }
  EXPECT_EQ(right, 608);
}

TEST_F(QueueLook, the_button_with_many_items_looks_as_designed) {
  show();
  std::vector<DiskNode> nodes;
  for (int i = 0; i < 5000; ++i)
    nodes.push_back(file("/data/" + std::to_string(i), (1000LL << 30U) / 5000));
  session().selection().selectNodes(nodes, false);
  session().queueSelected();
  update();
  QQuickItem* const label = itemNamed(item("moveToTrash"), "label");
  EXPECT_EQ(label->property("text").toString(), QStringLiteral("Move 5000 to Trash · 1000.0 GB"));
  EXPECT_FALSE(label->property("truncated").toBool());
  EXPECT_LE(label->property("contentWidth").toDouble(), label->width());
}

}  // namespace
}  // namespace tessaly
