#include <gmock/gmock.h>

#include <QAccessible>
#include <QTest>

#include "app/controls/PropertyTable.h"
#include "app/overlays/AccessGate_test.h"
#include "app/overlays/OverlayScene_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr const char* gateText =
    "AccessGateView { objectName: \"gate\"; anchors.fill: parent; actions: scene.actions }";

// Like the window, which may load the gate only while it is shown.
constexpr const char* loadedGateText = R"(
    Loader {
        anchors.fill: parent
        active: scene.actions.access.showGate
        sourceComponent: AccessGateView { objectName: "gate"; actions: scene.actions }
    })";

class AccessGateView : public testing::TestWithParam<const char*>, protected AccessGateFixture {
 protected:
  void open(QSize size = {1280, 820}) {
    scene_.emplace(QString::fromLatin1(GetParam()),
                   OverlayScene::Setting{.size = size, .actions = &actions});
  }
  QObject* timer() {
    return scene_->view().rootObject()->findChild<QObject*>(QStringLiteral("refreshTimer"));
  }

  std::optional<OverlayScene> scene_;
};

TEST_P(AccessGateView, the_gate_says_what_is_missing_and_how_to_grant_it) {
  open();
  expectProperties(
      *scene_,
      {{"emblem", "name", "externaldrive.fill"},
       {"heading", "text", "The disk is hidden from Tessaly"},
       {"caption", "text",
        "Tessaly cannot list the top folder of this system. The sandbox that it was started in "
        "hides the disk. Let the sandbox show it — then quit and reopen."},
       {"step1/number", "text", "1"},
       {"step1/text", "text",
        "Click Show this copy. The file manager shows which Tessaly is running, and so which "
        "sandbox it belongs to."},
       {"step2/number", "text", "2"},
       {"step2/text", "text",
        "Allow that sandbox to read all files: in its permission settings, or in the command "
        "that starts Tessaly."},
       {"step3/number", "text", "3"},
       {"step3/text", "text",
        "Click Quit & Reopen. If the disk stays hidden, quit Tessaly and start it from the "
        "desktop, so that the sandbox reads its settings anew."},
       {"grant/label", "text", "Show this copy"},
       {"relaunch/label", "text", "Quit & Reopen"},
       {"check/label", "text", "Check again"},
       {"skip/label", "text", "Not now — scan a folder"},
       {"note", "text",
        "Scan Home and Choose Folder work without this. Scan Whole Disk needs a view of "
        "the whole disk."}});
}

TEST_P(AccessGateView, the_parts_of_the_gate_are_in_this_order_from_top_to_bottom) {
  for (const QSize size : {QSize(1280, 820), QSize(1100, 680)}) {
    open(size);
    double bottom = 0;
    for (const char* name :
         {"emblem", "heading", "caption", "step1", "step2", "step3", "grant", "skip", "note"}) {
      const QRectF place = scene_->place(QString::fromLatin1(name));
      EXPECT_GE(place.top(), bottom) << name;
      EXPECT_GE(place.left(), 40) << name;
      EXPECT_LE(place.right(), size.width() - 40) << name;
      bottom = place.bottom();
    }
    EXPECT_LE(bottom, size.height() - 40);
    EXPECT_EQ(scene_->place("backdrop"), QRectF(QPointF(), QSizeF(size)));
    EXPECT_LT(scene_->place("grant").right(), scene_->place("relaunch").left());
    EXPECT_LT(scene_->place("relaunch").right(), scene_->place("check").left());
  }
}

TEST_P(AccessGateView, the_gate_looks_as_designed) {
  open();
  expectProperties(*scene_, {{"backdrop", "color", "#121318 at 1.00"},
                             {"emblem", "size", 44},
                             {"emblem", "color", "#007aff at 1.00"},
                             {"heading", "font.pixelSize", 22},
                             {"heading", "font.weight", QFont::Bold},
                             {"heading", "color", "#ffffff at 1.00"},
                             {"caption", "font.pixelSize", 13},
                             {"caption", "color", "#9ca3af at 1.00"},
                             {"card/background", "color", "#181a22 at 1.00"},
                             {"card/background", "outlineColor", "#ffffff at 0.08"},
                             {"card/background", "outlineWidth", 1},
                             {"card/background", "radius", 12},
                             {"card/background", "shadowColor", "#000000 at 0.35"},
                             {"card/background", "shadowRadius", 8},
                             {"card/background", "shadowOffset", 3},
                             {"step2/circle", "width", 22},
                             {"step2/circle", "height", 22},
                             {"step2/circle", "radius", 11},
                             {"step2/circle", "color", "#007aff at 0.18"},
                             {"step2/circle", "outlineColor", "#007aff at 0.45"},
                             {"step2/number", "color", "#007aff at 1.00"},
                             {"step2/number", "font.pixelSize", 11},
                             {"step2/text", "color", "#e5e7eb at 1.00"},
                             {"step2/text", "font.pixelSize", 13},
                             {"skip/label", "font.pixelSize", 12},
                             {"skip/label", "color", "#e5e7eb at 1.00"},
                             {"note", "font.pixelSize", 11},
                             {"note", "color", "#9ca3af at 1.00"}});
}

std::vector<PropertyRow> primaryLook(const QString& name) {
  return {{name + "/label", "font.pixelSize", 13},
          {name + "/label", "font.weight", QFont::DemiBold},
          {name + "/label", "color", "#ffffff at 1.00"},
          {name + "/background", "radius", 8},
          {name + "/background", "color", "#007aff at 1.00"},
          {name + "/background", "endColor", "#0056b3 at 1.00"},
          {name + "/background", "outlineColor", "#ffffff at 0.18"},
          {name + "/background", "outlineWidth", 1},
          {name + "/background", "shadowColor", "#007aff at 0.35"},
          {name + "/background", "shadowRadius", 6},
          {name + "/background", "shadowOffset", 2}};
}

std::vector<PropertyRow> secondaryLook(const QString& name) {
  return {{name + "/label", "font.pixelSize", 12},
          {name + "/label", "font.weight", QFont::Medium},
          {name + "/label", "color", "#ffffff at 1.00"},
          {name + "/background", "radius", 8},
          {name + "/background", "color", "#232530 at 1.00"},
          {name + "/background", "endColor", "#232530 at 1.00"},
          {name + "/background", "outlineColor", "#ffffff at 0.09"},
          {name + "/background", "outlineWidth", 1},
          {name + "/background", "shadowColor", "#000000 at 0.00"}};
}

TEST_P(AccessGateView, after_granting_the_relaunch_button_is_the_primary_one) {
  open();
  // A failed check does not change the user's progress.
  actions.refresh();
  expectProperties(*scene_, primaryLook("grant"));
  expectProperties(*scene_, secondaryLook("relaunch"));
  expectProperties(*scene_, secondaryLook("check"));
  const QRectF before = scene_->place("relaunch");
  scene_->click("grant");
  EXPECT_TRUE(access.needsRelaunch());
  expectProperties(*scene_, secondaryLook("grant"));
  expectProperties(*scene_, primaryLook("relaunch"));
  expectProperties(*scene_, secondaryLook("check"));
  EXPECT_EQ(scene_->place("relaunch"), before);
}

TEST_P(AccessGateView, a_pressed_button_is_fainter) {
  open();
  QTest::mousePress(&scene_->view(), Qt::LeftButton, {}, scene_->middle("grant"));
  expectProperties(*scene_, {{"grant", "opacity", 0.75},
                             {"grant/background", "shadowColor", "#007aff at 0.15"},
                             {"relaunch", "opacity", 1}});
  QTest::mouseRelease(&scene_->view(), Qt::LeftButton, {}, QPoint(1, 1));
}

TEST_P(AccessGateView, each_button_of_the_gate_runs_its_action) {
  open();
  scene_->click("check");
  EXPECT_EQ(probes, 2);
  scene_->click("grant");
  EXPECT_THAT(workspace.revealed, ElementsAre(ElementsAre("/opt/tessaly")));
  EXPECT_EQ(workspace.settingsAsked.size(), 3U);
  scene_->click("relaunch");
  EXPECT_THAT(done, ElementsAre("give up", "start /opt/tessaly"));
  EXPECT_TRUE(scene_->shows("gate"));
  scene_->click("skip");
  EXPECT_FALSE(scene_->shows("gate"));
  EXPECT_EQ(settings.boolean("marrow.fdaGateSkipped"), true);
}

TEST_P(AccessGateView, the_gate_closes_as_soon_as_access_is_granted) {
  open();
  isGranted = true;
  scene_->click("check");
  EXPECT_FALSE(scene_->shows("gate"));
  scene_->clickAt(QPoint(20, 20));
  EXPECT_EQ(scene_->count("clicksBelow"), 1);
}

TEST_P(AccessGateView, the_gate_is_hidden_if_access_is_granted) {
  isGranted = true;
  access.refresh();
  open();
  EXPECT_FALSE(scene_->shows("gate"));
  EXPECT_EQ(scene_->focused(), "below");
}

TEST_P(AccessGateView, the_gate_checks_access_every_1500_ms_while_it_is_shown) {
  open();
  ASSERT_NE(timer(), nullptr);
  EXPECT_EQ(timer()->property("interval"), 1500);
  EXPECT_EQ(timer()->property("repeat"), true);
  EXPECT_EQ(timer()->property("running"), true);
  const int before = probes;
  QMetaObject::invokeMethod(timer(), "triggered");
  EXPECT_EQ(probes, before + 1);
  actions.skip();
  scene_->settle();
  EXPECT_TRUE(timer() == nullptr || timer()->property("running") == false);
  access.setShowGate(true);
  scene_->settle();
  ASSERT_NE(timer(), nullptr);
  EXPECT_EQ(timer()->property("running"), true);
}

TEST_P(AccessGateView, the_gate_has_the_focus_and_tab_stays_in_it) {
  open();
  EXPECT_EQ(scene_->focused(), "grant");
  for (const char* next : {"relaunch", "check", "skip", "grant", "relaunch"}) {
    scene_->press(Qt::Key_Tab);
    EXPECT_EQ(scene_->focused(), next);
    EXPECT_TRUE(scene_->shows("focusRing"));
  }
  for (const char* previous : {"grant", "skip", "check", "relaunch", "grant"}) {
    scene_->press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(scene_->focused(), previous);
    EXPECT_TRUE(scene_->shows("focusRing"));
  }
}

TEST_P(AccessGateView, return_enter_and_space_press_the_buttons) {
  open();
  scene_->press(Qt::Key_Return);
  EXPECT_EQ(workspace.revealed.size(), 1U);
  scene_->press(Qt::Key_Tab);
  scene_->press(Qt::Key_Space);
  EXPECT_EQ(done.size(), 2U);
  scene_->press(Qt::Key_Tab);
  scene_->press(Qt::Key_Enter);
  EXPECT_EQ(probes, 2);
  scene_->press(Qt::Key_Tab);
  scene_->press(Qt::Key_Space);
  EXPECT_FALSE(access.showGate());
}

TEST_P(AccessGateView, escape_and_clicks_beside_the_buttons_do_not_close_the_gate) {
  open();
  scene_->press(Qt::Key_Escape);
  scene_->clickAt(QPoint(20, 20));
  scene_->clickAt(QPoint(640, 400));
  EXPECT_TRUE(scene_->shows("gate"));
  EXPECT_EQ(scene_->focused(), "grant");
}

TEST_P(AccessGateView, pointer_and_keys_do_not_pass_through_the_gate) {
  open();
  for (const QPoint point : {QPoint(20, 20), QPoint(640, 400), QPoint(1270, 810)}) {
    scene_->clickAt(point);
    QTest::mouseClick(&scene_->view(), Qt::RightButton, {}, point);
    QWheelEvent turn(point, scene_->view().mapToGlobal(point), {}, QPoint(0, 120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&scene_->view(), &turn);
    EXPECT_FALSE(scene_->count("hoveredBelow").toBool());
  }
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_Escape, Qt::Key_Left, Qt::Key_Backspace})
    scene_->press(key);
  scene_->press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(scene_->count("clicksBelow"), 0);
  EXPECT_EQ(scene_->count("turnsBelow"), 0);
  EXPECT_EQ(scene_->count("keysBelow"), 0);
  EXPECT_EQ(scene_->count("shortcutsBelow"), 0);
}

TEST_P(AccessGateView, ctrl_q_quits_the_program_from_the_gate) {
  open();
  scene_->press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(scene_->count("quits"), 1);
}

TEST_P(AccessGateView, the_focus_returns_to_its_item_when_the_gate_closes) {
  access.skip();
  open();
  EXPECT_EQ(scene_->focused(), "below");
  access.setShowGate(true);
  scene_->settle();
  EXPECT_EQ(scene_->focused(), "grant");
  scene_->press(Qt::Key_Tab);
  access.skip();
  scene_->settle();
  EXPECT_EQ(scene_->focused(), "below");
  access.setShowGate(true);
  scene_->settle();
  EXPECT_EQ(scene_->focused(), "grant");
  access.skip();
  scene_->settle();
  scene_->press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(scene_->count("shortcutsBelow"), 1);
}

QString accessibleText(QObject* object, QAccessible::Text text) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(object);
  return interface != nullptr ? interface->text(text) : QString();
}

TEST_P(AccessGateView, the_gate_is_an_accessible_dialog_with_named_parts) {
  QAccessible::setActive(true);
  open();
  QQuickItem* gate = scene_->find("gate");
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(gate);
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->role(), QAccessible::Dialog);
  EXPECT_EQ(accessibleText(gate, QAccessible::Name), "The disk is hidden from Tessaly");
  EXPECT_EQ(accessibleText(scene_->find("step3"), QAccessible::Name),
            "3. Click Quit & Reopen. If the disk stays hidden, quit Tessaly and start it from the "
            "desktop, so that the sandbox reads its settings anew.");
  EXPECT_EQ(accessibleText(scene_->find("skip"), QAccessible::Name), "Not now — scan a folder");
}

INSTANTIATE_TEST_SUITE_P(Kept, AccessGateView, testing::Values(gateText));
INSTANTIATE_TEST_SUITE_P(Loaded, AccessGateView, testing::Values(loadedGateText));

}  // namespace
}  // namespace tessaly
