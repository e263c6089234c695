// The menu of a tile of the map.
#include <filesystem>
#include <gmock/gmock.h>

#include <QTest>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

class TileMenuJourney : public Journey {
 protected:
  TileMenuJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "caf\\xE9.zip 2M\n") {
    machine_.trash.put(tree_.at("Movies"), "Movies");
    machine_.trash.put(odd_, "archive");
    session().scanHome();
    finishScan();
  }

  void secondaryClick(QPoint point) {
    QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, point);
    settle(window());
  }
  void choose(const QString& entry) {
    secondaryClick(tilePoint("caf\xE9.zip"));
    click(entry);
    EXPECT_FALSE(shows("tileReveal"));
  }

  const std::string odd_ = tree_.at("caf\xE9.zip");
};

TEST_F(TileMenuJourney, each_entry_of_the_menu_acts) {
  choose("tileReveal");
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(odd_)));
  choose("tileOpen");
  EXPECT_THAT(workspace_.opened, ElementsAre(odd_));
  choose("tileCopyPath");
  EXPECT_EQ(machine_.pasteboard.text, odd_);
  choose("tileQuickLook");
  ASSERT_THAT(machine_.previewPanel.shown, SizeIs(1));
  EXPECT_THAT(machine_.previewPanel.shown.front(), EndsWith("/caf%E9.zip"));
  choose("tileTerminal");
  EXPECT_THAT(machine_.openTool.started, ElementsAre(ElementsAre("-a", "Terminal", tree_.path())));
  machine_.openTool.application = "Code";
  choose("tileEditor");
  EXPECT_THAT(machine_.openTool.waitedFor, SizeIs(3));
  const auto toast = session().messages().toast();
  choose("tileQueue");
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), odd_);
  EXPECT_EQ(session().messages().toast(), toast);
  session().cleanupQueue().clearQueue();  // its panel covers the tile
  choose("tileZip");
  ASSERT_THAT(machine_.savePanel.requests, SizeIs(1));
  EXPECT_EQ(machine_.savePanel.requests.front().extension, "zip");
}

TEST_F(TileMenuJourney, the_menu_opens_the_folder_and_closes) {
  secondaryClick(tilePoint("Movies"));
  click("tileOpenFolder");
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("Movies"));
  EXPECT_FALSE(shows("tileReveal"));
}

TEST_F(TileMenuJourney, the_menu_asks_before_it_moves_to_the_trash) {
  choose("tileTrash");
  EXPECT_TRUE(shows("nodeMenu"));
  EXPECT_EQ(text("menuTitle"), QStringLiteral("caf\uFFFD.zip"));
  EXPECT_TRUE(machine_.trash.has(odd_));
  click("menuTrash");
  EXPECT_FALSE(machine_.trash.has(odd_));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
}

TEST_F(TileMenuJourney, the_menu_keeps_its_item_through_a_rescan) {
  secondaryClick(tilePoint("caf\xE9.zip"));
  std::filesystem::remove(tree_.at("Movies/beach.mp4"));
  session().rescan();
  finishScan();
  click("tileTrash");
  click("menuTrash");
  EXPECT_FALSE(machine_.trash.has(odd_));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
}

TEST_F(TileMenuJourney, the_menu_queues_its_item_after_a_rescan) {
  secondaryClick(tilePoint("caf\xE9.zip"));
  std::filesystem::resize_file(tree_.at("Movies/beach.mp4"), 1);
  session().rescan();
  finishScan();
  ASSERT_EQ(session().navigation().current()->children()[0].path(), odd_);
  click("tileQueue");
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), odd_);
  click("moveToTrash");
  EXPECT_FALSE(machine_.trash.has(odd_));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
}

TEST_F(TileMenuJourney, escape_and_a_press_elsewhere_close_the_menu_without_an_action) {
  secondaryClick(tilePoint("caf\xE9.zip"));
  EXPECT_TRUE(shows("tileReveal"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("tileReveal"));
  secondaryClick(tilePoint("caf\xE9.zip"));
  clickAt(tilePoint("Movies"));
  EXPECT_FALSE(shows("tileReveal"));
  EXPECT_EQ(session().navigation().stack().size(), 1U);
  EXPECT_THAT(workspace_.revealed, IsEmpty());
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
