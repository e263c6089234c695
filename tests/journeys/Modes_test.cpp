// From the map to another view of the tree, and back.
#include <gmock/gmock.h>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::SizeIs;

class Modes : public Journey {
 protected:
  Modes()
      : Journey(
            "Movies/\n"
            "  2023/\n"
            "    beach.mp4 6M\n"
            "notes.txt 2M\n") {
    session().scanHome();
    finishScan();
    session().open(session().navigation().current()->children()[0]);
    settle(window());
  }
};

TEST_F(Modes, each_mode_shows_its_view_instead_of_the_map_and_its_header) {
  EXPECT_TRUE(shows("canvas"));
  EXPECT_TRUE(shows("header"));
  const struct {
    const char* button;
    const char* view;
  } rows[] = {{"listMode", "winsPage"},
              {"grewMode", "grewList"},
              {"duplicatesMode", "duplicateList"},
              {"compareMode", "compareList"},
              {"largestMode", "largestList"},
              {"clonesMode", "cloneList"},
              {"historyMode", "historyList"},
              {"safeMode", "safeList"}};
  for (const auto& row : rows) {
    click(row.button);
    EXPECT_TRUE(item(row.button)->property("active").toBool());
    EXPECT_TRUE(shows(row.view)) << row.view;
    EXPECT_FALSE(shows("canvas"));
    EXPECT_FALSE(shows("header"));
    EXPECT_TRUE(shows("crumbs"));
  }
}

TEST_F(Modes, the_modes_without_a_button_have_a_view_too) {
  for (const auto& [mode, view] :
       {std::pair(VizMode::aliases, "aliasList"), {VizMode::cloud, "cloudList"}}) {
    session().shown().setVizMode(mode);
    EXPECT_TRUE(shows(view)) << view;
    EXPECT_FALSE(shows("canvas"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows("canvas"));
  }
}

TEST_F(Modes, returning_to_the_map_keeps_folder_and_selection) {
  session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
  const auto place = session().navigation().current();
  for (const char* way : {"treemapMode", "escape"}) {
    click("duplicatesMode");
    EXPECT_FALSE(shows("canvas"));
    if (QString(way) == "escape") {
      press(Qt::Key_Escape);
    } else {
      tabTo(way);
      press(Qt::Key_Return);
    }
    EXPECT_TRUE(shows("canvas")) << way;
    EXPECT_EQ(session().navigation().current(), place);
    EXPECT_THAT(session().selection().selectedNodes(), SizeIs(1));
    EXPECT_EQ(text("zipSelection"), "Zip (1)");
  }
}

TEST_F(Modes, the_selection_can_be_archived_in_every_mode) {
  session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
  click("largestMode");
  machine_.savePanel.answer = tree_.at("kept.zip");
  click("zipSelection");
  EXPECT_THAT(machine_.savePanel.requests, SizeIs(1));
  EXPECT_EQ(text("toast"), QStringLiteral("Zipping 1 item…"));
}

TEST_F(Modes, escape_collapses_the_queue_before_it_leaves_a_mode) {
  click("duplicatesMode");
  session().cleanupQueue().addToQueue(session().navigation().current()->children()[0]);
  press(Qt::Key_Escape);
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_EQ(session().shown().vizMode(), VizMode::duplicates);
  press(Qt::Key_Escape);
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
}

TEST_F(Modes, buttons_of_modes_scroll_into_view_in_the_smallest_window) {
  window().resize(1100, 680);
  session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
  settle(window());
  QQuickItem* const bar = item("modeBar");
  const QRectF inSight = bar->mapRectToScene(QRectF(0, 0, bar->width(), bar->height()));
  for (const char* name : {"treemapMode", "safeMode", "heatmap", "watch", "queueSelection",
                           "zipSelection", "clearSelection"}) {
    tabTo(name);
    QQuickItem* const pill = item(name);
    EXPECT_TRUE(inSight.contains(pill->mapRectToScene(QRectF(0, 0, pill->width(), pill->height()))))
        << name;
  }
}

}  // namespace
}  // namespace tessaly
