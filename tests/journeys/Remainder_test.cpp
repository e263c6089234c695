// Remainders on the map, and files on the disk that are named like one.
#include "scan/Remainder.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QTest>

#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "support/PlainFiles.h"
#include "support/WindowItems.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

DiskNode itemAt(const std::string& name, const std::string& path, std::int64_t mebibytes) {
  DiskNode::Fields fields;
  fields.name = name;
  fields.path = path;
  fields.size = mebibytes << 20;
  return DiskNode(fields);
}

// A folder whose tree leaves out six of its items.
DiskNode crowded(const std::string& root) {
  DiskNode::Fields fields;
  fields.name = "home";
  fields.path = root;
  fields.size = 40 << 20;
  fields.isDir = true;
  fields.kind = FileKind::folder;
  return DiskNode(
      fields,
      {itemAt("film.mp4", root + "/film.mp4", 12), itemAt("__rest__", root + "/__rest__", 9),
       itemAt("+ 6 more", root + "/+ 6 more", 8), itemAt("+ 6 more", root + "/__rest__", 7)});
}

class RemainderJourney : public Journey {
 protected:
  RemainderJourney()
      : Journey("film.mp4 12M\n", [](Application::Services& services) {
          services.walk = [](const std::string& root, const DiskScanner::Callbacks&,
                             const DiskScanner::Options&) { return crowded(root); };
        }) {
    for (const char* name : files) {
      putFile(tree_.at(name), name);
      machine_.trash.put(tree_.at(name), name);
    }
    session().scanHome();
    finishScan();
    toast_ = session().messages().toast();
  }

  static constexpr const char* files[] = {"film.mp4", "__rest__", "+ 6 more"};

  QPoint remainderPoint() {
    QQuickItem* const canvas = item("canvas");
    for (const TreemapRect& rect : TreemapLayout::layout(
             *session().navigation().current(), {0, 0, canvas->width(), canvas->height()})) {
      if (!isRemainder(rect.node)) continue;
      return canvas->mapToScene(QPointF(rect.x + rect.width / 2, rect.y + rect.height / 2))
          .toPoint();
    }
    ADD_FAILURE() << "there is no tile of it";
    return {};
  }
  void secondaryClick(QPoint point) {
    QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, point);
    settle(window());
  }
  void expectNothingDone() {
    for (const char* name : files) EXPECT_TRUE(machine_.trash.has(tree_.at(name))) << name;
    EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
    EXPECT_THAT(session().selection().selected(), IsEmpty());
    EXPECT_THAT(workspace_.revealed, IsEmpty());
    EXPECT_THAT(workspace_.opened, IsEmpty());
    EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
    EXPECT_THAT(machine_.openTool.started, IsEmpty());
    EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
    EXPECT_EQ(machine_.pasteboard.text, std::nullopt);
    EXPECT_EQ(session().messages().toast(), toast_);
    EXPECT_FALSE(shows("tileReveal"));
    EXPECT_FALSE(shows("nodeMenu"));
    EXPECT_FALSE(shows("protectedLocation"));
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
  }

  std::optional<std::string> toast_;
};

TEST_F(RemainderJourney, no_operation_acts_on_a_remainder) {
  const QPoint place = remainderPoint();
  hoverAt(place);
  ASSERT_TRUE(session().selection().focused() && isRemainder(*session().selection().focused()));
  EXPECT_TRUE(shows("mapTooltip"));
  for (const Keys& keys :
       {Keys{Qt::Key_Backspace, command}, Keys{Qt::Key_L, command}, Keys{Qt::Key_Y, command},
        Keys{Qt::Key_C, commandShift}, Keys{Qt::Key_Space, Qt::NoModifier}}) {
    press(keys.key, keys.modifiers);
    expectNothingDone();
  }
  clickAt(place);
  clickHolding(Qt::ShiftModifier, place);
  clickHolding(Qt::ControlModifier, place);
  secondaryClick(place);
  expectNothingDone();
  tabTo("canvas");
  ASSERT_TRUE(isRemainder(*session().selection().focused()));
  for (const Keys& keys : {Keys{Qt::Key_Return, Qt::NoModifier}, Keys{Qt::Key_Return, command},
                           Keys{Qt::Key_Return, Qt::ShiftModifier}, Keys{Qt::Key_Menu, {}}}) {
    press(keys.key, keys.modifiers);
    expectNothingDone();
  }
}

TEST_F(RemainderJourney, select_all_visible_leaves_out_a_remainder) {
  press(Qt::Key_A, command);
  EXPECT_THAT(
      session().selection().selected(),
      UnorderedElementsAre(tree_.at("film.mp4"), tree_.at("__rest__"), tree_.at("+ 6 more")));
  EXPECT_EQ(text("queueSelection"), QStringLiteral("Queue (3)"));
}

TEST_F(RemainderJourney, a_band_leaves_out_a_remainder) {
  QQuickItem* const canvas = item("canvas");
  const QPoint from = canvas->mapToScene(QPointF(1, 1)).toPoint();
  const QPoint to =
      canvas->mapToScene(QPointF(canvas->width() - 1, canvas->height() - 1)).toPoint();
  QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(&window(), (from + to) / 2);
  QTest::mouseMove(&window(), to);
  QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, to);
  settle(window());
  EXPECT_EQ(text("queueSelection"), QStringLiteral("Queue (3)"));
  click("queueSelection");
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(3));
  click("moveToTrash");
  for (const char* name : files) EXPECT_FALSE(machine_.trash.has(tree_.at(name))) << name;
}

TEST_F(RemainderJourney, a_restored_tree_still_has_its_remainder) {
  restart();
  ASSERT_TRUE(shows("canvas"));
  toast_ = session().messages().toast();
  hoverAt(remainderPoint());
  ASSERT_TRUE(isRemainder(*session().selection().focused()));
  press(Qt::Key_Backspace, command);
  clickHolding(Qt::ControlModifier, remainderPoint());
  expectNothingDone();
}

TEST_F(RemainderJourney, files_named_like_a_remainder_are_treated_as_files) {
  for (const char* name : {"__rest__", "+ 6 more"}) {
    const QPoint place = tilePoint(name);
    hoverAt(place);
    press(Qt::Key_Space);
    press(Qt::Key_C, commandShift);
    EXPECT_EQ(machine_.pasteboard.text, tree_.at(name));
    clickAt(place);
    clickHolding(Qt::ShiftModifier, place);
    secondaryClick(place);
    EXPECT_TRUE(shows("tileReveal")) << name;
    press(Qt::Key_Escape);
    press(Qt::Key_Backspace, command);
    EXPECT_FALSE(machine_.trash.has(tree_.at(name))) << name;
    finishScan();
    EXPECT_THAT(session().selection().selected(), ElementsAre(tree_.at(name)));
    session().selection().clearSelection();
  }
  EXPECT_THAT(machine_.previewPanel.shown,
              ElementsAre(EndsWith("/__rest__"), EndsWith("/%2B%206%20more")));
  EXPECT_THAT(workspace_.revealed,
              ElementsAre(ElementsAre(tree_.at("__rest__")), ElementsAre(tree_.at("+ 6 more"))));
  EXPECT_TRUE(machine_.trash.has(tree_.at("film.mp4")));
}

}  // namespace
}  // namespace tessaly
