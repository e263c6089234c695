// A failed move to the Trash or back: a line reports it, and stays.
#include <cerrno>
#include <chrono>
#include <gmock/gmock.h>
#include <string>

#include <QAccessible>

#include "journeys/Journey.h"
#include "reclaim/FailureText.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class FailureJourney : public Journey {
 protected:
  FailureJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "Code/\n"
            "  main.cpp 3M\n"
            "notes.txt 2M\n") {
    for (const char* below : {"Movies", "Code", "notes.txt"})
      machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
  }

  void failToMove(const char* below, int code) {
    machine_.trash.refuse(tree_.at(below), code);
    hoverAt(tilePoint(below));
    press(Qt::Key_Backspace, Qt::ControlModifier);
  }
  QRectF rectOf(const QString& name) {
    QQuickItem* const found = item(name);
    if (found == nullptr) return {};
    return found->mapRectToScene(QRectF(0, 0, found->width(), found->height()));
  }

  const QString notesFailed_ =
      QStringLiteral("“notes.txt” could not be moved to the Trash: no Trash on this volume");
};

TEST_F(FailureJourney, the_failure_is_shown_beside_the_toast_and_outlasts_later_toasts) {
  EXPECT_FALSE(shows("failureLine"));
  failToMove("notes.txt", EXDEV);
  EXPECT_EQ(text("toast"), QStringLiteral("Moved notes.txt to Trash"));
  EXPECT_EQ(text("failure"), notesFailed_);
  finishScan();
  clickHolding(Qt::ControlModifier, tilePoint("Code"));
  EXPECT_EQ(text("toast"), QStringLiteral("Queued Code"));
  dispatch_.advance(std::chrono::minutes(5));
  comeHome();
  EXPECT_FALSE(shows("toast"));
  EXPECT_EQ(text("failure"), notesFailed_);
  click("dismissFailure");
  EXPECT_FALSE(shows("failureLine"));
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
}

TEST_F(FailureJourney, the_failure_stays_in_every_pane_after_escape_and_after_a_successful_move) {
  failToMove("notes.txt", EXDEV);
  finishScan();
  for (int i = 0; i < 3; ++i) press(Qt::Key_Escape);
  for (const char* button : {"showApps", "showPulse", "showMap"}) {
    click(button);
    EXPECT_EQ(text("failure"), notesFailed_) << button;
  }
  hoverAt(tilePoint("Code"));
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_FALSE(machine_.trash.has(tree_.at("Code")));
  EXPECT_EQ(text("failure"), notesFailed_);
}

TEST_F(FailureJourney, a_later_failure_is_shown_first_and_the_earlier_one_afterwards) {
  failToMove("notes.txt", EXDEV);
  finishScan();
  EXPECT_FALSE(shows("earlierFailures"));
  failToMove("Code", EROFS);
  EXPECT_EQ(text("failure"),
            QStringLiteral("“Code” could not be moved to the Trash: the volume is read-only"));
  EXPECT_EQ(text("earlierFailures"), QStringLiteral("1 earlier"));
  click("dismissFailure");
  EXPECT_EQ(text("failure"), notesFailed_);
  EXPECT_FALSE(shows("earlierFailures"));
  click("dismissFailure");
  EXPECT_FALSE(shows("failureLine"));
}

TEST_F(FailureJourney, a_failed_undo_is_shown) {
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Backspace, Qt::ControlModifier);
  finishScan();
  machine_.trash.put(tree_.at("notes.txt"), "another");
  click("putBack");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 0 items"));
  EXPECT_EQ(text("failure"),
            QStringLiteral("“notes.txt” could not be put back: something else stands at the old "
                           "place"));
}

TEST_F(FailureJourney, the_failure_is_dismissed_by_the_keyboard_which_keeps_a_focus) {
  failToMove("notes.txt", EXDEV);
  failToMove("Code", EROFS);
  tabTo("dismissFailure");
  EXPECT_TRUE(shows("focusRing"));
  press(Qt::Key_Return);
  EXPECT_EQ(text("failure"), notesFailed_);
  EXPECT_TRUE(item("dismissFailure")->hasActiveFocus());
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("failureLine"));
  ASSERT_NE(window().activeFocusItem(), nullptr);
  EXPECT_TRUE(window().activeFocusItem()->isVisible());
  EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("cancelScan"));
  EXPECT_TRUE(shows("focusRing"));
}

TEST_F(FailureJourney, the_failure_is_an_alert_for_assistive_tools) {
  QAccessible::setActive(true);
  failToMove("notes.txt", EXDEV);
  failToMove("Code", EROFS);
  QAccessibleInterface* const line = QAccessible::queryAccessibleInterface(item("failureLine"));
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->role(), QAccessible::AlertMessage);
  EXPECT_EQ(line->text(QAccessible::Name), text("failure"));
  EXPECT_EQ(line->text(QAccessible::Description), QStringLiteral("1 earlier"));
  QAccessibleInterface* const button =
      QAccessible::queryAccessibleInterface(item("dismissFailure"));
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("Dismiss"));
}

TEST_F(FailureJourney, the_failure_covers_nothing_in_the_smallest_window) {
  window().resize(1100, 680);
  session().open(session().navigation().current()->children()[0]);
  session().cleanupQueue().addToQueue(session().navigation().current()->children()[0]);
  const QRectF pane = rectOf("mainArea");
  Trash::Failure failure{.path = tree_.at("notes.txt"),
                         .cause = SystemError::fromErrno(EXDEV, tree_.at("notes.txt"))};
  session().messages().tellFailure(FailureText::line({failure}, FailureText::Act::moveToTrash));
  session().messages().flash("Hello");
  const QRectF line = rectOf("failureLine");
  EXPECT_GE(line.height(), 24);
  EXPECT_LE(line.height(), 40);
  EXPECT_EQ(line.width(), 1100);
  for (const char* other : {"titleBar", "breadcrumbs", "sidebar", "mainArea", "canvas",
                            "queueSelection", "cleanupQueue", "toastPanel"}) {
    if (!shows(other)) continue;
    EXPECT_FALSE(rectOf(other).intersects(line)) << other;
  }
  EXPECT_TRUE(shows("canvas") && shows("cleanupQueue") && shows("toastPanel"));
  EXPECT_EQ(rectOf("mainArea").bottom(), 680);
  EXPECT_EQ(rectOf("mainArea").top(), pane.top() + line.height());
  click("dismissFailure");
  EXPECT_EQ(rectOf("mainArea"), pane);
}

TEST_F(FailureJourney, the_longest_text_of_a_failure_is_shown_completely) {
  window().resize(1100, 680);
  std::vector<Trash::Failure> failures;
  for (const int code : {ENOSPC, EINVAL, EDQUOT, EIO}) {
    for (int i = 0; i < 2000; ++i)
      failures.push_back(
          {.path = "/" + std::string(200, 'W'), .cause = SystemError::fromErrno(code, "/")});
  }
  session().messages().tellFailure(FailureText::line(failures, FailureText::Act::moveToTrash));
  EXPECT_FALSE(item("failure")->property("truncated").toBool());
  EXPECT_LE(rectOf("failureLine").height(), 100);
  EXPECT_GE(rectOf("failureLine").height(), rectOf("failure").height());
}

TEST_F(FailureJourney, the_line_of_a_failure_has_a_greatest_size) {
  session().messages().tellFailure(std::string(100000, 'W'));
  EXPECT_LE(rectOf("failureLine").height(), 100);
  EXPECT_GT(rectOf("canvas").height(), 100);
}

TEST_F(FailureJourney, the_failure_has_the_colours_of_a_warning) {
  session().messages().tellFailure("first");
  session().messages().tellFailure("second");
  expectLook(item("failureLine"), {{"", "color", "#ff9500 at 0.14"},
                                   {"failureSymbol", "color", "#ff9500 at 1.00"},
                                   {"failureSymbol", "name", "exclamationmark.triangle.fill"},
                                   {"failure", "color", "#ffffff at 1.00"},
                                   {"failure", "font.pixelSize", 12},
                                   {"earlierFailures", "color", "#9ca3af at 1.00"},
                                   {"dismissFailure", "symbol", "xmark"}});
}

}  // namespace
}  // namespace tessaly
