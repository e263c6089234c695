// The list of items in the cloud without a copy on this disk, in place of the map. No control leads
// to it, and it removes nothing.
#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>

#include "journeys/CommandJourney.h"
#include "journeys/ListJourney.h"
#include "support/Look.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CloudListJourney : public ListJourney<CommandJourney> {
 protected:
  CloudListJourney()
      : ListJourney("cloudRow",
                    "Movies/\n"
                    "  beach.mp4.nextcloud 4K\n"
                    "notes.txt 20M\n",
                    [this](Application::Services& services) {
                      services.analysis = PostScanAnalysis::Engines{
                          .cloudItems = [this](const auto&, const auto&) { return items(); }};
                    }) {
    machine_.trash.put(film(), "film");
    scan();
    session().shown().setVizMode(VizMode::cloud);
  }

  std::string film() const { return tree_.at("Movies/beach.mp4.nextcloud"); }
  std::vector<CloudItem> items() const {
    return {{.name = "beach.mp4", .path = film(), .size = 3LL << 30U},
            {.name = "notes.txt", .path = tree_.at("notes.txt"), .size = 0}};
  }
  void expectNothingRemoved() {
    EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
    EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
    EXPECT_FALSE(session().removal().criticalWarning());
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
  }
};

TEST_F(CloudListJourney, the_list_says_so_until_an_analysis_has_found_items) {
  EXPECT_FALSE(shows("canvas"));
  expectLook(item("cloudList"),
             {{"listTitle", "text", "Offloaded to the cloud"},
              {"listCaption", "text",
               "In the cloud but not fully on this disk. Don’t trash these if you still need the "
               "originals in the cloud."},
              {"listCaption", "color", "#e5e7eb at 1.00"},
              {"emptyMessage", "text", "None in this scan."}});
  finishAnalysis();
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_THAT(places(), ElementsAre(film(), tree_.at("notes.txt")));
}

TEST_F(CloudListJourney, each_row_shows_name_path_and_size) {
  finishAnalysis();
  expectLook(listRows()[0], {{"name", "text", "beach.mp4"},
                             {"place", "text", QString::fromStdString(film())},
                             {"size", "text", "3.0 GB"},
                             {"size", "font.pixelSize", 13},
                             {"size", "font.weight", 600},
                             {"size", "font.family", "JetBrains Mono"}});
  expectLook(listRows()[1], {{"size", "text", "0 B"}});
  EXPECT_FALSE(shows("queueRow"));
  QAccessibleInterface* const told =
      QAccessible::queryAccessibleInterface(itemNamed(listRows()[0], "rowFace"));
  EXPECT_EQ(told->text(QAccessible::Name).toStdString(), "beach.mp4, 3.0 GB, " + film());
}

TEST_F(CloudListJourney, a_click_and_return_show_an_item_in_the_file_manager) {
  enter();
  press(Qt::Key_Return);
  clickAt(middleOf(itemNamed(listRows()[1], "size")));
  EXPECT_THAT(workspace_.revealed,
              ElementsAre(ElementsAre(film()), ElementsAre(tree_.at("notes.txt"))));
  EXPECT_TRUE(shows("cloudList"));
}

TEST_F(CloudListJourney, neither_keys_nor_commands_nor_the_menu_remove_an_item) {
  enter();
  press(Qt::Key_L, command);
  press(Qt::Key_Backspace, command);
  for (const char* title : {"Queue Focused Item", "Move Focused to Trash"}) choose(title);
  press(Qt::Key_Menu);
  EXPECT_THAT(menuTexts(), ElementsAre("Show in File Manager", "Quick Look"));
  press(Qt::Key_Escape);
  expectNothingRemoved();
  EXPECT_TRUE(machine_.trash.has(film()));
  EXPECT_EQ(keyboardRow(), film());
  press(Qt::Key_C, commandShift);
  EXPECT_EQ(machine_.pasteboard.text, film());
}

// With the engine of the program, and a placeholder on the disk.
class CloudItemsOnDisk : public Journey {
 protected:
  CloudItemsOnDisk()
      : Journey(
            "Nextcloud/\n"
            "  film.mkv.nextcloud 1\n"
            "  here.txt 20M\n") {
    session().scanHome();
    finishScan();
    session().shown().setVizMode(VizMode::cloud);
    dispatch_.drainAll();
    settle(window());
  }
};

TEST_F(CloudItemsOnDisk, a_placeholder_is_listed_without_a_size) {
  const auto rows = itemsNamed(window().contentItem(), "cloudRow");
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0]->property("place").toString().toStdString(),
            tree_.at("Nextcloud/film.mkv.nextcloud"));
  expectLook(rows[0], {{"size", "text", "0 B"}});
}

}  // namespace
}  // namespace tessaly
