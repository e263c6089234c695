// The row above the map, in a window of its own, over a session on a fake machine. Any warning of
// the QML engine fails the test.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include <QAccessible>
#include <QFont>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QTest>
#include <QWheelEvent>
#include <QtQml/qqmlextensionplugin.h>

#include "app/panes/DiskMapState.h"
#include "session/SessionFixture_test.h"
#include "support/Look.h"
#include "support/WindowItems.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_MapPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_PanesPlugin)

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* modeNames[] = {"treemapMode",    "listMode",    "grewMode",
                                     "duplicatesMode", "compareMode", "largestMode",
                                     "clonesMode",     "historyMode", "safeMode"};

class ModeBar : public SessionFixture {
 protected:
  void show(int width = 1200) {
    view_ = std::make_unique<QQuickView>();
    QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
      for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
    });
    auto* component = new QQmlComponent(view_->engine(), view_.get());
    component->setData(
        "import QtQuick\nimport Tessaly.Model\nimport Tessaly.Panes\n"
        "Item { id: scene; required property ScanSession session\n"
        "required property DiskMapState map\n"
        "ModeBar { objectName: \"modeBar\"; width: scene.width; map: scene.map\n"
        "session: scene.session } }",
        QUrl(QStringLiteral("qrc:/ModeBarScene.qml")));
    state_ = std::make_unique<DiskMapState>(session());
    QObject* root = component->createWithInitialProperties(
        {{"session", QVariant::fromValue(&session())}, {"map", QVariant::fromValue(state_.get())}});
    ASSERT_NE(root, nullptr) << component->errorString().toStdString();
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->resize(width, 100);
    view_->setContent(QUrl(), component, root);
    view_->show();
    view_->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
    settle(*view_);
  }
  void scan() { scanTo(folder("/data", 3, {film_, song_})); }
  void select() {
    session().selection().selectNodes({film_, song_}, false);
    settle(*view_);
  }
  // Makes a move to the Trash that can be put back.
  void trash() {
    machine_.trash.put("/data/gone");
    session().selection().setFocused(file("/data/gone", 1));
    session().trashFocused();
    dispatch_.drainAll();
    settle(*view_);
  }

  QQuickItem* bar() { return itemNamed(*view_, "modeBar"); }
  QQuickItem* item(const QString& name) {
    QQuickItem* found = itemNamed(*view_, name);
    EXPECT_NE(found, nullptr) << "the window does not show exactly one " << name.toStdString();
    return found;
  }
  bool shows(const QString& name) { return !itemsNamed(view_->contentItem(), name).empty(); }
  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }
  void click(const QString& name) {
    QTest::mouseClick(view_.get(), Qt::LeftButton, {}, middleOf(item(name)));
    settle(*view_);
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(view_.get(), key, modifiers);
    settle(*view_);
  }
  std::vector<std::string> active() {
    std::vector<std::string> names;
    for (const char* name : modeNames)
      if (item(name)->property("active").toBool()) names.emplace_back(name);
    return names;
  }
  double scrolled() { return item("modeScroller")->property("contentX").toDouble(); }

  DiskNode film_ = file("/data/film", 2);
  DiskNode song_ = file("/data/song", 1);
  std::unique_ptr<DiskMapState> state_;
  std::unique_ptr<QQuickView> view_;
};

TEST_F(ModeBar, each_button_sets_its_mode_and_is_highlighted) {
  show();
  const VizMode modes[] = {VizMode::treemap,    VizMode::list,    VizMode::grew,
                           VizMode::duplicates, VizMode::compare, VizMode::largest,
                           VizMode::clones,     VizMode::history, VizMode::safe};
  EXPECT_THAT(active(), testing::ElementsAre("treemapMode"));
  for (int i = 8; i >= 0; --i) {
    click(modeNames[i]);
    EXPECT_EQ(session().shown().vizMode(), modes[i]);
    EXPECT_THAT(active(), testing::ElementsAre(modeNames[i]));
  }
}

TEST_F(ModeBar, aliases_and_cloud_have_no_button) {
  show();
  for (const char* name : {"aliasesMode", "cloudMode"}) EXPECT_FALSE(shows(name));
  for (const VizMode mode : {VizMode::aliases, VizMode::cloud}) {
    session().shown().setVizMode(mode);
    settle(*view_);
    EXPECT_THAT(active(), IsEmpty());
  }
}

TEST_F(ModeBar, the_row_looks_as_designed) {
  show();
  expectLook(bar(), {{"", "color", "#181a22 at 1.00"},
                     {"modeRule", "width", 1},
                     {"modeRule", "height", 14},
                     {"treemapMode", "text", "Treemap"},
                     {"listMode", "text", "List Wins"},
                     {"grewMode", "text", "Grew"},
                     {"duplicatesMode", "text", "Duplicates"},
                     {"compareMode", "text", "Compare"},
                     {"largestMode", "text", "Largest"},
                     {"clonesMode", "text", "Shared Blocks"},
                     {"historyMode", "text", "History"},
                     {"safeMode", "text", "Safe Score"},
                     {"heatmap", "text", "Age"},
                     {"watch", "text", "Watch"},
                     {"treemapMode/label", "color", "#007aff at 1.00"},
                     {"treemapMode/label", "font.weight", QFont::DemiBold},
                     {"treemapMode/background", "color", "#007aff at 0.18"},
                     {"listMode/label", "color", "#9ca3af at 1.00"},
                     {"listMode/background", "color", "#ffffff at 0.04"}});
  for (const char* name : modeNames)
    EXPECT_EQ(item(name)->property("tint").value<QColor>(), QColor("#007AFF")) << name;
  const double pill = item("treemapMode")->height();
  EXPECT_EQ(bar()->height(), pill + 12);
  EXPECT_EQ(rectOf(item("treemapMode")).left(), 14);
  EXPECT_EQ(rectOf(item("treemapMode")).top(), 6);
  EXPECT_FALSE(item("watch")->isEnabled());
  EXPECT_NEAR(item("watch")->opacity(), 0.45, 0.001);
}

TEST_F(ModeBar, the_controls_are_in_this_order) {
  scan();
  show(1400);
  trash();
  select();
  double right = 0;
  for (const char* name :
       {"treemapMode", "listMode", "grewMode", "duplicatesMode", "compareMode", "largestMode",
        "modeRule", "clonesMode", "historyMode", "safeMode", "heatmap", "watch", "queueSelection",
        "zipSelection", "clearSelection", "putBack"}) {
    const QRectF rect = rectOf(item(name));
    EXPECT_GE(rect.left(), right + 6) << name;
    right = rect.right();
  }
  EXPECT_NEAR(right, 1400 - 14, 1);
  EXPECT_GT(rectOf(item("queueSelection")).left(), rectOf(item("watch")).right() + 100);
}

TEST_F(ModeBar, the_heat_map_button_turns_it_on_and_off) {
  show();
  click("heatmap");
  EXPECT_TRUE(session().shown().heatmap());
  expectLook(bar(), {{"heatmap", "text", "Age Heatmap"}, {"heatmap", "active", true}});
  click("heatmap");
  EXPECT_FALSE(session().shown().heatmap());
  expectLook(bar(), {{"heatmap", "text", "Age"}, {"heatmap", "active", false}});
}

TEST_F(ModeBar, actions_on_the_selection_are_shown_only_while_there_is_one) {
  scan();
  show();
  for (const char* name : {"queueSelection", "zipSelection", "clearSelection", "putBack"})
    EXPECT_FALSE(shows(name)) << name;
  select();
  expectLook(bar(), {{"queueSelection", "text", "Queue (2)"},
                     {"queueSelection", "active", false},
                     {"zipSelection", "text", "Zip (2)"},
                     {"zipSelection", "active", false},
                     {"clearSelection", "text", "Clear"},
                     {"clearSelection", "active", false}});
  session().selection().toggleSelect(film_);
  settle(*view_);
  expectLook(bar(), {{"queueSelection", "text", "Queue (1)"}, {"zipSelection", "text", "Zip (1)"}});
  click("clearSelection");
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_THAT(session().selection().selectedNodes(), IsEmpty());
  EXPECT_FALSE(shows("zipSelection"));
}

TEST_F(ModeBar, the_queue_button_queues_the_selected_items) {
  scan();
  show();
  select();
  click("queueSelection");
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(2));
  EXPECT_FALSE(shows("queueSelection"));
}

TEST_F(ModeBar, put_back_undoes_the_last_move_to_the_trash) {
  scan();
  show();
  trash();
  expectLook(bar(), {{"putBack", "text", "Put Back"}, {"putBack", "active", false}});
  click("putBack");
  EXPECT_TRUE(machine_.trash.has("/data/gone"));
  EXPECT_FALSE(shows("putBack"));
}

TEST_F(ModeBar, changing_the_mode_keeps_the_folder_and_the_selection) {
  scan();
  show();
  select();
  const auto current = session().navigation().current();
  for (const char* name : modeNames) click(name);
  click("treemapMode");
  EXPECT_EQ(session().navigation().current(), current);
  EXPECT_THAT(session().selection().selectedNodes(), SizeIs(2));
  EXPECT_TRUE(shows("queueSelection"));
}

TEST_F(ModeBar, the_folder_on_screen_can_be_watched) {
  scan();
  show();
  EXPECT_TRUE(item("watch")->isEnabled());
  EXPECT_NEAR(item("watch")->opacity(), 1, 0.001);
  EXPECT_FALSE(item("watch")->property("active").toBool());
  click("watch");
  EXPECT_TRUE(session().watch().watching());
  expectLook(bar(), {{"watch", "text", "Watching"}, {"watch", "active", true}});
  click("watch");
  EXPECT_FALSE(session().watch().watching());
  expectLook(bar(), {{"watch", "text", "Watch"}, {"watch", "active", false}});
}

TEST_F(ModeBar, the_row_scrolls_to_the_control_with_the_focus) {
  scan();
  show(600);
  EXPECT_EQ(scrolled(), 0);
  trash();
  select();
  const QRectF inSight(14, 0, 572, 100);
  std::vector<QString> stops;
  for (int i = 0; i < 15; ++i) {
    press(Qt::Key_Tab);
    QQuickItem* const stop = view_->activeFocusItem();
    stops.push_back(stop->objectName());
    EXPECT_TRUE(inSight.contains(rectOf(stop))) << stop->objectName().toStdString();
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(stop);
    EXPECT_EQ(told->text(QAccessible::Name), stop->property("text").toString());
    EXPECT_THAT(itemsNamed(view_->contentItem(), "focusRing"), SizeIs(1));
  }
  EXPECT_EQ(stops.front(), "treemapMode");
  EXPECT_EQ(stops.back(), "putBack");
  press(Qt::Key_Tab);
  EXPECT_EQ(view_->activeFocusItem()->objectName(), "treemapMode");
  EXPECT_TRUE(inSight.contains(rectOf(item("treemapMode"))));
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_EQ(session().shown().vizMode(), VizMode::list);
}

TEST_F(ModeBar, the_wheel_scrolls_to_the_ends_and_no_further) {
  show(600);
  const auto wheel = [this](int angle) {
    QWheelEvent event(QPointF(300, 20), view_->mapToGlobal(QPointF(300, 20)), {}, QPoint(0, angle),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view_.get(), &event);
    settle(*view_);
  };
  wheel(-60);
  EXPECT_EQ(scrolled(), 30);
  // The row does not stop where only a sliver of the first pill would be visible.
  wheel(-60);
  EXPECT_EQ(rectOf(item("treemapMode")).right(), 14 - 4);
  wheel(-12000);
  EXPECT_LE(rectOf(item("watch")).right(), 586);
  EXPECT_GT(rectOf(item("watch")).right(), 586 - 50);
  wheel(12000);
  EXPECT_EQ(scrolled(), 0);
}

TEST_F(ModeBar, the_row_scrolls_to_the_actions_when_they_appear) {
  scan();
  show(700);
  select();
  const auto isAtEnd = [this](const char* name) {
    const double right = rectOf(item(name)).right();
    return right <= 687 && right > 686 - 50;
  };
  EXPECT_TRUE(isAtEnd("clearSelection"));
  QTest::mouseClick(view_.get(), Qt::LeftButton, {}, middleOf(item("historyMode")));
  click("heatmap");
  const double place = scrolled();
  session().selection().toggleSelect(film_);
  session().shown().setHeatmap(false);
  settle(*view_);
  EXPECT_LE(scrolled(), place);
  session().selection().clearSelection();
  settle(*view_);
  EXPECT_TRUE(isAtEnd("watch"));
  trash();
  EXPECT_TRUE(isAtEnd("putBack"));
}

TEST_F(ModeBar, the_focus_moves_to_the_control_before_a_pill_that_is_hidden) {
  scan();
  show();
  select();
  item("clearSelection")->forceActiveFocus(Qt::TabFocusReason);
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("clearSelection"));
  EXPECT_EQ(view_->activeFocusItem()->objectName(), "watch");
  EXPECT_TRUE(shows("focusRing"));
}

}  // namespace
}  // namespace tessaly
