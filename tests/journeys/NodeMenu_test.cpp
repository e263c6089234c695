// The menu of an item.
#include <filesystem>
#include <gmock/gmock.h>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

class NodeMenuJourney : public Journey {
 protected:
  NodeMenuJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "caf\\xE9.zip 2M\n") {
    machine_.trash.put(tree_.at("Movies"), "Movies");
    session().scanHome();
    finishScan();
  }

  void askAbout(std::string_view below) {
    for (const DiskNode& child : session().navigation().current()->children()) {
      if (child.path() == tree_.at(below)) session().shown().setMenuNode(child);
    }
    settle(window());
    ASSERT_TRUE(shows("nodeMenu"));
  }
};

TEST_F(NodeMenuJourney, the_menu_names_its_item) {
  EXPECT_FALSE(shows("nodeMenu"));
  askAbout("caf\xE9.zip");
  EXPECT_EQ(text("menuTitle"), QStringLiteral("caf\uFFFD.zip"));
}

TEST_F(NodeMenuJourney, the_menu_lists_its_entries_in_order_and_arrow_keys_move_in_it) {
  askAbout("Movies");
  QStringList answers;
  for (int i = 0; i < 9; ++i) {
    answers << window().activeFocusItem()->property("text").toString();
    press(Qt::Key_Down);
  }
  EXPECT_EQ(answers, (QStringList{"Show in File Manager", "Open", "Quick Look", "Copy Path",
                                  "Open in Terminal", "Open in Editor", "Add to Cleanup Queue",
                                  "Move to Trash", "Cancel"}));
  EXPECT_TRUE(item("menuReveal")->hasActiveFocus());
  press(Qt::Key_Up);
  EXPECT_TRUE(item("menuCancel")->hasActiveFocus());
  press(Qt::Key_Tab);
  EXPECT_TRUE(item("menuReveal")->hasActiveFocus());
}

TEST_F(NodeMenuJourney, each_entry_acts_on_the_bytes_of_the_path) {
  const std::string odd = tree_.at("caf\xE9.zip");
  askAbout("caf\xE9.zip");
  click("menuReveal");
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(odd)));
  EXPECT_FALSE(shows("nodeMenu"));
  askAbout("caf\xE9.zip");
  click("menuOpen");
  EXPECT_THAT(workspace_.opened, ElementsAre(odd));
  askAbout("caf\xE9.zip");
  click("menuCopyPath");
  EXPECT_EQ(machine_.pasteboard.text, odd);
  askAbout("caf\xE9.zip");
  click("menuQuickLook");
  ASSERT_THAT(machine_.previewPanel.shown, SizeIs(1));
  EXPECT_THAT(machine_.previewPanel.shown.front(), EndsWith("/caf%E9.zip"));
  askAbout("caf\xE9.zip");
  click("menuTerminal");
  EXPECT_THAT(machine_.openTool.started, ElementsAre(ElementsAre("-a", "Terminal", tree_.path())));
  machine_.openTool.application = "Code";
  askAbout("caf\xE9.zip");
  click("menuEditor");
  EXPECT_THAT(machine_.openTool.waitedFor, ElementsAre(ElementsAre("-a", "Cursor", odd),
                                                       ElementsAre("-a", "Visual Studio Code", odd),
                                                       ElementsAre("-a", "Code", odd)));
  askAbout("caf\xE9.zip");
  click("menuQueue");
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), odd);
  EXPECT_EQ(session().shown().menuNode(), std::nullopt);
}

TEST_F(NodeMenuJourney, a_move_to_the_trash_by_the_menu_offers_no_put_back) {
  askAbout("Movies");
  click("menuTrash");
  EXPECT_FALSE(shows("nodeMenu"));
  EXPECT_FALSE(machine_.trash.has(tree_.at("Movies")));
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_FALSE(shows("putBack"));
}

TEST_F(NodeMenuJourney, the_menu_keeps_its_item_through_a_rescan) {
  const std::string odd = tree_.at("caf\xE9.zip");
  machine_.trash.put(odd, "archive");
  askAbout("caf\xE9.zip");
  std::filesystem::resize_file(tree_.at("Movies/beach.mp4"), 1);
  session().rescan();
  finishScan();
  ASSERT_EQ(session().navigation().current()->children()[0].path(), odd);
  EXPECT_EQ(text("menuTitle"), QStringLiteral("caf\uFFFD.zip"));
  click("menuTrash");
  EXPECT_FALSE(machine_.trash.has(odd));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
}

TEST_F(NodeMenuJourney, cancel_and_escape_close_the_menu_without_an_action) {
  askAbout("Movies");
  click("menuCancel");
  EXPECT_FALSE(shows("nodeMenu"));
  askAbout("Movies");
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("nodeMenu"));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
  EXPECT_THAT(workspace_.revealed, IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(NodeMenuJourney, a_click_on_its_panel_keeps_the_menu_open_and_one_beside_it_closes_it) {
  askAbout("Movies");
  clickAt(middleOf(item("menuTitle")));
  EXPECT_TRUE(shows("nodeMenu"));
  clickAt(QPoint(300, 600));
  EXPECT_FALSE(shows("nodeMenu"));
  EXPECT_THAT(workspace_.revealed, IsEmpty());
}

TEST_F(NodeMenuJourney, the_menu_closes_before_the_warning_of_a_protected_location) {
  machine_.trash.put(tree_.path());
  session().shown().setMenuNode(session().navigation().current());
  settle(window());
  click("menuTrash");
  EXPECT_FALSE(shows("nodeMenu"));
  EXPECT_TRUE(shows("protectedLocation"));
  EXPECT_TRUE(item("dismiss")->hasActiveFocus());
  click("dismiss");
  EXPECT_TRUE(machine_.trash.has(tree_.path()));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

}  // namespace
}  // namespace tessaly
