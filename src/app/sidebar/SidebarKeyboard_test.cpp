// The sidebar, operated by keyboard.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>

#include "app/sidebar/SidebarScene_test.h"

namespace tessaly {
namespace {

class SidebarKeyboard : public SidebarScene {
 protected:
  QQuickItem* focused() { return view().activeFocusItem(); }

  // Presses Tab until `item` has the focus.
  bool tabTo(QQuickItem* item) {
    for (int steps = 0; steps < 1500; ++steps) {
      if (focused() == item) return true;
      press(Qt::Key_Tab);
    }
    return false;
  }
  // The rows of the volume menu, from the top.
  std::vector<QQuickItem*> volumes() {
    std::vector<QQuickItem*> rows = all("volume");
    std::ranges::sort(rows, {}, [](QQuickItem* row) { return rectOf(row).top(); });
    return rows;
  }
  bool isInSight(QQuickItem* item) {
    const QRectF rect = rectOf(item);
    return rect.top() >= 0 && rect.bottom() <= rectOf(find("bottomScanFooter")).top();
  }
};

TEST_F(SidebarKeyboard, tab_visits_every_control_from_top_to_bottom_and_scrolls_to_it) {
  QAccessible::setActive(true);
  fill();
  show();
  std::vector<QQuickItem*> walk;
  std::set<QQuickItem*> seen;
  press(Qt::Key_Tab);
  while (focused() != nullptr && seen.insert(focused()).second) {
    walk.push_back(focused());
    press(Qt::Key_Tab);
  }
  QStringList names;
  for (QQuickItem* item : walk) names << item->objectName();
  QStringList expected = {"volumeMenu",  "scanFullMac", "scanHome",     "chooseFolder",
                          "diskTreemap", "systemPulse", "appLeftovers", "emptyTrash"};
  for (int row = 0; row < 6; ++row)
    expected << "pathLabel"
             << "star";
  expected << "addExclude"
           << "removeExclude"
           << "removeExclude";
  for (int row = 0; row < 12; ++row)
    expected << "highlight"
             << "skip";
  expected << "rescanVolume";
  EXPECT_EQ(names.join(' ').toStdString(), expected.join(' ').toStdString());

  for (QQuickItem* item : walk) {
    ASSERT_TRUE(tabTo(item));
    SCOPED_TRACE(item->objectName().toStdString());
    EXPECT_TRUE(shows("focusRing"));
    EXPECT_EQ(all("focusRing").size(), 1U);
    EXPECT_TRUE(item->objectName() == "rescanVolume" || isInSight(item));
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item);
    ASSERT_NE(interface, nullptr);
    EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty());
    EXPECT_TRUE(interface->state().focusable);
    ASSERT_NE(interface->actionInterface(), nullptr);
    EXPECT_TRUE(interface->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction()));
  }
}

TEST_F(SidebarKeyboard, shift_tab_visits_the_controls_in_reverse) {
  fill();
  show();
  ASSERT_TRUE(tabTo(find("rescanVolume")));
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(focused(), find("logs_caches/skip"));
  EXPECT_TRUE(isInSight(focused()));
  ASSERT_TRUE(tabTo(find("scanFullMac")));
  EXPECT_TRUE(isInSight(focused()));
}

TEST_F(SidebarKeyboard, return_and_space_press_an_entry) {
  show();
  ASSERT_TRUE(tabTo(find("systemPulse")));
  press(Qt::Key_Return);
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  ASSERT_TRUE(tabTo(find("appLeftovers")));
  press(Qt::Key_Space);
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
}

TEST_F(SidebarKeyboard, return_and_space_toggle_a_switch) {
  show();
  ASSERT_TRUE(tabTo(find("docker/highlight")));
  press(Qt::Key_Space);
  EXPECT_TRUE(session().choices().filters()[4].enabled);
  press(Qt::Key_Return);
  EXPECT_FALSE(session().choices().filters()[4].enabled);
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_TRUE(session().choices().filters()[4].skipScan);
}

TEST_F(SidebarKeyboard, a_volume_is_chosen_by_keyboard_and_the_focus_returns_to_the_button) {
  mount({"/", "Backup", "Films"});
  show();
  press(Qt::Key_Tab);
  ASSERT_EQ(focused(), find("volumeMenu"));
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("menuRows"));
  EXPECT_EQ(focused(), volumes()[0]);
  press(Qt::Key_Down);
  EXPECT_EQ(focused(), volumes()[1]);
  press(Qt::Key_End);
  EXPECT_EQ(focused(), volumes()[2]);
  press(Qt::Key_Home);
  press(Qt::Key_Up);
  EXPECT_EQ(focused(), volumes()[2]);
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), volumes()[2]);
  press(Qt::Key_Up);
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("menuRows"));
  EXPECT_EQ(session().run().scanRoot(), "/media/Backup");
  EXPECT_EQ(focused(), find("volumeMenu"));
  EXPECT_TRUE(shows("focusRing"));
}

TEST_F(SidebarKeyboard, escape_closes_the_volume_menu_before_any_other_use_of_escape) {
  mount({"/", "Backup"});
  show();
  QQmlComponent component(view().engine());
  component.setData("import QtQuick; Item { Shortcut { sequence: \"Escape\" } }", {});
  const std::unique_ptr<QObject> other(component.create());
  ASSERT_NE(other, nullptr) << component.errorString().toStdString();
  qobject_cast<QQuickItem*>(other.get())->setParentItem(view().contentItem());
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  ASSERT_TRUE(shows("menuRows"));
  press(Qt::Key_Down);
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("menuRows"));
  EXPECT_EQ(focused(), find("volumeMenu"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  press(Qt::Key_Space);
  EXPECT_EQ(focused(), volumes()[0]);
}

TEST_F(SidebarKeyboard, end_reaches_the_last_of_200_volumes) {
  QAccessible::setActive(true);
  QStringList names = {"/"};
  for (int i = 1; i < 200; ++i) names << QStringLiteral("disk%1").arg(i);
  mount(names);
  show();
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(focused())->role(), QAccessible::MenuItem);
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(focused())->state().focused);
  const QRectF list = rectOf(find("menuRows"));
  EXPECT_LE(list.bottom(), 680);
  EXPECT_GE(list.left(), 0);
  EXPECT_LE(list.right(), 260);
  press(Qt::Key_End);
  EXPECT_EQ(focused(), volumes()[199]);
  EXPECT_TRUE(list.contains(rectOf(focused())));
  double bottom = -1e9;
  for (QQuickItem* row : volumes()) {
    EXPECT_GE(rectOf(row).top(), bottom);
    bottom = rectOf(row).bottom();
  }
  press(Qt::Key_Return);
  EXPECT_EQ(session().run().scanRoot(), "/media/disk199");
}

TEST_F(SidebarKeyboard, the_focus_moves_on_when_its_row_is_removed) {
  settings_.setTexts(ScanStore::pinsKey, {"/srv/a", "/srv/b"});
  remember(ScanStore::excludesKey, {"/srv/x", "/srv/y"});
  show();
  ASSERT_TRUE(tabTo(all("star")[0]));
  press(Qt::Key_Return);
  ASSERT_EQ(all("pathRow").size(), 1U);
  EXPECT_EQ(focused(), find("pathLabel"));
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_FALSE(shows("pinned"));
  EXPECT_EQ(focused(), find("addExclude"));
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  ASSERT_EQ(all("excludeRow").size(), 1U);
  EXPECT_EQ(focused(), find("removeExclude"));
  press(Qt::Key_Space);
  EXPECT_TRUE(session().choices().excludes().empty());
  EXPECT_EQ(focused(), find("node_modules/highlight"));
}

TEST_F(SidebarKeyboard, tab_visits_every_row_of_a_long_list_and_leaves_it_at_the_ends) {
  std::vector<std::string> folders;
  for (int i = 0; i < 60; ++i) folders.push_back("/srv/" + std::to_string(i));
  remember(ScanStore::excludesKey, folders);
  show();
  ASSERT_TRUE(tabTo(find("addExclude")));
  for (const std::string& folder : folders) {
    press(Qt::Key_Tab);
    ASSERT_EQ(focused()->objectName(), "removeExclude");
    ASSERT_EQ(focused()->property("target").toString().toStdString(), folder);
    EXPECT_TRUE(isInSight(focused()));
    EXPECT_TRUE(rectOf(find("excludes")).contains(rectOf(focused())));
    EXPECT_TRUE(shows("focusRing"));
  }
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), find("node_modules/highlight"));
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(focused()->property("target"), "/srv/59");
  press(Qt::Key_Home);
  EXPECT_EQ(focused()->property("target"), "/srv/0");
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(focused(), find("addExclude"));
}

TEST_F(SidebarKeyboard, page_keys_move_through_10000_rows_and_return_removes_one) {
  std::vector<std::string> folders;
  for (int i = 0; i < 10000; ++i) folders.push_back("/srv/" + std::to_string(i));
  remember(ScanStore::excludesKey, folders);
  show();
  ASSERT_TRUE(tabTo(find("addExclude")));
  press(Qt::Key_Tab);
  press(Qt::Key_PageDown);
  EXPECT_NE(focused()->property("target"), "/srv/0");
  press(Qt::Key_PageUp);
  EXPECT_EQ(focused()->property("target"), "/srv/0");
  press(Qt::Key_End);
  EXPECT_EQ(focused()->property("target"), "/srv/9999");
  EXPECT_TRUE(isInSight(focused()));
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  press(Qt::Key_Return);
  EXPECT_EQ(session().choices().excludes().size(), 9999U);
  EXPECT_EQ(focused()->property("target"), "/srv/9999");
  press(Qt::Key_Return);
  EXPECT_EQ(session().choices().excludes().size(), 9998U);
  EXPECT_EQ(session().choices().excludes().back(), "/srv/9997");
  EXPECT_EQ(focused(), find("node_modules/highlight"));
}

TEST_F(SidebarKeyboard, a_row_keeps_the_focus_when_the_list_is_scrolled_away_from_it) {
  std::vector<std::string> folders;
  for (int i = 0; i < 1000; ++i) folders.push_back("/srv/" + std::to_string(i));
  remember(ScanStore::excludesKey, folders);
  show();
  ASSERT_TRUE(tabTo(find("addExclude")));
  press(Qt::Key_Tab);
  press(Qt::Key_Tab);
  find("excludes")->setProperty("contentY", 15000);
  settle();
  ASSERT_NE(focused(), nullptr);
  EXPECT_EQ(focused()->property("target"), "/srv/1");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused()->property("target"), "/srv/2");
  EXPECT_TRUE(rectOf(find("excludes")).contains(rectOf(focused())));
}

TEST_F(SidebarKeyboard, a_row_keeps_the_focus_when_another_one_is_inserted_above) {
  remember(ScanStore::recentsKey, {"/srv/a", "/srv/b"});
  show(1000);
  QQuickItem* star = all("star")[1];
  ASSERT_TRUE(tabTo(star));
  scanTo(folder("/srv/c", 1, {file("/srv/c/f", 1)}));
  settle();
  ASSERT_EQ(all("star").size(), 3U);
  EXPECT_EQ(focused(), all("star")[2]);
}

TEST_F(SidebarKeyboard, the_focus_moves_on_from_a_control_that_has_started_a_scan) {
  remember(ScanStore::recentsKey, {"/srv/a", "/srv/b"});
  show(1000);
  ASSERT_TRUE(tabTo(find("scanHome")));
  press(Qt::Key_Return);
  ASSERT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(focused(), find("cancelScan"));
  EXPECT_TRUE(shows("focusRing"));
  dispatch_.drainAll();
  settle();
  EXPECT_EQ(focused(), find("diskTreemap"));
  ASSERT_TRUE(tabTo(all("pathLabel")[1]));
  press(Qt::Key_Return);
  ASSERT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(focused(), all("star")[1]);
  EXPECT_TRUE(shows("focusRing"));
}

TEST_F(SidebarKeyboard, a_scan_started_by_the_pointer_does_not_move_the_focus) {
  show();
  click("scanHome");
  ASSERT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_NE(focused(), find("cancelScan"));
  EXPECT_FALSE(shows("focusRing"));
}

TEST_F(SidebarKeyboard, a_clicked_button_that_is_hidden_loses_the_focus) {
  scanTo(folder("/srv", 1, {file("/srv/f", 1)}));
  show();
  QQuickItem* const rescan = find("rescanVolume");
  click(rescan);
  ASSERT_EQ(session().run().status(), ScanStatus::scanning);
  ASSERT_FALSE(rescan->isVisible());
  EXPECT_FALSE(rescan->hasActiveFocus());
}

TEST_F(SidebarKeyboard, the_focus_moves_on_from_cancel_when_the_scan_has_ended) {
  show();
  session().scan("/srv");
  settle();
  ASSERT_TRUE(tabTo(find("cancelScan")));
  press(Qt::Key_Return);
  dispatch_.drainAll();
  settle();
  ASSERT_FALSE(shows("cancelScan"));
  EXPECT_EQ(focused(), find("diskTreemap"));
  EXPECT_TRUE(shows("focusRing"));
}

TEST_F(SidebarKeyboard, the_focus_moves_to_cancel_when_the_footer_starts_a_scan) {
  scanTo(folder("/srv", 1, {file("/srv/f", 1)}));
  show(1000);
  ASSERT_TRUE(tabTo(find("rescanVolume")));
  press(Qt::Key_Return);
  ASSERT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(focused(), find("cancelScan"));
  EXPECT_TRUE(shows("focusRing"));
}

TEST_F(SidebarKeyboard, page_keys_home_and_end_scroll_the_column) {
  fill();
  show();
  press(Qt::Key_Tab);
  press(Qt::Key_PageDown);
  EXPECT_GT(scrolled(), 0);
  press(Qt::Key_End);
  const double end = scrolled();
  EXPECT_EQ(end, read("scrollArea", "contentHeight").toDouble() -
                     read("scrollArea", "height").toDouble());
  press(Qt::Key_PageUp);
  EXPECT_LT(scrolled(), end);
  press(Qt::Key_Home);
  EXPECT_EQ(scrolled(), 0);
}

TEST_F(SidebarKeyboard, assistive_tools_get_states_and_the_folders_of_buttons) {
  QAccessible::setActive(true);
  fill();
  show();
  const auto at = [this](QQuickItem* item) { return QAccessible::queryAccessibleInterface(item); };
  EXPECT_TRUE(at(find("diskTreemap"))->state().selected);
  EXPECT_FALSE(at(find("systemPulse"))->state().selected);
  EXPECT_EQ(at(find("emptyTrash"))->text(QAccessible::Description), "17");
  EXPECT_EQ(at(find("xcode/highlight"))->role(), QAccessible::CheckBox);
  EXPECT_TRUE(at(find("xcode/highlight"))->state().checked);
  EXPECT_FALSE(at(find("build/highlight"))->state().checked);
  EXPECT_TRUE(at(find("build/skip"))->state().checked);
  at(find("build/highlight"))
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(session().choices().filters()[2].enabled);
  EXPECT_TRUE(at(find("build/highlight"))->state().checked);
  EXPECT_EQ(at(find("build/skip"))->text(QAccessible::Description), "Build Artifacts");
  EXPECT_EQ(at(all("star")[0])->text(QAccessible::Name), "Unpin");
  EXPECT_EQ(at(all("star")[0])->text(QAccessible::Description), "/home/user/Projects");
  EXPECT_EQ(at(all("pathLabel")[0])->text(QAccessible::Name), "Projects");
}

}  // namespace
}  // namespace tessaly
